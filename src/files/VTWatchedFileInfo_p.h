// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTWatchedFileInfo: the token of one VeltoFileWatcher watch, its path and its delegate (not owned).
// Compared by identity; opaque outside the library.

#include "veltocore_export.h"

#include <QObject>
#include <QString>

class VELTOCORE_TESTS_EXPORT VTWatchedFileInfo
{
public:
    VTWatchedFileInfo(const QString &path, QObject *delegate) : m_path(path), m_delegate(delegate) {}

    [[nodiscard]] QString path() const { return m_path; }
    [[nodiscard]] QObject *delegate() const { return m_delegate; }

private:
    const QString m_path;
    QObject *const m_delegate;
};

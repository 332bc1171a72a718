// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Whole-file reads and writes with errors in the general domain (the POSIX error underneath), and the
// form of a path shown to a user. A write never leaves a half-written file: it goes to a temporary file
// beside the target, which replaces the target only when complete, so a failed write keeps the old file.

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QString>

#include <optional>

class VELTOCORE_TESTS_EXPORT VTFileAccess
{
public:
    VTFileAccess() = delete;

    /// Largest file readWholeFile() reads; larger ones fail with code 263 (too large).
    static constexpr qint64 MaximumFileSize = qint64(256) << 20;

    /// readWholeFile: the contents of the file at \a path; nothing, with \a error, when it cannot be read.
    static std::optional<QByteArray> readWholeFile(const QString &path, VeltoError *error);

    /// What writeFile() does when a file already exists at the path.
    enum class Existing { Replace, Refuse };

    /**
     * writeFile: makes the file at \a path hold \a data. With Existing::Refuse an existing file is an error
     * (code 516). On failure nothing at \a path has changed.
     */
    static bool writeFile(const QString &path, const QByteArray &data, Existing existing, VeltoError *error);

    /// fileError: the general-domain error for \a errnoValue met while reading or writing \a path.
    static VeltoError fileError(int errnoValue, const QString &path, bool writing);
};

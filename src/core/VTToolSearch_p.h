// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTToolSearch: where the tool finder looks, as a value, so that the search itself can be run over other
// folders; VTToolPathCache: the process-wide cache of its answers.

#include "VeltoCache.h"
#include "veltocore_export.h"

#include <QString>
#include <QStringList>

struct VELTOCORE_TESTS_EXPORT VTToolSearch
{
    QStringList folders; ///< looked in first, in order
    QString whichPath;   ///< the `which` tool asked when no folder has the tool

    /// find: the first folder's "<folder>/<toolName>" that exists, else what `which` reports; null when none.
    [[nodiscard]] QString find(const QString &toolName) const;

    /// system: /usr/bin, then /usr/sbin, then /usr/bin/which.
    [[nodiscard]] static const VTToolSearch &system();
};

/// VTToolPathCache: tool name to its path, or to a null string when the tool was not found.
VELTOCORE_TESTS_EXPORT VeltoCache<QString> &VTToolPathCache();

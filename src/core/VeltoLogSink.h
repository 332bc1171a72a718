// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogSink.h
 * \brief Where the library's own plain-English log lines go.
 *
 * Lines are handed to the Qt message system under the category "velto.core": a line beginning with
 * "*** " is a warning, every other line is informational. An application routes or captures them with
 * qInstallMessageHandler() (tests use QTest::ignoreMessage()).
 */

#include "veltocore_export.h"

#include <QString>

/// VeltoLogSink: the single exit for the library's log lines.
class VELTOCORE_EXPORT VeltoLogSink
{
public:
    VeltoLogSink() = delete;

    /// The prefix that marks a line as a warning.
    static constexpr QLatin1StringView WarningPrefix{"*** "};

    /// write: hands \a line to the Qt message system; warnings are the lines that begin with "*** ".
    static void write(const QString &line);
    /// warn: writes "*** " followed by \a text.
    static void warn(const QString &text);
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoTask.h
 * \brief VeltoTask: running a command-line tool to capture what it prints, and finding where a tool lives.
 *
 * \code
 * VeltoError error;
 * const QString listing = VeltoTask::launchTaskReturningStdoutAndGetError(
 *     [](QProcess &task) {
 *         task.setProgram(u"/usr/bin/ls"_s);
 *         task.setArguments({u"-1"_s, u"/etc"_s});
 *     },
 *     &error);
 * if (listing.isNull())
 *     qWarning() << error.description();   // "NSTask for /usr/bin/ls failed: 2" when ls exits with 2
 *
 * const QString tar = VeltoTask::filePathForCommandLineExecutableWithName(u"tar"_s);   // "/usr/bin/tar"
 * \endcode
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QString>

#include <functional>

class QProcess;

/// VeltoTask: process-wide helpers around QProcess.
class VELTOCORE_EXPORT VeltoTask
{
public:
    VeltoTask() = delete;

    /// The name of the tool path cache (its full name is "com.velto.cache.commandLineTools").
    static constexpr QLatin1StringView ToolPathCacheName{"commandLineTools"};

    /**
     * launchTaskReturningStdoutAndGetError: runs a tool and returns its standard output as text.
     *
     * Makes a QProcess, hands it to \a configuredUsing (which sets the program and arguments; standard
     * error is forwarded to this process's unless the block chooses otherwise), captures standard output,
     * starts the tool and waits until it exits, blocking the calling thread. It may be called from any
     * thread; it needs no event loop.
     *
     * - An exception thrown by \a configuredUsing, or a tool that cannot be started, becomes an error
     *   made by VeltoError::errorWithException().
     * - A tool that exits with a status other than 0 (or is killed: the status is the signal's number)
     *   gives VeltoCoreErrorDomain code 5, "NSTask for <program> failed: <status>", replacing that error.
     * - Otherwise the output is read as UTF-8, then as ASCII (output that is neither gives a null string
     *   and no error).
     *
     * \return the output (an empty, non-null string when the tool printed nothing), or a null string with
     * \a error filled in when there was an error.
     * \throws VeltoException named VeltoInvalidArgumentException ("task not launched: <reason>") when the
     * tool never started: its exit status cannot be read then. This order is deliberate and kept; test
     * that a tool exists (filePathForCommandLineExecutableWithName()) before running it.
     */
    [[nodiscard]] static QString launchTaskReturningStdoutAndGetError(
        const std::function<void(QProcess &task)> &configuredUsing, VeltoError *error = nullptr);

    /**
     * filePathForCommandLineExecutableWithName: the full path of the tool called \a toolName, or a null
     * string. Answers from the process-wide tool path cache when it can; on a miss it searches
     * (calculateCommandLineExecutablePathForToolName()) and caches the path, or a "not found" mark after
     * logging "*** the '<name>' command is not available on this computer". So the search and the log
     * line happen once per name while the cache keeps the entry. An empty name gives a null string
     * without a search.
     */
    [[nodiscard]] static QString filePathForCommandLineExecutableWithName(const QString &toolName);

    /**
     * calculateCommandLineExecutablePathForToolName: searches for \a toolName without the cache: the
     * first of "/usr/bin/<name>" and "/usr/sbin/<name>" that exists; else what "/usr/bin/which <name>"
     * prints, white space trimmed, unless it printed nothing or text beginning with "no "; else a null
     * string. Without "/usr/bin/which" it logs "*** the 'which' command is not available" and gives a
     * null string. An empty name gives a null string.
     */
    [[nodiscard]] static QString calculateCommandLineExecutablePathForToolName(const QString &toolName);
};

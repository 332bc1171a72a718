// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto which TOOL`: where the library's tool finder finds a command-line tool.

#include "Commands.h"

#include "VeltoTask.h"

using namespace Qt::StringLiterals;

namespace {

int runWhich(const CommandLine &line)
{
    const QString tool = line.arguments.at(0);
    const QString path = VeltoTask::filePathForCommandLineExecutableWithName(tool);
    if (path.isNull())
        return line.failure(u"\"%1\" is not available"_s.arg(tool));
    line.out << path << '\n';
    return ExitSuccess;
}

const bool registered = registerCommand({
    .name = "which",
    .summary = "find a command-line tool",
    .synopsis = {"TOOL"},
    .description = "Prints the full path of TOOL as the library finds it: /usr/bin/TOOL or /usr/sbin/TOOL "
                   "when one exists, else what /usr/bin/which answers for it. A tool that is not found is an "
                   "error (the library also logs \"*** the 'TOOL' command is not available on this "
                   "computer\").",
    .arguments = {1, 1},
    .run = runWhich,
});

} // namespace

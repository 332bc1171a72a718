// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto unique-name FOLDER NAME`: a file name not yet used in a folder, as the library chooses it.

#include "Commands.h"

#include "VeltoFileManager.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

int runUniqueName(const CommandLine &line)
{
    const QString folder = line.arguments.at(0);
    const QString name = line.arguments.at(1);
    if (!QFileInfo(folder).isDir())
        return line.failure(u"%1 is not a folder"_s.arg(folder));
    const QString unique = VeltoFileManager::uniqueFileNameInFolder(name, folder);
    if (unique.isNull())
        return line.failure(u"no unused name for \"%1\" in %2 (a name may not be empty, \".\" or \"..\", or hold \"/\")"_s
                                .arg(name, folder));
    line.out << unique << '\n';
    return ExitSuccess;
}

const bool registered = registerCommand({
    .name = "unique-name",
    .summary = "a file name not yet used in a folder",
    .synopsis = {"FOLDER NAME"},
    .description = "Prints NAME when FOLDER has no item of that name, else the first unused of \"NAME (2)\", "
                   "\"NAME (3)\" ... (the counter goes before the extension: \"report (2).txt\"), and random "
                   "numbers after 99. Nothing is created.",
    .arguments = {2, 2},
    .run = runUniqueName,
});

} // namespace

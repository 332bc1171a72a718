// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto archive OUT PATH...` and `velto unarchive ARCHIVE DIR`: gzip-compressed cpio archives made
// in-process, and zip or cpio archives unpacked safely, with caps that can be set. Inputs over 64 MiB
// show their progress.

#include "Commands.h"
#include "ProgressLine.h"

#include "FileManager+VeltoCoreArchives.h"

#include <QDirIterator>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

// The bytes of the files at \a paths and below them (links not followed).
quint64 totalSize(const QStringList &paths)
{
    quint64 total = 0;
    for (const QString &path : paths) {
        const QFileInfo item(path);
        total += item.isFile() ? quint64(item.size()) : 0;
        if (!item.isDir() || item.isSymLink())
            continue;
        QDirIterator below(path, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (below.hasNext())
            total += quint64(below.nextFileInfo().size());
    }
    return total;
}

QString describe(const VeltoError &error)
{
    const VeltoError cause = error.userInfo().value(VeltoUnderlyingErrorKey).value<VeltoError>();
    return cause.isNull() ? error.descriptionForUserVelto()
                          : error.descriptionForUserVelto() + u": "_s + cause.descriptionForUserVelto();
}

int runArchive(const CommandLine &line)
{
    const QString out = QFileInfo(line.arguments.first()).absoluteFilePath();
    const QStringList paths = line.arguments.mid(1);
    VeltoError error;
    QUrl made;
    {
        ProgressLine progress(line.err, u"velto archive: "_s + out, totalSize(paths));
        made = velto::archiveFilePaths(paths, QUrl::fromLocalFile(out), &error,
                                       [&progress](quint64 done, quint64) { progress.update(done); });
    }
    if (made.isEmpty())
        return line.failure(describe(error));
    line.out << made.toLocalFile() << '\n';
    return ExitSuccess;
}

// A positive whole number from option \a name, or \a fallback when it is not given; nothing when it is not one.
std::optional<quint64> cap(const CommandLine &line, const QString &name, quint64 fallback)
{
    if (!line.isSet(name))
        return fallback;
    bool ok = false;
    const quint64 value = line.value(name).toULongLong(&ok);
    return ok && value > 0 ? std::optional(value) : std::nullopt;
}

int runUnarchive(const CommandLine &line)
{
    const QString archive = line.arguments.at(0);
    const std::optional<quint64> size = cap(line, u"max-size"_s, VeltoUnarchiveOptions::DefaultMaximumTotalSize);
    const std::optional<quint64> entries = cap(line, u"max-entries"_s, VeltoUnarchiveOptions::DefaultMaximumEntryCount);
    if (!size || !entries)
        return line.usageError(u"--max-size and --max-entries take a whole number above 0"_s);
    VeltoError error;
    bool unpacked = false;
    {
        ProgressLine progress(line.err, u"velto unarchive: "_s + archive, quint64(QFileInfo(archive).size()));
        const VeltoUnarchiveOptions options{*size, *entries, [&progress](quint64 done, quint64) { progress.update(done); }};
        unpacked = velto::unarchiveFileAtURL(QUrl::fromLocalFile(QFileInfo(archive).absoluteFilePath()),
                                             QUrl::fromLocalFile(QFileInfo(line.arguments.at(1)).absoluteFilePath()),
                                             options, &error);
    }
    return unpacked ? int(ExitSuccess) : line.failure(describe(error));
}

const bool archiveRegistered = registerCommand({
    .name = "archive",
    .summary = "make a gzip-compressed cpio archive",
    .synopsis = {"OUT PATH..."},
    .description = "Writes the files and folders at PATH into a gzip-compressed cpio archive at OUT and prints the "
                   "archive's path. OUT's extension becomes \"cpio\" unless it is \"zip\" or \"cpio\" (the archive is "
                   "cpio either way). One folder is stored as its contents; several items each under their own name, "
                   "made unique. Symbolic links are stored as links, other file systems below a folder are left out. "
                   "An existing archive at OUT is replaced once the new one is complete. Inputs over 64 MiB show "
                   "their progress on standard error.",
    .arguments = {2, -1},
    .run = runArchive,
});

const bool unarchiveRegistered = registerCommand({
    .name = "unarchive",
    .summary = "unpack a zip or cpio archive safely",
    .synopsis = {"[--max-size BYTES] [--max-entries N] ARCHIVE DIR"},
    .description = "Unpacks ARCHIVE (zip, or cpio plain or gzip-compressed) into DIR, which is made if missing. "
                   "Entries whose names are absolute or hold \"..\", that would be written through a symbolic link, "
                   "or that are links leading out of DIR are refused; device files are skipped and set-id bits "
                   "dropped. The files may hold 512 MiB together and the archive 100,000 entries unless "
                   "--max-size and --max-entries say otherwise. Items already in DIR are never replaced. When "
                   "anything fails, DIR is left as it was and the failing entry is named. Archives over 64 MiB show "
                   "their progress on standard error.",
    .options = {QCommandLineOption(u"max-size"_s, u"Cap the bytes of all files together."_s, u"BYTES"_s),
                QCommandLineOption(u"max-entries"_s, u"Cap the number of entries."_s, u"N"_s)},
    .arguments = {2, 2},
    .run = runUnarchive,
});

} // namespace

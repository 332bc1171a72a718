// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTArchiveExtractor_p.h"

#include "VTFileAccess_p.h"
#include "VTUtf8LocaleScope_p.h"
#include "VeltoFileManager.h"

#include <QFile>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>

#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// libarchive's own checks: no ".." component, nothing written through a symbolic link, never an
// existing item replaced. Absolute names are refused by our own check (see checkName()): the entries are
// written under the staging folder's absolute path, so libarchive's absolute-path flag would refuse all.
constexpr int DiskFlags = ARCHIVE_EXTRACT_SECURE_NODOTDOT | ARCHIVE_EXTRACT_SECURE_SYMLINKS
    | ARCHIVE_EXTRACT_NO_OVERWRITE | ARCHIVE_EXTRACT_TIME;
constexpr int ReadBlockSize = 65536;

struct ReaderFree
{
    void operator()(archive *reader) const { archive_read_free(reader); }
};
struct WriterFree
{
    void operator()(archive *writer) const { archive_write_free(writer); }
};
using Reader = std::unique_ptr<archive, ReaderFree>;
using Writer = std::unique_ptr<archive, WriterFree>;

Reader newReader()
{
    Reader reader(archive_read_new());
    archive_read_support_format_zip(reader.get());
    archive_read_support_format_cpio(reader.get());
    archive_read_support_filter_gzip(reader.get());
    return reader;
}

// Calls visit(part) for each component of \a path that names something (not empty, not "."), in order,
// while it answers true; false when it answered false.
template <typename Visit>
bool visitNamedComponents(QByteArrayView path, Visit &&visit)
{
    for (qsizetype start = 0; start <= path.size();) {
        const qsizetype slash = path.indexOf('/', start);
        const QByteArrayView part = path.sliced(start, (slash < 0 ? path.size() : slash) - start);
        if (!part.isEmpty() && part != "." && !visit(part))
            return false;
        start = slash < 0 ? path.size() + 1 : slash + 1;
    }
    return true;
}

// The depth of \a name below the folder (its components other than "" and "."), or -1 when it is
// absolute or has a ".." component.
qsizetype nameDepth(QByteArrayView name)
{
    qsizetype depth = 0;
    const bool inside = !name.startsWith('/') && visitNamedComponents(name, [&depth](QByteArrayView part) {
        ++depth;
        return part != "..";
    });
    return inside ? depth : -1;
}

// \a name as it is when it is UTF-8, else with each invalid sequence replaced by U+FFFD: file names are
// UTF-8 to Qt (QFile::decodeName), so a name that is not could be neither shown, listed nor removed.
QByteArray textName(const char *name)
{
    return name ? QString::fromUtf8(name).toUtf8() : QByteArray();
}

// Whether a symbolic link at \a linkDepth pointing to \a target stays inside the folder: the target is
// relative, its leading ".." steps climb no higher than the folder holding the link, and no ".." follows
// a name (a name may itself be a link, so a later ".." could leave by a way no text check can see).
bool linkTargetStaysInside(QByteArrayView target, qsizetype linkDepth)
{
    qsizetype depth = linkDepth - 1;
    bool climbing = true;
    return !target.startsWith('/') && visitNamedComponents(target, [&](QByteArrayView part) {
        if (part == "..")
            return climbing && --depth >= 0;
        climbing = false;
        return true;
    });
}

// One unpacking run: entries go into a hidden staging folder inside the target folder and are moved into
// place only when all of them succeeded.
class Unpack
{
public:
    Unpack(archive *reader, QString archiveName, QString archivePath, quint64 archiveSize,
           const VeltoUnarchiveOptions &options)
        : reader(reader), archiveName(std::move(archiveName)), archivePath(std::move(archivePath)),
          archiveSize(archiveSize), options(options)
    {
    }

    /// run: unpacks into \a folderPath; \a opened is what opening the archive answered.
    bool run(int opened, const QString &folderPath, VeltoError *error)
    {
        const bool succeeded = (opened == ARCHIVE_OK || failOpening()) && prepareFolders(folderPath) && unpackEntries()
            && moveIntoPlace();
        cleanUp(succeeded);
        if (!succeeded && error)
            *error = failure;
        return succeeded;
    }

private:
    bool prepareFolders(const QString &folderPath)
    {
        const QByteArray wanted = QFile::encodeName(folderPath);
        // The folders that are missing, innermost first: made now, removed again should the unpack fail.
        struct stat info {};
        for (std::filesystem::path missing = wanted.toStdString();
             !missing.empty() && ::stat(missing.c_str(), &info) != 0 && errno == ENOENT; missing = missing.parent_path())
            createdFolders.push_back(missing);
        std::error_code code;
        if (!createdFolders.empty() && (std::filesystem::create_directories(wanted.toStdString(), code), code))
            return failWithErrno(code.value(), folderPath);
        // The real path, so that no symbolic link above the entries can move them.
        char *real = ::realpath(wanted.constData(), nullptr);
        if (!real)
            return failWithErrno(errno, folderPath);
        folder = real;
        ::free(real);
        QByteArray pattern = folder + "/.velto-unarchive-XXXXXX";
        if (!::mkdtemp(pattern.data()))
            return failWithErrno(errno, folderPath);
        staging = pattern;
        writer.reset(archive_write_disk_new());
        archive_write_disk_set_options(writer.get(), DiskFlags);
        return true;
    }

    bool unpackEntries()
    {
        for (;;) {
            archive_entry *entry = nullptr;
            ++entryNumber;
            entryName.clear();
            const int read = archive_read_next_header(reader, &entry);
            if (read == ARCHIVE_EOF)
                return archive_write_close(writer.get()) >= ARCHIVE_WARN || failWriting();
            if (read < ARCHIVE_WARN) {
                if (entryNumber == 1)
                    entryNumber = 0; // not an archive at all: no entry to name
                return failReading();
            }
            const char *rawName = archive_entry_pathname(entry);
            const QByteArray name = textName(rawName);
            entryName = QFile::decodeName(name);
            if (entryNumber > options.maximumEntryCount)
                return fail(VeltoCocoaErrorFileReadTooLarge, u"the archive has more entries than the %1 allowed"_s.arg(options.maximumEntryCount));
            if (!rawName)
                return fail(VeltoCocoaErrorFileReadCorruptFile, u"its name cannot be read"_s);
            if (!unpackEntry(entry, name))
                return false;
            reportProgress();
        }
    }

    bool unpackEntry(archive_entry *entry, QByteArrayView name)
    {
        const mode_t type = archive_entry_filetype(entry);
        if (type == AE_IFCHR || type == AE_IFBLK || type == AE_IFIFO || type == AE_IFSOCK)
            return skipData(); // device files, pipes and sockets are not restored
        const qsizetype depth = nameDepth(name);
        if (depth < 0)
            return fail(VeltoCocoaErrorFileReadCorruptFile, u"its name leads out of the target folder"_s);
        if (depth == 0 && type == AE_IFDIR)
            return skipData(); // the folder itself
        if (depth == 0)
            return fail(VeltoCocoaErrorFileReadCorruptFile, u"it has no name"_s);
        if (const char *rawTarget = archive_entry_hardlink(entry)) {
            const QByteArray target = textName(rawTarget);
            if (nameDepth(target) <= 0)
                return fail(VeltoCocoaErrorFileReadCorruptFile, u"it is a hard link to a name outside the target folder"_s);
            archive_entry_set_hardlink(entry, (staging + '/' + target).constData());
        }
        if (type == AE_IFLNK && !linkTargetStaysInside(archive_entry_symlink(entry), depth))
            return fail(VeltoCocoaErrorFileReadCorruptFile, u"it is a symbolic link that leads out of the target folder"_s);
        if (archive_entry_size_is_set(entry) && quint64(archive_entry_size(entry)) > remainingSize())
            return failTooLarge();

        const QByteArray path = staging + '/' + name.toByteArray();
        struct stat existing {};
        if (::lstat(path.constData(), &existing) == 0 && !(S_ISDIR(existing.st_mode) && type == AE_IFDIR))
            return fail(VeltoCocoaErrorFileReadCorruptFile, u"the archive holds this name twice"_s);
        // No set-id or sticky bits; folders stay open to their owner (and can always be removed again).
        const mode_t permissions = archive_entry_perm(entry) & 0777;
        archive_entry_set_perm(entry, type == AE_IFDIR ? permissions | 0700 : permissions);
        archive_entry_set_pathname(entry, path.constData());
        if (archive_write_header(writer.get(), entry) < ARCHIVE_WARN)
            return failWriting();
        // Only files take data: a folder or link claiming some would leave the writer unusable.
        return (type == AE_IFREG ? copyData() : skipData())
            && (archive_write_finish_entry(writer.get()) >= ARCHIVE_WARN || failWriting());
    }

    bool copyData()
    {
        for (;;) {
            const void *block = nullptr;
            size_t size = 0;
            la_int64_t offset = 0;
            const int read = archive_read_data_block(reader, &block, &size, &offset);
            if (read == ARCHIVE_EOF)
                return true;
            if (read != ARCHIVE_OK) // a warning here is a damaged file (a zip entry's checksum)
                return failReading();
            if (size > remainingSize())
                return failTooLarge();
            totalSize += size;
            if (archive_write_data_block(writer.get(), block, size, offset) < ARCHIVE_WARN)
                return failWriting();
            reportProgress();
        }
    }

    bool skipData() { return archive_read_data_skip(reader) >= ARCHIVE_WARN || failReading(); }

    // Moves each item of the staging folder into the target folder, never over an existing item; on
    // failure the items already moved go back.
    bool moveIntoPlace()
    {
        DIR *listing = ::opendir(staging.constData());
        if (!listing)
            return failWithErrno(errno, QFile::decodeName(staging));
        QList<QByteArray> names;
        while (const dirent *item = ::readdir(listing)) {
            const QByteArrayView name(item->d_name);
            if (name != "." && name != "..")
                names << name.toByteArray();
        }
        ::closedir(listing);
        std::sort(names.begin(), names.end()); // the first conflict reported does not depend on the file system
        entryNumber = 0;
        for (qsizetype moved = 0; moved < names.size(); ++moved) {
            if (moveWithoutReplacing(staging + '/' + names[moved], folder + '/' + names[moved]))
                continue;
            const int problem = errno;
            for (qsizetype back = 0; back < moved; ++back)
                moveWithoutReplacing(folder + '/' + names[back], staging + '/' + names[back]);
            entryName = QFile::decodeName(names[moved]);
            if (problem == EEXIST)
                return fail(VeltoCocoaErrorFileWriteFileExists, u"an item named “%1” is already in the target folder"_s.arg(entryName));
            return failWithErrno(problem, QFile::decodeName(folder + '/' + names[moved]));
        }
        return true;
    }

    static bool moveWithoutReplacing(const QByteArray &from, const QByteArray &to)
    {
        if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
            return true;
        if (errno != EINVAL && errno != ENOSYS)
            return false;
        // A file system without the no-replace rename: test, then rename (the staging folder is ours alone).
        struct stat existing {};
        if (::lstat(to.constData(), &existing) == 0) {
            errno = EEXIST;
            return false;
        }
        return ::rename(from.constData(), to.constData()) == 0;
    }

    void cleanUp(bool succeeded)
    {
        writer.reset(); // applies the folders' deferred times and permissions before anything is removed
        std::error_code ignored;
        if (!staging.isEmpty())
            std::filesystem::remove_all(staging.toStdString(), ignored);
        if (!succeeded) {
            for (const std::filesystem::path &made : createdFolders)
                std::filesystem::remove(made, ignored); // only while empty
        }
    }

    quint64 remainingSize() const { return options.maximumTotalSize - std::min(totalSize, options.maximumTotalSize); }

    void reportProgress() const
    {
        if (options.progress)
            options.progress(quint64(archive_filter_bytes(reader, -1)), archiveSize);
    }

    bool fail(qint64 code, const QString &why, const VeltoError &underlying = {})
    {
        QString text = u"Could not unpack “%1”: "_s.arg(archiveName);
        if (entryNumber > 0)
            text += u"entry %1 “%2”: "_s.arg(entryNumber).arg(entryName);
        QVariantMap info{{VeltoLocalizedDescriptionKey, text + why + u'.'},
                         {VeltoOmitCodeKey, true},
                         {VeltoFilePathErrorKey, archivePath}};
        if (!entryName.isEmpty())
            info.insert(VeltoArchiveEntryErrorKey, entryName);
        if (!underlying.isNull())
            info.insert(VeltoUnderlyingErrorKey, QVariant::fromValue(underlying));
        failure = VeltoError(VeltoCocoaErrorDomain, code, info);
        return false;
    }

    bool failTooLarge()
    {
        return fail(VeltoCocoaErrorFileReadTooLarge,
                    u"the files would hold more than %1 bytes together"_s.arg(options.maximumTotalSize));
    }

    bool failReading()
    {
        return fail(VeltoCocoaErrorFileReadCorruptFile,
                    u"the archive is damaged or is no zip or cpio archive (%1)"_s.arg(QString::fromUtf8(archive_error_string(reader))));
    }

    // The archive could not be opened: a system error (no such file, no permission) is a file error,
    // anything else means it is no archive we read.
    bool failOpening()
    {
        const int problem = archive_errno(reader);
        if (isSystemError(problem)) {
            failure = VTFileAccess::fileError(problem, archivePath, false);
            return false;
        }
        return failReading();
    }

    // A failure to write an entry: a system error keeps its file error code; libarchive's own refusals
    // (writing through a symbolic link) make the archive unusable.
    bool failWriting()
    {
        const int problem = archive_errno(writer.get());
        const QString why = u"it cannot be written (%1)"_s.arg(QString::fromUtf8(archive_error_string(writer.get())));
        if (!isSystemError(problem) || problem == EEXIST)
            return fail(VeltoCocoaErrorFileReadCorruptFile, why);
        return fail(VTFileAccess::fileError(problem, {}, true).code(), why, VeltoError::posixError(problem));
    }

    // libarchive reports its own findings as -1 or, for a file it cannot read as an archive, as EILSEQ
    // (its private ARCHIVE_ERRNO_MISC and ARCHIVE_ERRNO_FILE_FORMAT on Linux).
    static bool isSystemError(int problem) { return problem > 0 && problem != EILSEQ; }

    bool failWithErrno(int problem, const QString &path)
    {
        return fail(VTFileAccess::fileError(problem, path, true).code(),
                    u"“%1” cannot be written (%2)"_s.arg(VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(path), QString::fromLocal8Bit(std::strerror(problem))),
                    VeltoError::posixError(problem));
    }

    archive *reader;
    Writer writer;
    const QString archiveName;
    const QString archivePath;
    const quint64 archiveSize;
    const VeltoUnarchiveOptions &options;
    QByteArray folder;
    QByteArray staging;
    std::vector<std::filesystem::path> createdFolders;
    quint64 entryNumber = 0;
    QString entryName;
    quint64 totalSize = 0;
    VeltoError failure;
};

} // namespace

bool VTArchiveExtractor::extractFile(const QString &archivePath, const QString &folder,
                                     const VeltoUnarchiveOptions &options, VeltoError *error)
{
    const VTUtf8LocaleScope utf8;
    const Reader reader = newReader();
    const int opened = archive_read_open_filename(reader.get(), QFile::encodeName(archivePath).constData(), ReadBlockSize);
    return Unpack(reader.get(), QFileInfo(archivePath).fileName(), archivePath, quint64(QFileInfo(archivePath).size()), options)
        .run(opened, folder, error);
}

bool VTArchiveExtractor::extractMemory(QByteArrayView archive, const QString &folder,
                                       const VeltoUnarchiveOptions &options, VeltoError *error)
{
    const VTUtf8LocaleScope utf8;
    const Reader reader = newReader();
    const int opened = archive_read_open_memory(reader.get(), archive.data(), size_t(archive.size()));
    return Unpack(reader.get(), u"(memory)"_s, {}, quint64(archive.size()), options).run(opened, folder, error);
}

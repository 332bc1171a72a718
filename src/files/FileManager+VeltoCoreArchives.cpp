// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FileManager+VeltoCoreArchives.h"

#include "String+VeltoPaths.h"
#include "Url+VeltoAdditions.h"
#include "VTArchiveExtractor_p.h"
#include "VTFileAccess_p.h"
#include "VTUtf8LocaleScope_p.h"
#include "VeltoFileManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <archive.h>
#include <archive_entry.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// The exit status a failed archiver reports; the error text keeps it.
constexpr int FailedStatus = 1;

struct ArchiveFree
{
    void operator()(archive *handle) const { archive_free(handle); }
};
using Archive = std::unique_ptr<archive, ArchiveFree>;

struct EntryFree
{
    void operator()(archive_entry *entry) const { archive_entry_free(entry); }
};

VeltoError generalError(qint64 code, const QString &text, const VeltoError &underlying = {})
{
    QVariantMap info{{VeltoLocalizedDescriptionKey, text}, {VeltoOmitCodeKey, true}};
    if (!underlying.isNull())
        info.insert(VeltoUnderlyingErrorKey, QVariant::fromValue(underlying));
    return VeltoError(VeltoCocoaErrorDomain, code, info);
}

VeltoError libarchiveError(archive *handle, const QString &what)
{
    const int problem = archive_errno(handle);
    return VeltoError(problem > 0 ? VeltoPOSIXErrorDomain : VeltoCocoaErrorDomain,
                      problem > 0 ? qint64(problem) : qint64(VeltoCocoaErrorFileWriteUnknown),
                      {{VeltoLocalizedDescriptionKey, u"%1: %2"_s.arg(what, QString::fromUtf8(archive_error_string(handle)))}});
}

VeltoError saveError(const QSaveFile &file, const QString &path)
{
    return generalError(VeltoCocoaErrorFileWriteUnknown,
                        u"“%1” cannot be written: %2"_s.arg(VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(path), file.errorString()));
}

// Writes the tree at \a source into a gzip-compressed cpio archive at \a archivePath: a folder as its
// contents, anything else under its own name. The archive appears at its path only when complete.
bool writeArchive(const QString &source, const QString &archivePath, const VeltoArchiveProgress &progress,
                  VeltoError *failure)
{
    const VTUtf8LocaleScope utf8;
    QSaveFile file(archivePath);
    if (!file.open(QIODevice::WriteOnly))
        return (*failure = saveError(file, archivePath), false);
    struct stat self {};
    ::fstat(file.handle(), &self); // the archive's own file, left out should it lie inside the source

    const Archive writer(archive_write_new());
    archive_write_set_format_cpio_odc(writer.get());
    archive_write_add_filter_gzip(writer.get());
    const Archive disk(archive_read_disk_new());
    archive_read_disk_set_symlink_hybrid(disk.get()); // the named item is followed, links below it are stored
    archive_read_disk_set_behavior(disk.get(), ARCHIVE_READDISK_NO_TRAVERSE_MOUNTS | ARCHIVE_READDISK_NO_XATTR
                                                   | ARCHIVE_READDISK_NO_ACL | ARCHIVE_READDISK_NO_FFLAGS);
    const QByteArray root = QFile::encodeName(QDir::cleanPath(source));
    if (archive_write_open_fd(writer.get(), file.handle()) != ARCHIVE_OK)
        return (*failure = libarchiveError(writer.get(), archivePath), false);
    if (archive_read_disk_open(disk.get(), root.constData()) != ARCHIVE_OK)
        return (*failure = libarchiveError(disk.get(), source), false);

    const QByteArray rootName = QFile::encodeName(QFileInfo(source).fileName());
    const qsizetype prefixLength = root.endsWith('/') ? root.size() : root.size() + 1; // "root/" before each name
    quint64 written = 0;
    for (;;) {
        const std::unique_ptr<archive_entry, EntryFree> entry(archive_entry_new());
        const int read = archive_read_next_header2(disk.get(), entry.get());
        if (read == ARCHIVE_EOF)
            break;
        if (read < ARCHIVE_WARN)
            return (*failure = libarchiveError(disk.get(), source), false);
        archive_read_disk_descend(disk.get());
        const QByteArrayView path(archive_entry_pathname(entry.get()));
        const bool isRoot = path == root;
        if ((isRoot && archive_entry_filetype(entry.get()) == AE_IFDIR)
            || (archive_entry_dev(entry.get()) == self.st_dev && quint64(archive_entry_ino(entry.get())) == self.st_ino))
            continue;
        archive_entry_set_pathname(entry.get(), (isRoot ? rootName : path.sliced(prefixLength).toByteArray()).constData());
        archive_entry_set_nlink(entry.get(), 1); // each file with its own data
        if (archive_write_header(writer.get(), entry.get()) < ARCHIVE_WARN)
            return (*failure = libarchiveError(writer.get(), QFile::decodeName(path.toByteArray())), false);
        char buffer[65536];
        for (la_ssize_t got; (got = archive_read_data(disk.get(), buffer, sizeof buffer)) != 0;) {
            if (got < 0)
                return (*failure = libarchiveError(disk.get(), QFile::decodeName(path.toByteArray())), false);
            if (archive_write_data(writer.get(), buffer, size_t(got)) < 0)
                return (*failure = libarchiveError(writer.get(), archivePath), false);
            written += quint64(got);
            if (progress)
                progress(written, 0);
        }
    }
    if (archive_write_close(writer.get()) != ARCHIVE_OK)
        return (*failure = libarchiveError(writer.get(), archivePath), false);
    if (!file.commit())
        return (*failure = saveError(file, archivePath), false);
    return true;
}

// Hard-links each item into \a staging under its own name made unique, or copies it where a link cannot
// be made (folders, other file systems); items that can be neither are left out.
void stageItems(const QStringList &paths, const QString &staging)
{
    for (const QString &path : paths) {
        const QString name = VeltoFileManager::uniqueFileNameInFolder(QFileInfo(path).fileName(), staging);
        if (name.isNull())
            continue;
        const QByteArray from = QFile::encodeName(path);
        const QByteArray to = QFile::encodeName(staging + u'/' + name);
        if (::link(from.constData(), to.constData()) == 0)
            continue;
        std::error_code ignored;
        std::filesystem::copy(from.toStdString(), to.toStdString(),
                              std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
                              ignored);
    }
}

} // namespace

namespace velto {

QUrl archiveFilePaths(const QStringList &paths, const QUrl &archiveURL, VeltoError *error,
                      const VeltoArchiveProgress &progress)
{
    QString archivePath = archiveURL.isLocalFile() ? archiveURL.toLocalFile() : archiveURL.path();
    const QString extension = pathExtensionVelto(archivePath);
    if (extension != u"zip"_s && extension != u"cpio"_s)
        archivePath = stringByChangingPathExtensionVelto(archivePath, u"cpio");
    if (paths.isEmpty()) {
        if (error)
            *error = generalError(VeltoCocoaErrorFileNoSuchFile, u"no files given to zip"_s);
        return {};
    }

    QString source = paths.first();
    QString staging;
    if (paths.size() > 1) {
        staging = VeltoFileManager::uniqueFilePathForPath(stringByChangingPathExtensionVelto(archivePath, {}));
        if (staging.isNull() || ::mkdir(QFile::encodeName(staging).constData(), 0777) != 0) {
            if (error)
                *error = VTFileAccess::fileError(staging.isNull() ? EEXIST : errno, staging, true);
            return {};
        }
        stageItems(paths, staging);
        source = staging;
    }
    VeltoError failure;
    const bool written = writeArchive(source, archivePath, progress, &failure);
    if (!staging.isEmpty()) {
        std::error_code ignored;
        std::filesystem::remove_all(QFile::encodeName(staging).toStdString(), ignored);
    }
    if (written && VeltoFileManager::isReadableItemAtURL(QUrl::fromLocalFile(archivePath)))
        return fileURLWithVeltoPath(archivePath);
    if (error) {
        *error = generalError(VeltoCocoaErrorFileNoSuchFile,
                              u"ditto archive was not created (task status: %1)"_s.arg(FailedStatus), failure);
    }
    return {};
}

QUrl archiveToTempFileForFileAtPath(const QString &path)
{
    const QString name = stringByChangingPathExtensionVelto(QFileInfo(path).fileName(), u"cpio");
    const QString archivePath = VeltoFileManager::tempFilePathWithFileName(name);
    return archivePath.isNull() ? QUrl() : archiveFilePaths({path}, QUrl::fromLocalFile(archivePath));
}

bool unarchiveFileAtURL(const QUrl &archiveURL, const QUrl &folderURL)
{
    return unarchiveFileAtURL(archiveURL, folderURL, VeltoUnarchiveOptions());
}

bool unarchiveFileAtURL(const QUrl &archiveURL, const QUrl &folderURL, const VeltoUnarchiveOptions &options,
                        VeltoError *error)
{
    if (!archiveURL.isLocalFile() || !folderURL.isLocalFile()) {
        if (error) {
            *error = !archiveURL.isLocalFile()
                ? generalError(VeltoCocoaErrorFileReadUnsupportedScheme, u"“%1” is not a file URL"_s.arg(archiveURL.toDisplayString()))
                : generalError(VeltoCocoaErrorFileWriteUnsupportedScheme, u"“%1” is not a file URL"_s.arg(folderURL.toDisplayString()));
        }
        return false;
    }
    return VTArchiveExtractor::extractFile(archiveURL.toLocalFile(), folderURL.toLocalFile(), options, error);
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLinuxBookmarkPlatform.h"

#include "VTBookmarkRecord_p.h"
#include "VeltoApplication.h"
#include "VeltoFileIdentity.h"
#include "VeltoFileManager.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <sys/stat.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

// Larger than any record: three texts of at most 65,535 bytes and the fixed fields.
constexpr qint64 LargestAliasFile = 256 * 1024;

void fail(VeltoError *error, const VeltoError &failure)
{
    if (error)
        *error = failure;
}

VeltoError unreadableError(const QString &problem)
{
    return VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadCorruptFile,
                                       u"The bookmark data cannot be read: %1."_s.arg(problem));
}

QString absoluteCleanPath(const QUrl &url)
{
    return QDir::cleanPath(QFileInfo(url.toLocalFile()).absoluteFilePath());
}

// The folder a document-relative path starts from: the document's own folder.
QString documentFolder(const QUrl &document)
{
    return document.isLocalFile() ? QFileInfo(absoluteCleanPath(document)).path() : QString();
}

// The entry with \a identity in \a folder or in its subfolders (links not followed), breadth first.
QString findMovedFile(const VeltoFileIdentity &identity, const QString &folder)
{
    QStringList level{folder};
    int examined = 0;
    for (int depth = 0; depth <= VeltoLinuxBookmarkPlatform::SearchDepth && !level.isEmpty(); ++depth) {
        QStringList below;
        for (const QString &current : std::as_const(level)) {
            QDirIterator entries(current, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
            while (entries.hasNext()) {
                if (++examined > VeltoLinuxBookmarkPlatform::SearchLimit)
                    return QString();
                const QString path = entries.next();
                struct stat status;
                if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
                    continue;
                if (VeltoFileIdentity{quint64(status.st_dev), quint64(status.st_ino)} == identity)
                    return path;
                if (S_ISDIR(status.st_mode))
                    below << path;
            }
        }
        level = below;
    }
    return QString();
}

} // namespace

bool VeltoLinuxBookmarkPlatform::isSandboxed() const
{
    return VeltoApplication::isRunningInsideSandbox();
}

bool VeltoLinuxBookmarkPlatform::isSecurityScopingFunctional() const
{
    return true;
}

QByteArray VeltoLinuxBookmarkPlatform::bookmarkData(const QUrl &target, VeltoBookmarkCreationOptions options,
                                                    const QUrl &document, VeltoError *error)
{
    const std::optional<VeltoFileIdentity> identity = VeltoFileIdentity::ofURL(target);
    if (!identity) {
        (void)checkResourceIsReachable(target, error);
        return QByteArray();
    }
    VTBookmarkRecord record;
    record.options = options;
    record.identity = *identity;
    record.path = absoluteCleanPath(target);
    record.name = record.path == u"/" ? record.path : QFileInfo(record.path).fileName();
    if (const QString folder = documentFolder(document); !folder.isEmpty())
        record.documentRelativePath = QDir(folder).relativeFilePath(record.path);
    QByteArray bytes = record.encoded();
    if (bytes.isNull())
        fail(error, VeltoError::posixError(ENAMETOOLONG));
    return bytes;
}

std::optional<VeltoBookmarkPlatform::ResourceValues> VeltoLinuxBookmarkPlatform::resourceValues(const QByteArray &bookmark) const
{
    const std::optional<VTBookmarkRecord> record = VTBookmarkRecord::decoded(bookmark);
    if (!record)
        return std::nullopt;
    return ResourceValues{record->name, record->path};
}

QUrl VeltoLinuxBookmarkPlatform::resolveBookmarkData(const QByteArray &bookmark, VeltoBookmarkResolutionOptions,
                                                     const QUrl &document, bool *isStale, VeltoError *error)
{
    QString problem;
    const std::optional<VTBookmarkRecord> record = VTBookmarkRecord::decoded(bookmark, &problem);
    if (!record) {
        fail(error, unreadableError(problem));
        return QUrl();
    }
    const auto found = [&](const QString &path, bool stale) {
        if (isStale)
            *isStale = stale;
        return QUrl::fromLocalFile(path);
    };
    QStringList candidates;
    if (const QString folder = documentFolder(document); !folder.isEmpty() && !record->documentRelativePath.isEmpty())
        candidates << QDir::cleanPath(folder + u'/' + record->documentRelativePath);
    candidates << record->path;
    QList<std::optional<VeltoFileIdentity>> identities;
    for (const QString &candidate : std::as_const(candidates)) {
        identities << VeltoFileIdentity::ofPath(candidate);
        if (identities.last() == record->identity)
            return found(candidate, candidate != record->path);
    }
    // Another file at the place: an atomic save replaced it. The place wins over the old file, which an
    // editor may have kept under a backup name.
    for (qsizetype index = 0; index < candidates.size(); ++index) {
        if (identities.at(index))
            return found(candidates.at(index), true);
    }
    const QString moved = findMovedFile(record->identity, QFileInfo(record->path).path());
    if (!moved.isNull())
        return found(moved, true);
    (void)checkResourceIsReachable(QUrl::fromLocalFile(record->path), error);
    return QUrl();
}

bool VeltoLinuxBookmarkPlatform::checkResourceIsReachable(const QUrl &url, VeltoError *error) const
{
    if (VeltoFileIdentity::ofURL(url))
        return true;
    // The file manager's access check names what is wrong: no such file, or no permission on the way.
    (void)VeltoFileManager::isReadableItemAtURL(url, error);
    return false;
}

bool VeltoLinuxBookmarkPlatform::startAccessingSecurityScopedResource(const QUrl &)
{
    return true;
}

void VeltoLinuxBookmarkPlatform::stopAccessingSecurityScopedResource(const QUrl &)
{
}

bool VeltoLinuxBookmarkPlatform::writeBookmarkDataToURL(const QByteArray &bookmark, const QUrl &aliasFile,
                                                        VeltoError *error)
{
    if (!aliasFile.isLocalFile()) {
        fail(error, VeltoError(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteUnsupportedScheme));
        return false;
    }
    QSaveFile file(aliasFile.toLocalFile());
    if (file.open(QIODevice::WriteOnly) && file.write(bookmark) == bookmark.size() && file.commit())
        return true;
    fail(error, VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteUnknown,
                                            u"The alias file could not be written: %1"_s.arg(file.errorString())));
    return false;
}

QByteArray VeltoLinuxBookmarkPlatform::bookmarkDataWithContentsOfURL(const QUrl &aliasFile, VeltoError *error) const
{
    QFile file(aliasFile.toLocalFile());
    if (!aliasFile.isLocalFile() || !file.open(QIODevice::ReadOnly)) {
        if (checkResourceIsReachable(aliasFile, error))
            fail(error, VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadUnknown,
                                                    u"The alias file could not be read: %1"_s.arg(file.errorString())));
        return QByteArray();
    }
    const QByteArray bytes = file.read(LargestAliasFile + 1);
    QString problem;
    if (bytes.size() > LargestAliasFile)
        problem = u"the alias file is larger than any bookmark"_s;
    else if (!VTBookmarkRecord::decoded(bytes, &problem))
        problem.prepend(u"the alias file's content: "_s);
    if (problem.isNull())
        return bytes;
    fail(error, unreadableError(problem));
    return QByteArray();
}

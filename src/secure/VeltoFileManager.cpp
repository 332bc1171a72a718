// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileManager.h"

#include "String+VeltoPaths.h"
#include "Url+VeltoAdditions.h"
#include "VTTextDecoding_p.h"
#include "VeltoApplication.h"
#include "VeltoCore.h"
#include "VeltoLocalization.h"
#include "VeltoLogSink.h"
#include "VeltoRandom.h"
#include "VeltoSystemInfo.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int UniqueNameAttempts = 198;
constexpr int LastCountedAttempt = 99;

QString localized(const char *key)
{
    return VeltoLocalizeInBundle(QString::fromUtf8(key), VeltoCoreBundle().get());
}

QByteArray nativePath(const QUrl &url)
{
    return url.isLocalFile() ? QFile::encodeName(url.toLocalFile()) : QByteArray();
}

QUrl folderURL(const QString &path)
{
    return QUrl::fromLocalFile(path.endsWith(u'/') ? path : path + u'/');
}

// An item is there when lstat() finds it: a dangling symbolic link takes up its name too.
bool itemExists(const QString &path)
{
    struct stat status;
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

// Makes \a path and the folders above it; the POSIX error of the first failure.
VeltoError makeFolders(const QString &path)
{
    std::error_code code;
    std::filesystem::create_directories(std::filesystem::path(QFile::encodeName(path).toStdString()), code);
    if (!code || QFileInfo(path).isDir())
        return VeltoError();
    return VeltoError(VeltoPOSIXErrorDomain, code.value(), {{VeltoFilePathErrorKey, path}});
}

// The entries of a folder, "." and ".." left out; nothing with errno set when it cannot be listed.
std::optional<QStringList> folderEntries(const QByteArray &path)
{
    DIR *folder = ::opendir(path.constData());
    if (!folder)
        return std::nullopt;
    QStringList names;
    while (const dirent *entry = ::readdir(folder)) {
        const QByteArrayView name(entry->d_name);
        if (name != "." && name != "..")
            names << QFile::decodeName(entry->d_name);
    }
    ::closedir(folder);
    return names;
}

VeltoError fileError(qint64 code, const char *reasonKey, const QUrl &url)
{
    return VeltoError::errorWithDomain(VeltoCocoaErrorDomain, code,
                                       u"%1: %2"_s.arg(localized(reasonKey), velto::filePathForUserDisplay(url)));
}

void fail(VeltoError *error, const VeltoError &failure)
{
    if (error)
        *error = failure;
}

// Extended attribute names as the kernel takes them: in the "user." namespace unless they name one.
bool hasNamespace(QByteArrayView name)
{
    for (const char *space : {"user.", "trusted.", "security.", "system."}) {
        if (name.startsWith(space))
            return true;
    }
    return false;
}

std::optional<QByteArray> kernelAttributeName(QByteArrayView name)
{
    if (name.isEmpty() || name.contains('\0'))
        return std::nullopt;
    return hasNamespace(name) ? name.toByteArray() : "user." + name.toByteArray();
}

std::optional<QByteArray> kernelAttributeName(const QString &name)
{
    if (!name.isValidUtf16())
        return std::nullopt;
    return kernelAttributeName(QByteArrayView(name.toUtf8()));
}

VeltoError invalidKeyError()
{
    return VeltoError::posixError(EINVAL, u"setxattr invalid key"_s);
}

VeltoError readError(int code)
{
    return VeltoError::posixError(code, u"Could not read extended file attribute."_s);
}

VeltoError writeError(int code, const QUrl &url)
{
    return VeltoError::posixError(code, localized("_Could not set attribute for file: %@")
                                            .replace(u"%@"_s, velto::filePathForUserDisplay(url)));
}

QString formattedSuffix(const QString &suffixFormat, qint32 counter)
{
    QString suffix = suffixFormat;
    const qsizetype placeholder = suffix.indexOf(u"%d");
    if (placeholder >= 0)
        suffix.replace(placeholder, 2, QString::number(counter));
    return suffix;
}

bool isUsableFileName(const QString &name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') && !name.contains(QChar(0));
}

} // namespace

QUrl VeltoFileManager::userHomeFolderURL()
{
    static const QUrl home = folderURL(VeltoSystem_RealHomeFolder());
    return home;
}

QUrl VeltoFileManager::userLibraryFolderURL()
{
    return userHomeFolderURL().resolved(QUrl(u".var/"_s));
}

QUrl VeltoFileManager::sandboxContainersFolderURL()
{
    return userLibraryFolderURL().resolved(QUrl(u"app/"_s));
}

QUrl VeltoFileManager::applicationSandboxFolderURL()
{
    static const QUrl container = [] {
        const QString identifier = VeltoApplication::infoDictionary().value(VeltoInfoBundleIdentifierKey).toString();
        if (!isUsableFileName(identifier))
            return QUrl();
        return folderURL(sandboxContainersFolderURL().toLocalFile() + identifier);
    }();
    return container;
}

bool VeltoFileManager::isFileInsideSandboxAtURL(const QUrl &url)
{
    const QUrl container = applicationSandboxFolderURL();
    return !container.isEmpty() && velto::isFileInDescendentOfFolderAtURL(url, container);
}

bool VeltoFileManager::isItemInsideDocumentRevisionsFolderAtURL(const QUrl &url)
{
    return url.path().contains(u"/.DocumentRevisions");
}

QUrl VeltoFileManager::applicationSupportProductFolderURL()
{
    return applicationSupportProductFolderURLWithCreate(true);
}

QUrl VeltoFileManager::applicationSupportProductFolderURLWithCreate(bool create, VeltoError *error)
{
    const QString dataFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (dataFolder.isEmpty())
        return QUrl();
    const QString name = VeltoApplication::infoDictionary().value(VeltoInfoBundleNameKey).toString();
    const QString folder = velto::stringByAppendingPathComponentVelto(dataFolder, name);
    if (create) {
        const VeltoError failure = makeFolders(folder);
        if (!failure.isNull()) {
            static std::once_flag logged;
            std::call_once(logged, [&] { VeltoLogSink::write(u"* could not create App Support folder: "_s + failure.description()); });
            fail(error, failure);
        }
    }
    return folderURL(folder);
}

QUrl VeltoFileManager::applicationSupportSubfolderURLWithName(const QString &name, bool create, VeltoError *error)
{
    const QUrl product = applicationSupportProductFolderURLWithCreate(create);
    if (product.isEmpty())
        return QUrl();
    const QString folder = velto::stringByAppendingPathComponentVelto(product.toLocalFile(), name);
    if (create) {
        const VeltoError failure = makeFolders(folder);
        if (!failure.isNull()) {
            fail(error, failure);
            return QUrl();
        }
    }
    return folderURL(folder);
}

bool VeltoFileManager::createDirectoryAtURL(const QUrl &url, VeltoError *error)
{
    const VeltoError failure = url.isLocalFile() ? makeFolders(url.toLocalFile())
                                                 : VeltoError(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteUnsupportedScheme);
    if (failure.isNull())
        return true;
    fail(error, failure);
    return false;
}

bool VeltoFileManager::isFolderEffectivelyEmptyVeltoAtURL(const QUrl &url)
{
    if (!velto::isFileDirectoryVelto(url))
        return false;
    const std::optional<QStringList> entries = folderEntries(nativePath(url));
    return entries && (entries->isEmpty() || *entries == QStringList{FolderSettingsFileName});
}

QString VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(const QString &path)
{
    const QString home = QDir::cleanPath(userHomeFolderURL().toLocalFile());
    if (path == home)
        return u"~"_s;
    if (home != u"/" && path.startsWith(home) && path.at(home.size()) == u'/')
        return u'~' + path.sliced(home.size());
    return path;
}

QString VeltoFileManager::pathByExpandingTildeToRealHome(const QString &path)
{
    if (!path.startsWith(u'~'))
        return path;
    return velto::stringByAppendingPathComponentVelto(QDir::cleanPath(userHomeFolderURL().toLocalFile()), path.sliced(1));
}

bool VeltoFileManager::isReadableItemAtURL(const QUrl &url, VeltoError *error)
{
    const QByteArray path = nativePath(url);
    struct stat status;
    if (::stat(path.constData(), &status) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR || path.isEmpty();
        fail(error, fileError(missing ? VeltoCocoaErrorFileReadNoSuchFile : VeltoCocoaErrorFileReadNoPermission,
                              missing ? "_the file does not exist" : "_permission was denied", url));
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        if (folderEntries(path))
            return true;
        fail(error, VeltoError(VeltoPOSIXErrorDomain, errno, {{VeltoFilePathErrorKey, url.toLocalFile()}}));
        return false;
    }
    if (::access(path.constData(), R_OK) == 0)
        return true;
    fail(error, fileError(VeltoCocoaErrorFileReadNoPermission, "_permission was denied", url));
    return false;
}

bool VeltoFileManager::isWritableItemVeltoAtURL(const QUrl &url, bool test, VeltoError *error)
{
    const QByteArray path = nativePath(url);
    if (!path.isEmpty() && ::access(path.constData(), W_OK) == 0) {
        if (!test || velto::isFileDirectoryVelto(url))
            return true;
        // Opened for writing, never truncated or created; not blocking on a pipe without a reader.
        const int descriptor = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor >= 0) {
            ::close(descriptor);
            return true;
        }
        fail(error, VeltoError(VeltoPOSIXErrorDomain, errno, {{VeltoFilePathErrorKey, url.toLocalFile()}}));
        return false;
    }
    fail(error, VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteNoPermission,
                                            localized("_The file is read-only.")));
    return false;
}

bool VeltoFileManager::hasPosixPermissionToRead(bool read, const QUrl &url)
{
    struct stat status;
    if (!url.isLocalFile() || ::stat(nativePath(url).constData(), &status) != 0)
        return false;
    if (status.st_mode & (read ? S_IROTH : S_IWOTH))
        return true;
    if ((status.st_mode & (read ? S_IRUSR : S_IWUSR)) && status.st_uid == ::getuid())
        return true;
    if (!(status.st_mode & (read ? S_IRGRP : S_IWGRP)))
        return false;
    const int count = ::getgroups(0, nullptr);
    std::vector<gid_t> groups(size_t(std::max(count, 0)));
    return count > 0 && ::getgroups(count, groups.data()) == count
           && std::find(groups.cbegin(), groups.cend(), status.st_gid) != groups.cend();
}

bool VeltoFileManager::isHiddenItemVeltoAtURL(const QUrl &url)
{
    const QFileInfo item(url.toLocalFile());
    const QString name = item.fileName();
    if (!url.isLocalFile() || name.isEmpty())
        return false;
    if (name.startsWith(u'.'))
        return true;
    // File managers also hide the names listed, one per line, in the folder's ".hidden" file.
    QFile hidden(item.dir().filePath(u".hidden"_s));
    if (!hidden.open(QIODevice::ReadOnly))
        return false;
    while (!hidden.atEnd()) {
        if (QString::fromUtf8(hidden.readLine()).trimmed() == name)
            return true;
    }
    return false;
}

bool VeltoFileManager::readExtendedAttribute(const QString &name, qint64 *byteCount, QByteArray *data, const QUrl &url,
                                             VeltoError *error)
{
    if (byteCount)
        *byteCount = 0;
    if (data)
        *data = QByteArray();
    const std::optional<QByteArray> attribute = kernelAttributeName(name);
    if (!attribute) {
        fail(error, invalidKeyError());
        return false;
    }
    const QByteArray path = nativePath(url);
    const auto readFailure = [error](int code) {
        if (code == ENODATA)
            return true; // no such attribute: success without data
        fail(error, readError(code));
        return false;
    };
    const ssize_t size = ::lgetxattr(path.constData(), attribute->constData(), nullptr, 0);
    if (size < 0)
        return readFailure(errno);
    if (size == 0) {
        if (data)
            *data = QByteArray(""); // empty, not null: the attribute is there
        return true;
    }
    if (byteCount)
        *byteCount = size;
    if (!data)
        return true;
    QByteArray bytes(size, Qt::Uninitialized);
    const ssize_t read = ::lgetxattr(path.constData(), attribute->constData(), bytes.data(), size_t(bytes.size()));
    if (read < 0) {
        if (byteCount)
            *byteCount = 0;
        return readFailure(errno);
    }
    bytes.truncate(read);
    if (byteCount)
        *byteCount = read;
    *data = read == 0 ? QByteArray("") : bytes;
    return true;
}

QString VeltoFileManager::readStringExtendedAttribute(const QString &name, const QUrl &url, VeltoError *error)
{
    QByteArray data;
    if (!readExtendedAttribute(name, nullptr, &data, url, error) || data.isEmpty())
        return QString();
    const QString text = VTStringFromUtf8ThenAscii(data);
    if (text.isNull())
        fail(error, VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData,
                                                u"could not convert xattr data to string"_s));
    return text;
}

std::optional<QSet<QString>> VeltoFileManager::readExtendedAttributeNamesForFileAtURL(const QUrl &url, VeltoError *error)
{
    const QByteArray path = nativePath(url);
    ssize_t size = ::llistxattr(path.constData(), nullptr, 0);
    QByteArray list;
    if (size > 0) {
        list.resize(size);
        size = ::llistxattr(path.constData(), list.data(), size_t(list.size()));
    }
    if (size < 0) {
        if (errno == ENODATA)
            return QSet<QString>();
        fail(error, readError(errno));
        return std::nullopt;
    }
    QSet<QString> names;
    for (const QByteArray &raw : list.first(size).split('\0')) {
        const QString name = VTStringFromUtf8ThenAscii(raw);
        if (raw.isEmpty() || name.isNull())
            continue;
        names.insert(name.startsWith(u"user.") ? name.sliced(5) : name);
    }
    return names;
}

bool VeltoFileManager::writeExtendedAttribute(const QString &name, const QByteArray &data, const QUrl &url,
                                              VeltoError *error)
{
    const std::optional<QByteArray> attribute = kernelAttributeName(name);
    if (!attribute) {
        fail(error, invalidKeyError());
        return false;
    }
    if (::lsetxattr(nativePath(url).constData(), attribute->constData(), data.constData(), size_t(data.size()), 0) == 0)
        return true;
    fail(error, writeError(errno, url));
    return false;
}

bool VeltoFileManager::removeExtendedAttribute(QByteArrayView name, const QUrl &url, VeltoError *error)
{
    const std::optional<QByteArray> attribute = kernelAttributeName(name);
    if (!attribute) {
        fail(error, invalidKeyError());
        return false;
    }
    if (::lremovexattr(nativePath(url).constData(), attribute->constData()) == 0)
        return true;
    fail(error, writeError(errno, url));
    return false;
}

bool VeltoFileManager::removeQuarantineFromItemAtURL(const QUrl &url, VeltoError *error)
{
    const QByteArray name = QByteArray(QuarantineAttributeName.data(), QuarantineAttributeName.size());
    const bool removed = removeExtendedAttribute(name, url, error);
    if (velto::isFileDirectoryVelto(url)) {
        QDirIterator below(url.toLocalFile(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (below.hasNext())
            (void)removeExtendedAttribute(name, QUrl::fromLocalFile(below.next()));
    }
    return removed;
}

QString VeltoFileManager::uniqueFileNameWithSuffix(const QString &fileName, const QString &suffixFormat,
                                                   const QString &folder)
{
    if (!isUsableFileName(fileName))
        return QString();
    const QString extension = velto::pathExtensionVelto(fileName);
    const QString stem = extension.isEmpty() ? fileName : fileName.chopped(extension.size() + 1);
    QString candidate = fileName;
    for (int attempt = 1; attempt <= UniqueNameAttempts; ++attempt) {
        if (!itemExists(velto::stringByAppendingPathComponentVelto(folder, candidate)))
            return candidate;
        const int next = attempt + 1;
        const qint32 counter = next <= LastCountedAttempt ? next : qint32(VeltoRandom_Int());
        candidate = stem + formattedSuffix(suffixFormat, counter);
        if (!extension.isEmpty())
            candidate += u'.' + extension;
    }
    return QString();
}

QString VeltoFileManager::uniqueFileNameInFolder(const QString &fileName, const QString &folder)
{
    return uniqueFileNameWithSuffix(fileName, u" (%d)"_s, folder);
}

QString VeltoFileManager::uniqueFileNameInFolderAtURL(const QString &fileName, const QUrl &folderURL)
{
    return folderURL.isLocalFile() ? uniqueFileNameInFolder(fileName, folderURL.toLocalFile()) : QString();
}

QString VeltoFileManager::uniqueFilePathForPath(const QString &path)
{
    if (path.isEmpty() || !itemExists(path))
        return path.isEmpty() ? QString() : path;
    const QFileInfo item(path);
    const QString name = uniqueFileNameInFolder(item.fileName(), item.path());
    return name.isNull() ? QString() : velto::stringByAppendingPathComponentVelto(item.path(), name);
}

QUrl VeltoFileManager::uniqueFileURLWithFileName(const QString &fileName, const QUrl &folderURL)
{
    if (!folderURL.isLocalFile() || !isUsableFileName(fileName))
        return QUrl();
    const QString folder = folderURL.toLocalFile();
    const QString name = uniqueFileNameInFolder(fileName, folder);
    return name.isNull() ? QUrl() : QUrl::fromLocalFile(velto::stringByAppendingPathComponentVelto(folder, name));
}

QUrl VeltoFileManager::temporaryItemURLWithLastPathComponent(const QString &fileName, VeltoError *error)
{
    // TMPDIR read here: QDir::tempPath() gives nothing for a folder that does not exist yet.
    const QString variable = qEnvironmentVariable("TMPDIR");
    const QString folder = variable.isEmpty() ? u"/tmp"_s : variable;
    const VeltoError failure = makeFolders(folder);
    if (!failure.isNull()) {
        fail(error, failure);
        return QUrl();
    }
    const QString name = uniqueFileNameInFolder(fileName, folder);
    return name.isNull() ? QUrl() : QUrl::fromLocalFile(velto::stringByAppendingPathComponentVelto(folder, name));
}

QString VeltoFileManager::tempFilePathWithFileName(const QString &fileName)
{
    const QUrl url = temporaryItemURLWithLastPathComponent(fileName);
    return url.isEmpty() ? QString() : url.toLocalFile();
}

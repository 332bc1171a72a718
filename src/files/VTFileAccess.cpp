// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFileAccess_p.h"

#include "VeltoFileManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Writes all of data to fd, retrying interrupted and partial writes; false with errno set on failure.
bool writeAll(int fd, const QByteArray &data)
{
    qsizetype done = 0;
    while (done < data.size()) {
        const ssize_t written = ::write(fd, data.constData() + done, size_t(data.size() - done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        done += written;
    }
    return ::fsync(fd) == 0;
}

// Closes fd, keeping the errno of the failure that came before.
void closeKeepingErrno(int fd)
{
    const int saved = errno;
    ::close(fd);
    errno = saved;
}

// The process's umask, read without changing it (umask() can only be read by setting it, which would
// race with other threads creating files); 022 when the kernel does not say.
mode_t currentUmask()
{
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("Umask:")) {
                bool ok = false;
                const uint mask = line.mid(6).trimmed().toUInt(&ok, 8);
                if (ok)
                    return mode_t(mask);
            }
        }
    }
    return 022;
}

} // namespace

VeltoError VTFileAccess::fileError(int errnoValue, const QString &path, bool writing)
{
    qint64 code = writing ? VeltoCocoaErrorFileWriteUnknown : VeltoCocoaErrorFileReadUnknown;
    switch (errnoValue) {
    case ENOENT: case ENOTDIR:
        code = writing ? VeltoCocoaErrorFileNoSuchFile : VeltoCocoaErrorFileReadNoSuchFile;
        break;
    case EACCES: case EPERM:
        code = writing ? VeltoCocoaErrorFileWriteNoPermission : VeltoCocoaErrorFileReadNoPermission;
        break;
    case EFBIG:
        code = writing ? VeltoCocoaErrorFileWriteOutOfSpace : VeltoCocoaErrorFileReadTooLarge;
        break;
    case ENOSPC: case EDQUOT:
        code = writing ? VeltoCocoaErrorFileWriteOutOfSpace : code;
        break;
    case EEXIST:
        code = writing ? VeltoCocoaErrorFileWriteFileExists : code;
        break;
    case EROFS:
        code = writing ? VeltoCocoaErrorFileWriteVolumeReadOnly : code;
        break;
    default:
        break;
    }
    const QString text = writing ? u"The file “%1” could not be saved: %2."_s : u"The file “%1” could not be read: %2."_s;
    return VeltoError(VeltoCocoaErrorDomain, code,
                      {{VeltoLocalizedDescriptionKey, text.arg(VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(path), QString::fromLocal8Bit(std::strerror(errnoValue)))},
                       {VeltoFilePathErrorKey, path},
                       {VeltoUnderlyingErrorKey, QVariant::fromValue(VeltoError::posixError(errnoValue))}});
}

std::optional<QByteArray> VTFileAccess::readWholeFile(const QString &path, VeltoError *error)
{
    auto failed = [&](int errnoValue) -> std::optional<QByteArray> {
        if (error)
            *error = fileError(errnoValue, path, false);
        return std::nullopt;
    };
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return failed(errno);
    struct stat info {};
    if (::fstat(fd, &info) != 0 || S_ISDIR(info.st_mode) || info.st_size > MaximumFileSize) {
        const int problem = S_ISDIR(info.st_mode) ? EISDIR : info.st_size > MaximumFileSize ? EFBIG : errno;
        ::close(fd);
        return failed(problem);
    }
    // Read to the end rather than trust the size: the file may change while it is read.
    QByteArray data;
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 || data.size() + got > MaximumFileSize) {
            const int problem = got < 0 ? errno : EFBIG;
            ::close(fd);
            return failed(problem);
        }
        if (got == 0)
            break;
        data.append(buffer, got);
    }
    ::close(fd);
    return data;
}

bool VTFileAccess::writeFile(const QString &path, const QByteArray &data, Existing existing, VeltoError *error)
{
    auto failed = [&](int errnoValue) {
        if (error)
            *error = fileError(errnoValue, path, true);
        return false;
    };
    const QByteArray target = QFile::encodeName(path);
    if (existing == Existing::Refuse) {
        // Nothing was there before, so removing a partial file loses nothing.
        const int fd = ::open(target.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0)
            return failed(errno);
        if (!writeAll(fd, data)) {
            closeKeepingErrno(fd);
            const int problem = errno;
            ::unlink(target.constData());
            return failed(problem);
        }
        return ::close(fd) == 0 || failed(errno);
    }
    const QFileInfo info(path);
    QByteArray temporary = QFile::encodeName(info.absolutePath() + u"/."_s + info.fileName() + u".XXXXXX"_s);
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        return failed(errno);
    // The new file gets the old one's permissions, or those a newly created file would get.
    struct stat old {};
    mode_t mode = 0666;
    if (::stat(target.constData(), &old) == 0) {
        mode = old.st_mode & 07777;
    } else {
        mode &= ~currentUmask();
    }
    if (::fchmod(fd, mode) != 0 || !writeAll(fd, data)) {
        closeKeepingErrno(fd);
        const int problem = errno;
        ::unlink(temporary.constData());
        return failed(problem);
    }
    if (::close(fd) != 0 || ::rename(temporary.constData(), target.constData()) != 0) {
        const int problem = errno;
        ::unlink(temporary.constData());
        return failed(problem);
    }
    return true;
}

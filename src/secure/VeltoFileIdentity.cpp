// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileIdentity.h"

#include <QDirIterator>
#include <QFile>
#include <QHashFunctions>

#include <sys/stat.h>

std::optional<VeltoFileIdentity> VeltoFileIdentity::ofPath(const QString &path)
{
    struct stat status;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return VeltoFileIdentity{quint64(status.st_dev), quint64(status.st_ino)};
}

std::optional<VeltoFileIdentity> VeltoFileIdentity::ofURL(const QUrl &url)
{
    return url.isLocalFile() ? ofPath(url.toLocalFile()) : std::nullopt;
}

QString VeltoFileIdentity::findInFolder(const VeltoFileIdentity &identity, const QString &folder)
{
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (ofPath(path) == identity)
            return path;
    }
    return QString();
}

size_t qHash(const VeltoFileIdentity &identity, size_t seed) noexcept
{
    return qHashMulti(seed, identity.device, identity.inode);
}

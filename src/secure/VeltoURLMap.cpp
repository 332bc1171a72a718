// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoURLMap.h"

#include "String+VeltoPaths.h"
#include "VeltoException.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

size_t qHash(const VeltoURLMapKey &key, size_t seed) noexcept
{
    return key.identity ? qHash(*key.identity, seed) : qHash(key.path, seed);
}

class VeltoURLMap::Private
{
public:
    quint32 mapType = VeltoURLMapTypePath;
    std::optional<QHash<VeltoURLMapKey, QVariant>> storage;
};

VeltoURLMap::VeltoURLMap() : d(std::make_unique<Private>()) {}

VeltoURLMap::VeltoURLMap(quint32 mapType) : VeltoURLMap()
{
    d->mapType = mapType;
    d->storage.emplace();
}

VeltoURLMap::~VeltoURLMap() = default;

std::unique_ptr<VeltoURLMap> VeltoURLMap::copy() const
{
    // The entries go into the new plain map's storage, which a plain map does not have: the copy is empty.
    auto copied = std::make_unique<VeltoURLMap>();
    if (copied->d->storage && d->storage)
        copied->d->storage->insert(*d->storage);
    return copied;
}

std::unique_ptr<VeltoURLMap> VeltoURLMap::mutableCopy() const
{
    return copy();
}

quint32 VeltoURLMap::mapType() const
{
    return d->mapType;
}

void VeltoURLMap::setMapType(quint32 mapType)
{
    d->mapType = mapType;
}

std::optional<VeltoURLMapKey> VeltoURLMap::mapKeyForURL(const QUrl &url) const
{
    if (!url.isLocalFile())
        return std::nullopt;
    const QString path = velto::stringByPathEquivalence(url.toLocalFile());
    switch (d->mapType) {
    case VeltoURLMapTypePath:
        return VeltoURLMapKey{path, std::nullopt};
    case VeltoURLMapTypeFileIdentity:
        if (const auto identity = VeltoFileIdentity::ofPath(path))
            return VeltoURLMapKey{path, identity};
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

QUrl VeltoURLMap::fileURLForMapKey(const VeltoURLMapKey &key) const
{
    return QUrl::fromLocalFile(filePathForMapKey(key));
}

QString VeltoURLMap::filePathForMapKey(const VeltoURLMapKey &key) const
{
    if (!key.identity || VeltoFileIdentity::ofPath(key.path) == key.identity)
        return key.path;
    // Renamed in its folder: the folder still has it under another name.
    const QString renamed = VeltoFileIdentity::findInFolder(*key.identity, QFileInfo(key.path).path());
    return renamed.isNull() ? key.path : renamed;
}

QVariant VeltoURLMap::objectForURL(const QUrl &url) const
{
    const std::optional<VeltoURLMapKey> key = mapKeyForURL(url);
    return key && d->storage ? d->storage->value(*key) : QVariant();
}

void VeltoURLMap::setObject(const QVariant &value, const QUrl &url)
{
    (void)setObjectWithTest(value, url);
}

bool VeltoURLMap::setObjectWithTest(const QVariant &value, const QUrl &url)
{
    if (!value.isValid())
        throw VeltoException(VeltoInvalidArgumentException, u"VeltoURLMap::setObject: the value is invalid"_s);
    const std::optional<VeltoURLMapKey> key = mapKeyForURL(url);
    if (!key || !d->storage)
        return false;
    // Taken out first so that an identity key also learns the file's current path.
    const bool existed = d->storage->remove(*key);
    d->storage->insert(*key, value);
    return existed;
}

void VeltoURLMap::removeObjectForURL(const QUrl &url)
{
    const std::optional<VeltoURLMapKey> key = mapKeyForURL(url);
    if (key && d->storage)
        d->storage->remove(*key);
}

void VeltoURLMap::removeAllObjects()
{
    if (d->storage)
        d->storage->clear();
}

quint64 VeltoURLMap::count() const
{
    return d->storage ? quint64(d->storage->size()) : 0;
}

QList<QUrl> VeltoURLMap::allURLs() const
{
    QList<QUrl> urls;
    enumerateURLs([&urls](const QUrl &url, bool *) { urls.append(url); });
    return urls;
}

bool VeltoURLMap::enumerateURLs(const std::function<void(const QUrl &url, bool *stop)> &block) const
{
    return enumeratePaths([&block](const QString &path, bool *stop) { block(QUrl::fromLocalFile(path), stop); });
}

bool VeltoURLMap::enumeratePaths(const std::function<void(const QString &path, bool *stop)> &block) const
{
    if (!d->storage)
        return true;
    // Over a snapshot of the keys: the block may change the map.
    const QList<VeltoURLMapKey> keys = d->storage->keys();
    for (const VeltoURLMapKey &key : keys) {
        bool stop = false;
        block(filePathForMapKey(key), &stop);
        if (stop)
            return false;
    }
    return true;
}

const QHash<VeltoURLMapKey, QVariant> *VeltoURLMap::map() const
{
    return d->storage ? &*d->storage : nullptr;
}

QHash<VeltoURLMapKey, QVariant> *VeltoURLMap::mutableMap()
{
    return d->storage ? &*d->storage : nullptr;
}

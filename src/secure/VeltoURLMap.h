// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoURLMap.h
 * \brief VeltoURLMap: a dictionary keyed by files, either by standardised path or by file identity.
 *
 * A map of the path kind treats "/a/./b" and "/a/b" as one key; a map of the identity kind follows the
 * file itself, so an entry stored for a file is still found after the file was renamed or moved on its
 * volume, and its URL is then the file's new place when it stayed in its folder.
 *
 * \code
 * VeltoURLMap positions(VeltoURLMapTypeFileIdentity);
 * positions.setObject(42, fileURL);
 * QFile::rename(fileURL.toLocalFile(), renamedPath);
 * positions.objectForURL(QUrl::fromLocalFile(renamedPath));   // 42
 * \endcode
 *
 * Main-thread use, like the dictionaries it stands for: it takes no locks.
 */

#include "VeltoFileIdentity.h"
#include "veltocore_export.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

/// The kinds of VeltoURLMap; other values make a map in which no URL has a key.
enum VeltoURLMapType : quint32 {
    VeltoURLMapTypePath = 0,         ///< keys are standardised paths
    VeltoURLMapTypeFileIdentity = 1, ///< keys are file identities, stable across renames and moves on one volume
};

/**
 * VeltoURLMapKey: a key of a VeltoURLMap. Path keys compare by path; identity keys by identity alone,
 * their path only remembering where the file was when last stored.
 */
struct VELTOCORE_EXPORT VeltoURLMapKey
{
    QString path;
    std::optional<VeltoFileIdentity> identity;

    friend bool operator==(const VeltoURLMapKey &a, const VeltoURLMapKey &b)
    {
        return a.identity || b.identity ? a.identity == b.identity : a.path == b.path;
    }
};

/// qHash: the identity's hash for identity keys, the path's for path keys.
[[nodiscard]] VELTOCORE_EXPORT size_t qHash(const VeltoURLMapKey &key, size_t seed = 0) noexcept;

/// VeltoURLMap: QVariant values by file.
class VELTOCORE_EXPORT VeltoURLMap
{
public:
    /**
     * The plain map: of the path kind but without storage, so every write is dropped and every read
     * finds nothing. Kept deliberately (copy() makes one); use VeltoURLMap(mapType) for a working map.
     */
    VeltoURLMap();
    /// initWithMapType: an empty working map of \a mapType (a VeltoURLMapType value).
    explicit VeltoURLMap(quint32 mapType);
    ~VeltoURLMap();
    VeltoURLMap(const VeltoURLMap &) = delete;
    VeltoURLMap &operator=(const VeltoURLMap &) = delete;

    /**
     * copy: a new plain map (VeltoURLMap()) into which this map's entries are added: because the plain
     * map has no storage, the copy comes out empty and of the path kind. Kept deliberately.
     */
    [[nodiscard]] std::unique_ptr<VeltoURLMap> copy() const;
    /// mutableCopy: the same as copy().
    [[nodiscard]] std::unique_ptr<VeltoURLMap> mutableCopy() const;

    [[nodiscard]] quint32 mapType() const;
    /// setMapType: changes how keys are made from now on; the stored keys stay as they are.
    void setMapType(quint32 mapType);

    /**
     * mapKeyForURL: the key of \a url: for the path kind its standardised local path
     * (velto::stringByPathEquivalence()), for the identity kind the identity of the file it leads to.
     * Nothing for a URL that is not a local file, a file that does not exist (identity kind), or a map
     * of another kind.
     */
    [[nodiscard]] std::optional<VeltoURLMapKey> mapKeyForURL(const QUrl &url) const;
    /**
     * fileURLForMapKey: the file URL of a key: the path's for path keys; for identity keys where the
     * file is: its stored path while that still leads to it, else the entry of the same folder with that
     * identity, else the stored path.
     */
    [[nodiscard]] QUrl fileURLForMapKey(const VeltoURLMapKey &key) const;
    /// filePathForMapKey: the local path of fileURLForMapKey().
    [[nodiscard]] QString filePathForMapKey(const VeltoURLMapKey &key) const;

    /// objectForURL: the value stored for \a url's key; invalid when none.
    [[nodiscard]] QVariant objectForURL(const QUrl &url) const;
    /**
     * setObject: stores \a value for \a url's key, replacing any value there; nothing happens for a URL
     * without a key.
     * \throws VeltoException named VeltoInvalidArgumentException for an invalid \a value (nothing changes).
     */
    void setObject(const QVariant &value, const QUrl &url);
    /// setObjectWithTest: setObject(), returning whether a value was stored under that key before.
    bool setObjectWithTest(const QVariant &value, const QUrl &url);
    /// removeObjectForURL: removes the entry of \a url's key; nothing when there is none.
    void removeObjectForURL(const QUrl &url);
    void removeAllObjects();
    [[nodiscard]] quint64 count() const;

    /// allURLs: fileURLForMapKey() of every key, in the map's order.
    [[nodiscard]] QList<QUrl> allURLs() const;
    /**
     * enumerateURLs: calls \a block with fileURLForMapKey() of each key until it sets its stop flag.
     * \return true when every key was visited.
     */
    bool enumerateURLs(const std::function<void(const QUrl &url, bool *stop)> &block) const;
    /// enumeratePaths: the same with filePathForMapKey().
    bool enumeratePaths(const std::function<void(const QString &path, bool *stop)> &block) const;

    /// map: the storage; nullptr for a plain map.
    [[nodiscard]] const QHash<VeltoURLMapKey, QVariant> *map() const;
    /// mutableMap: the same storage, to change directly; nullptr for a plain map.
    [[nodiscard]] QHash<VeltoURLMapKey, QVariant> *mutableMap();

private:
    class Private;
    std::unique_ptr<Private> const d;
};

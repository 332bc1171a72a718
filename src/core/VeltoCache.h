// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoCache.h
 * \brief VeltoCache: a named, thread-safe cache of values that can be made again, which may drop
 * entries at any time.
 *
 * Use it for process-wide caches of things that are costly to find but cheap to lose: where a tool
 * lives, the live object that stands for a stored setting. A reader that misses simply computes the
 * value again and stores it. Use a plain QHash for data that must not be lost.
 *
 * Values are copied in and out, so a cache of `std::shared_ptr<T>` hands out shared ownership: an
 * object the cache has dropped stays alive for whoever still holds it.
 *
 * \code
 * static auto *const toolPaths = VeltoCache<QString>::newStaticCacheVeltoWithName(u"commandLineTools"_s).release();
 * if (const std::optional<QString> hit = toolPaths->objectForKey(name))
 *     return *hit;
 * \endcode
 *
 * Eviction: once the cache holds countLimit() entries, storing another drops the entry that was used
 * least recently. Every member may be called from any thread.
 */

#include <QCache>
#include <QMutex>
#include <QMutexLocker>
#include <QString>

#include <memory>
#include <optional>

/// The prefix of every named cache of the library: a cache made for "commandLineTools" is called
/// "com.velto.cache.commandLineTools".
inline constexpr QLatin1StringView VeltoCacheNamePrefix{"com.velto.cache."};

/// VeltoCache: string keys to copies of \a Value, least recently used dropped first, behind a mutex.
template <typename Value>
class VeltoCache
{
public:
    /// How many entries a cache keeps unless told otherwise.
    static constexpr qsizetype DefaultCountLimit = 1000;

    /// Makes an empty cache called \a name (taken as it is) holding at most \a countLimit entries.
    explicit VeltoCache(const QString &name = QString(), qsizetype countLimit = DefaultCountLimit)
        : m_name(name), m_entries(countLimit)
    {
    }
    VeltoCache(const VeltoCache &) = delete;
    VeltoCache &operator=(const VeltoCache &) = delete;

    /**
     * newStaticCacheVeltoWithName: a new empty cache whose name is "com.velto.cache." followed by
     * \a name. Meant for process-wide caches: the caller owns it and keeps it for the life of the process.
     */
    [[nodiscard]] static std::unique_ptr<VeltoCache> newStaticCacheVeltoWithName(const QString &name)
    {
        return std::make_unique<VeltoCache>(VeltoCacheNamePrefix + name);
    }

    /// name: the name given at construction.
    [[nodiscard]] QString name() const { return m_name; }

    /// objectForKey: a copy of the value stored under \a key (which counts as a use), or nothing.
    [[nodiscard]] std::optional<Value> objectForKey(const QString &key) const
    {
        QMutexLocker lock(&m_mutex);
        if (const Value *value = m_entries.object(key))
            return *value;
        return std::nullopt;
    }

    /// setObject: stores a copy of \a value under \a key, replacing any value there; may drop the least used entry.
    void setObject(const Value &value, const QString &key)
    {
        QMutexLocker lock(&m_mutex);
        // QCache makes room before it looks for the key, so a replacement in a full cache would drop
        // another entry as well: take the old one out first.
        m_entries.remove(key);
        m_entries.insert(key, new Value(value));
    }

    /// removeObjectForKey: drops the entry of \a key; nothing when there is none.
    void removeObjectForKey(const QString &key)
    {
        QMutexLocker lock(&m_mutex);
        m_entries.remove(key);
    }

    /// removeAllObjects: drops every entry.
    void removeAllObjects()
    {
        QMutexLocker lock(&m_mutex);
        m_entries.clear();
    }

    /// count: how many entries the cache holds now.
    [[nodiscard]] qsizetype count() const
    {
        QMutexLocker lock(&m_mutex);
        return m_entries.count();
    }

    /// countLimit: the most entries the cache keeps.
    [[nodiscard]] qsizetype countLimit() const
    {
        QMutexLocker lock(&m_mutex);
        return m_entries.maxCost();
    }

    /// setCountLimit: changes the limit; entries beyond it are dropped, least recently used first.
    void setCountLimit(qsizetype limit)
    {
        QMutexLocker lock(&m_mutex);
        m_entries.setMaxCost(limit);
    }

private:
    const QString m_name;
    mutable QMutex m_mutex;
    // QCache::object() reorders its list: it is a write even in a const lookup, hence the mutex there too.
    mutable QCache<QString, Value> m_entries;
};

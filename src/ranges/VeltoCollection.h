// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoCollection.h
 * \brief One vocabulary over the three kinds of collection: a list (its elements, in order), a set (its
 * members) and a map (its keys; the values play no part), so that code taking "any collection" can
 * enumerate, test membership, pick a member and copy with a filter without caring which it got.
 *
 * \code
 * const QVariantMap settings{{u"width"_s, 10}, {u"height"_s, 20}};
 * const QList<QString> keys = velto::arrayWithVeltoCollection(settings);         // "height", "width"
 * QSet<QString> wide = velto::setWithVeltoCollection(settings, [](const QString &key) {
 *     return key.startsWith(u'w') ? key : QString();                              // a null string drops it
 * });
 * \endcode
 *
 * Nil is never a member: a null pointer, an invalid QVariant, a null QString or an empty std::optional
 * (isNilVelto()) answers false to containsObjectVelto() and is never added.
 */

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>

#include <cstddef>
#include <memory>
#include <optional>
#include <type_traits>

namespace velto {

/// isNilVelto: whether \a value stands for "no object": a null pointer, an invalid QVariant, a null QString, an empty optional.
template <typename T>
[[nodiscard]] constexpr bool isNilVelto(const T &value)
{
    if constexpr (std::is_pointer_v<T> || std::is_null_pointer_v<T>)
        return value == nullptr;
    else
        return false;
}
[[nodiscard]] inline bool isNilVelto(const QVariant &value) { return !value.isValid(); }
[[nodiscard]] inline bool isNilVelto(const QString &value) { return value.isNull(); }
template <typename T>
[[nodiscard]] bool isNilVelto(const std::shared_ptr<T> &value) { return !value; }
template <typename T>
[[nodiscard]] bool isNilVelto(const std::optional<T> &value) { return !value.has_value(); }

namespace internal {
template <typename Collection>
struct VeltoCollectionTraits;
template <typename T>
struct VeltoCollectionTraits<QList<T>> {
    using Element = T;
    static const T &first(const QList<T> &list) { return list.first(); }
    template <typename F> static void forEach(const QList<T> &list, F &&f) { for (const T &e : list) f(e); }
};
template <typename T>
struct VeltoCollectionTraits<QSet<T>> {
    using Element = T;
    static const T &first(const QSet<T> &set) { return *set.cbegin(); }
    template <typename F> static void forEach(const QSet<T> &set, F &&f) { for (const T &e : set) f(e); }
};
template <typename K, typename V>
struct VeltoCollectionTraits<QMap<K, V>> {
    using Element = K;
    static const K &first(const QMap<K, V> &map) { return *map.keyBegin(); }
    template <typename F> static void forEach(const QMap<K, V> &map, F &&f)
    {
        for (auto key = map.keyBegin(); key != map.keyEnd(); ++key)
            f(*key);
    }
};
template <typename K, typename V>
struct VeltoCollectionTraits<QHash<K, V>> {
    using Element = K;
    static const K &first(const QHash<K, V> &hash) { return *hash.keyBegin(); }
    template <typename F> static void forEach(const QHash<K, V> &hash, F &&f)
    {
        for (auto key = hash.keyBegin(); key != hash.keyEnd(); ++key)
            f(*key);
    }
};

template <typename Target, typename Value>
void addUnlessNil(Target &target, Value &&value)
{
    if constexpr (requires { value.has_value(); }) {
        if (value.has_value())
            target.insert(target.end(), *value);
    } else {
        if (!isNilVelto(value))
            target.insert(target.end(), value);
    }
}
} // namespace internal

/// The element type of a Velto collection: a list's or set's element, a map's key.
template <typename Collection>
using VeltoCollectionElement = typename internal::VeltoCollectionTraits<Collection>::Element;

/// allObjectsVelto: a list's elements (the list itself), a set's members, a map's keys.
template <typename T>
[[nodiscard]] const QList<T> &allObjectsVelto(const QList<T> &list) { return list; }
template <typename T>
[[nodiscard]] QList<T> allObjectsVelto(const QSet<T> &set) { return set.values(); }
template <typename K, typename V>
[[nodiscard]] QList<K> allObjectsVelto(const QMap<K, V> &map) { return map.keys(); }
template <typename K, typename V>
[[nodiscard]] QList<K> allObjectsVelto(const QHash<K, V> &hash) { return hash.keys(); }

/// containsObjectVelto: false for nil; else membership by equality (for a map: whether the key has a value).
template <typename T>
[[nodiscard]] bool containsObjectVelto(const QList<T> &list, const T &object) { return !isNilVelto(object) && list.contains(object); }
template <typename T>
[[nodiscard]] bool containsObjectVelto(const QSet<T> &set, const T &object) { return !isNilVelto(object) && set.contains(object); }
template <typename K, typename V>
[[nodiscard]] bool containsObjectVelto(const QMap<K, V> &map, const K &key) { return !isNilVelto(key) && map.contains(key); }
template <typename K, typename V>
[[nodiscard]] bool containsObjectVelto(const QHash<K, V> &hash, const K &key) { return !isNilVelto(key) && hash.contains(key); }

/// anyObjectVelto: a list's first element, some member of a set, the first key of a map; nothing when empty.
template <typename Collection>
[[nodiscard]] std::optional<VeltoCollectionElement<Collection>> anyObjectVelto(const Collection &collection)
{
    if (collection.isEmpty())
        return std::nullopt;
    return internal::VeltoCollectionTraits<Collection>::first(collection);
}

/**
 * addObjects: adds each object of \a collection, in its enumeration order, to \a target (a list or a set),
 * after passing it through \a filter: a callable answering the object to add, or nil (or an empty
 * optional) to drop it. Without a filter every object is added as it is.
 */
template <typename Collection, typename Target, typename Filter = std::nullptr_t>
void addObjects(const Collection &collection, Target &target, Filter &&filter = nullptr)
{
    internal::VeltoCollectionTraits<Collection>::forEach(collection, [&](const auto &element) {
        if constexpr (std::is_null_pointer_v<std::decay_t<Filter>>)
            internal::addUnlessNil(target, element);
        else
            internal::addUnlessNil(target, filter(element));
    });
}

/// arrayWithVeltoCollection: a new list (reserved for the collection's size) filled by addObjects().
template <typename Collection, typename Filter = std::nullptr_t>
[[nodiscard]] QList<VeltoCollectionElement<Collection>> arrayWithVeltoCollection(const Collection &collection,
                                                                                 Filter &&filter = nullptr)
{
    QList<VeltoCollectionElement<Collection>> list;
    list.reserve(collection.size());
    addObjects(collection, list, std::forward<Filter>(filter));
    return list;
}

/// setWithVeltoCollection: a new set (reserved for the collection's size) filled by addObjects().
template <typename Collection, typename Filter = std::nullptr_t>
[[nodiscard]] QSet<VeltoCollectionElement<Collection>> setWithVeltoCollection(const Collection &collection,
                                                                              Filter &&filter = nullptr)
{
    QSet<VeltoCollectionElement<Collection>> set;
    set.reserve(collection.size());
    addObjects(collection, set, std::forward<Filter>(filter));
    return set;
}

/// addObjectIfNotNilVelto: adds \a object to the list or set unless it is nil.
template <typename T>
void addObjectIfNotNilVelto(QList<T> &list, const T &object) { internal::addUnlessNil(list, object); }
template <typename T>
void addObjectIfNotNilVelto(QSet<T> &set, const T &object) { internal::addUnlessNil(set, object); }

/// addObjectsFromVeltoCollection: adds every object of \a collection (a map's keys) to the list or set.
template <typename T, typename Collection>
void addObjectsFromVeltoCollection(QList<T> &list, const Collection &collection) { addObjects(collection, list); }
template <typename T, typename Collection>
void addObjectsFromVeltoCollection(QSet<T> &set, const Collection &collection) { addObjects(collection, set); }

} // namespace velto

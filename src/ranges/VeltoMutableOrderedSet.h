// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoMutableOrderedSet.h
 * \brief VeltoMutableOrderedSet: members in insertion order with constant-time membership and position.
 *
 * Each member's position is stored when it is added and is not renumbered when an earlier member is
 * removed: after removing a member, indexForObject() and removeObject() of the members after it refer to
 * their old positions. Use it where members are only added, or where that is harmless; removeObject()
 * of a member whose stored position has fallen beyond the end throws VeltoException named
 * VeltoRangeException and changes nothing.
 *
 * \code
 * VeltoMutableOrderedSet<QString> names;
 * names.addObject(u"a"_s); names.addObject(u"b"_s); names.addObject(u"a"_s);   // a, b
 * names.indexForObject(u"b"_s);                                                // 1
 * \endcode
 *
 * Equality is the member type's operator== and qHash(): use pointers for identity. Not thread-safe.
 */

#include "List+VeltoCore.h"
#include "VeltoCollection.h"

#include <QHash>
#include <QList>

#include <optional>

/// \brief VeltoMutableOrderedSet: a list of members plus a map from member to its position + 1.
template <typename T>
class VeltoMutableOrderedSet
{
public:
    VeltoMutableOrderedSet() = default;
    /// Reserves room for \a capacity members in the list and the map.
    explicit VeltoMutableOrderedSet(qsizetype capacity)
    {
        m_members.reserve(capacity);
        m_positions.reserve(capacity);
    }

    [[nodiscard]] quint64 count() const { return quint64(m_members.size()); }
    /// objectAtIndex: the member at \a index of the list; an index ≥ count() throws VeltoRangeException.
    [[nodiscard]] const T &objectAtIndex(quint64 index) const
    {
        velto::internal::checkIndex(index, m_members.size());
        return m_members.at(qsizetype(index));
    }
    [[nodiscard]] const T &operator[](quint64 index) const { return objectAtIndex(index); }
    /// allObjectsVelto: the members in insertion order.
    [[nodiscard]] const QList<T> &allObjectsVelto() const { return m_members; }
    [[nodiscard]] auto begin() const { return m_members.cbegin(); }
    [[nodiscard]] auto end() const { return m_members.cend(); }

    /// indexForObject: the position stored for \a object when it was added, or VeltoNotFound.
    [[nodiscard]] quint64 indexForObject(const T &object) const
    {
        const quint64 stored = m_positions.value(object, 0);
        return stored == 0 ? VeltoNotFound : stored - 1;
    }
    [[nodiscard]] bool containsObject(const T &object) const { return indexForObject(object) != VeltoNotFound; }
    [[nodiscard]] bool containsObjectVelto(const T &object) const { return containsObject(object); }
    /// anyObjectVelto: the first member, or nothing when empty.
    [[nodiscard]] std::optional<T> anyObjectVelto() const
    {
        return m_members.isEmpty() ? std::nullopt : std::optional<T>(m_members.constFirst());
    }

    /// addObject: appends \a object unless it is a member already.
    void addObject(const T &object)
    {
        if (m_positions.contains(object))
            return;
        m_members.append(object);
        m_positions.insert(object, quint64(m_members.size()));
    }
    /// addObjectIfNotNilVelto: addObject() unless \a object is nil (see velto::isNilVelto()).
    void addObjectIfNotNilVelto(const T &object)
    {
        if (!velto::isNilVelto(object))
            addObject(object);
    }
    /// addObjectsFromVeltoCollection: addObject() for each element of a list or set, or each key of a map.
    template <typename Collection>
    void addObjectsFromVeltoCollection(const Collection &collection)
    {
        velto::internal::VeltoCollectionTraits<Collection>::forEach(collection, [this](const T &object) { addObject(object); });
    }

    /// removeObject: if \a object is a member, removes the list element at its stored position and its map entry.
    void removeObject(const T &object)
    {
        const quint64 index = indexForObject(object);
        if (index == VeltoNotFound)
            return;
        velto::internal::checkIndex(index, m_members.size());
        m_members.removeAt(qsizetype(index));
        m_positions.remove(object);
    }
    /// removeObjectAtIndex: removes the member at \a index of the list and its map entry.
    void removeObjectAtIndex(quint64 index)
    {
        velto::internal::checkIndex(index, m_members.size());
        m_positions.remove(m_members.at(qsizetype(index)));
        m_members.removeAt(qsizetype(index));
    }
    void removeAllObjects()
    {
        m_members.clear();
        m_positions.clear();
    }

private:
    QList<T> m_members;
    QHash<T, quint64> m_positions; // position + 1; 0 is never stored
};

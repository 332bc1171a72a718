// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Containers+VeltoWeakReference.h
 * \brief Storing non-owning references to objects in QList, QSet and QHash.
 *
 * Each call wraps the given object in a temporary VeltoWeakReference where a key or member is needed.
 * Lists hold references by pointer (so that they may hold subclasses) and their search accepts only
 * elements whose class is exactly VeltoWeakReference; set and hash membership uses the reference's own
 * equality, which accepts subclasses. The difference is intended.
 */

#include "VeltoRange.h"
#include "VeltoWeakReference.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <memory>
#include <typeinfo>

namespace velto {

/// The list element: a shared reference, possibly of a subclass of VeltoWeakReference.
using VeltoWeakReferenceList = QList<std::shared_ptr<VeltoWeakReference>>;

/// VeltoNotFoundIndex: VeltoNotFound as an index, what indexOfWeakReferenceObject() gives when nothing matches.
inline constexpr qsizetype VeltoNotFoundIndex = qsizetype(VeltoNotFound);

/// indexOfWeakReferenceObject: the first element of exactly class VeltoWeakReference targeting \a object; VeltoNotFoundIndex otherwise.
inline qsizetype indexOfWeakReferenceObject(const VeltoWeakReferenceList &list, const void *object)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        const VeltoWeakReference *element = list.at(i).get();
        if (element && typeid(*element) == typeid(VeltoWeakReference) && element->object() == object)
            return i;
    }
    return VeltoNotFoundIndex;
}

/// containsWeakReferenceObject: whether indexOfWeakReferenceObject() finds \a object.
inline bool containsWeakReferenceObject(const VeltoWeakReferenceList &list, const void *object)
{
    return indexOfWeakReferenceObject(list, object) != VeltoNotFoundIndex;
}

/// addWeakReferenceToObject: appends a new reference to \a object (duplicates allowed).
inline void addWeakReferenceToObject(VeltoWeakReferenceList &list, const void *object)
{
    list.append(std::make_shared<VeltoWeakReference>(object));
}

/// removeWeakReferenceToObject: removes the element indexOfWeakReferenceObject() finds; nothing if none.
inline void removeWeakReferenceToObject(VeltoWeakReferenceList &list, const void *object)
{
    if (const qsizetype index = indexOfWeakReferenceObject(list, object); index != VeltoNotFoundIndex)
        list.removeAt(index);
}

/// containsWeakReferenceObject: whether \a set holds a reference to \a object.
inline bool containsWeakReferenceObject(const QSet<VeltoWeakReference> &set, const void *object)
{
    return set.contains(VeltoWeakReference(object));
}

/// addWeakReferenceObject: adds a reference to \a object.
inline void addWeakReferenceObject(QSet<VeltoWeakReference> &set, const void *object)
{
    set.insert(VeltoWeakReference(object));
}

/// removeWeakReferenceObject: removes the reference to \a object.
inline void removeWeakReferenceObject(QSet<VeltoWeakReference> &set, const void *object)
{
    set.remove(VeltoWeakReference(object));
}

/// setObjectForWeakKey: stores \a value under a reference to \a key.
template<typename Value>
void setObjectForWeakKey(QHash<VeltoWeakReference, Value> &hash, const Value &value, const void *key)
{
    hash.insert(VeltoWeakReference(key), value);
}

/// objectForWeakKey: the value stored under a reference to \a key, or a default-constructed value.
template<typename Value>
Value objectForWeakKey(const QHash<VeltoWeakReference, Value> &hash, const void *key)
{
    return hash.value(VeltoWeakReference(key));
}

/// removeObjectForWeakKey: removes the value stored under a reference to \a key.
template<typename Value>
void removeObjectForWeakKey(QHash<VeltoWeakReference, Value> &hash, const void *key)
{
    hash.remove(VeltoWeakReference(key));
}

} // namespace velto

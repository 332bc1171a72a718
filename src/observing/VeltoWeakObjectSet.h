// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWeakObjectSet.h
 * \brief VeltoWeakObjectSet: a hash set of QObjects compared and hashed by address and not owned.
 *
 * Nothing is purged automatically: remove a member before it is destroyed. copy() gives a set that can no
 * longer change (adding or removing throws VeltoInternalInconsistencyException); mutableCopy() one that can.
 */

#include "VeltoWeakReferenceCollectionObjectEnumerator.h"

#include "veltocore_export.h"

#include <QList>
#include <QObject>
#include <QVariant>

#include <memory>

class VELTOCORE_EXPORT VeltoWeakObjectSet
{
public:
    /// Makes an empty, mutable set.
    VeltoWeakObjectSet();
    VeltoWeakObjectSet(const VeltoWeakObjectSet &) = delete;
    VeltoWeakObjectSet &operator=(const VeltoWeakObjectSet &) = delete;
    ~VeltoWeakObjectSet();

    [[nodiscard]] quint64 count() const;
    /// containsObject: whether that very address is a member.
    [[nodiscard]] bool containsObject(const QObject *object) const;
    /// member: the member with \a object's address, or null.
    [[nodiscard]] QObject *member(const QObject *object) const;
    /// addObject: adds \a object (null is ignored); throws VeltoInternalInconsistencyException on an immutable copy.
    void addObject(QObject *object);
    /// removeObject: removes \a object; throws VeltoInternalInconsistencyException on an immutable copy.
    void removeObject(const QObject *object);
    /// removeAllObjects: empties the set; throws VeltoInternalInconsistencyException on an immutable copy.
    void removeAllObjects();
    /// anyObject: some member, or null when empty.
    [[nodiscard]] QObject *anyObject() const;

    /// objectEnumerator: a snapshot of the members (empty for an empty set); null only when the buffer cannot be allocated.
    [[nodiscard]] std::unique_ptr<VeltoWeakReferenceCollectionObjectEnumerator> objectEnumerator() const;
    /// allObjects: the members in the set's internal order (empty for an empty set).
    [[nodiscard]] QList<QObject *> allObjects() const;
    /// copyAllObjects: the same list as allObjects(), for callers that take a snapshot to keep.
    [[nodiscard]] QList<QObject *> copyAllObjects() const;
    /// copyObjectsInto: writes up to \a capacity members into \a buffer (a snapshot in the caller's storage).
    /// \return the number written.
    qsizetype copyObjectsInto(QObject **buffer, qsizetype capacity) const;

    /**
     * makeObjectsPerformSelector: calls \a selector with up to one object argument on every member that
     * implements it, over the live set: a member's method must not add to or remove from this set.
     */
    void makeObjectsPerformSelector(const char *selector, const QVariant &argument = {}) const;

    /// copy: a new set with the same members that can no longer change.
    [[nodiscard]] std::unique_ptr<VeltoWeakObjectSet> copy() const;
    /// mutableCopy: a new set with the same members that can change.
    [[nodiscard]] std::unique_ptr<VeltoWeakObjectSet> mutableCopy() const;

    /// description: "VeltoWeakObjectSet<0x...> { \n", then "\t<member>, \n" per member, then "}".
    [[nodiscard]] QString description() const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWeakReference.h
 * \brief VeltoWeakReference: a non-owning reference to an object, equal to its own target.
 *
 * "Weak" means non-owning, not self-clearing: nothing tells a reference that its target has been
 * destroyed. Whoever holds the reference invalidates or removes it before the target goes; a reference
 * left behind may still be compared and hashed (by address) but its target must not be used.
 *
 * A reference compares equal to another reference (of this class or a subclass) with the same target and
 * to the target address itself, and hashes as the target address does, so a QSet or QHash of references
 * can be searched with the plain object:
 * \code
 * QSet<VeltoWeakReference> listeners{VeltoWeakReference(window)};
 * listeners.contains(VeltoWeakReference(window));      // true
 * VeltoWeakReference(window) == static_cast<const void *>(window); // true
 * \endcode
 */

#include "veltocore_export.h"

#include <QHashFunctions>
#include <QString>

class VELTOCORE_EXPORT VeltoWeakReference
{
public:
    /// Makes a reference to \a object (may be null); the object is not owned.
    explicit VeltoWeakReference(const void *object = nullptr) : m_object(const_cast<void *>(object)) {}
    VeltoWeakReference(const VeltoWeakReference &) = default;
    VeltoWeakReference &operator=(const VeltoWeakReference &) = default;
    virtual ~VeltoWeakReference();

    /// object: the target; null after invalidate().
    [[nodiscard]] void *object() const { return m_object; }
    /// setObject: retargets the reference.
    void setObject(const void *object) { m_object = const_cast<void *>(object); }
    /// invalidate: sets the target to null.
    void invalidate() { m_object = nullptr; }

    /// description: "VeltoWeakReference<0x...> to <0x...>" (the reference's address, then the target's);
    /// the target is never touched.
    [[nodiscard]] QString description() const;

    friend bool operator==(const VeltoWeakReference &a, const VeltoWeakReference &b) { return a.m_object == b.m_object; }
    friend bool operator==(const VeltoWeakReference &a, const void *object) { return a.m_object == object; }

private:
    void *m_object;
};

/// qHash: the target's address, as qHash() of the plain pointer gives.
inline size_t qHash(const VeltoWeakReference &reference, size_t seed = 0)
{
    return qHash(static_cast<const void *>(reference.object()), seed);
}

/// _VeltoWeakReferenceCollection_Unbox: the target of \a reference, as a plain function for use as a mapping.
VELTOCORE_EXPORT void *_VeltoWeakReferenceCollection_Unbox(const VeltoWeakReference &reference);

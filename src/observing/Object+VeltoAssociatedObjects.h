// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+VeltoAssociatedObjects.h
 * \brief Objects attached to a QObject under an opaque key, released together with their owner.
 *
 * The attachments live in a hidden child of the owner, so they go when the owner is destroyed: an object
 * attached with setAssociatedObject() is deleted then (or when it is replaced or detached), one attached with
 * setAssociatedObjectWeakly() is only forgotten. Use the address of a static variable as the key. All calls
 * are made on the owner's thread.
 *
 * \code
 * static const char helperKey = 0;
 * velto::setAssociatedObject(window, &helperKey, new Helper);
 * \endcode
 */

#include "veltocore_export.h"

#include <QObject>

namespace velto {

/// associatedObjectForKey: the object attached to \a owner under \a key; null when none (or for a null owner).
[[nodiscard]] VELTOCORE_EXPORT QObject *associatedObjectForKey(const QObject *owner, const void *key);

/**
 * setAssociatedObject: attaches \a object to \a owner under \a key and takes ownership of it: it is deleted
 * with the owner, or when another object (or null, which detaches) is set under the same key. The object
 * must have no parent. A null owner does nothing.
 */
VELTOCORE_EXPORT void setAssociatedObject(QObject *owner, const void *key, QObject *object);

/// setAssociatedObjectWeakly: attaches \a object under \a key without owning it; it must outlive the attachment.
VELTOCORE_EXPORT void setAssociatedObjectWeakly(QObject *owner, const void *key, QObject *object);

} // namespace velto

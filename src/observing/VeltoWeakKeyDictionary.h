// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWeakKeyDictionary.h
 * \brief VeltoWeakKeyDictionary: a hash map from object keys (not owned) to values held while stored.
 *
 * Keys are compared and hashed by address unless other key callbacks are given at creation. Nothing is
 * purged automatically: remove an entry before its key object is destroyed.
 */

#include "VeltoWeakReferenceCollectionObjectEnumerator.h"

#include "veltocore_export.h"

#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

/// VeltoWeakKeyCallbacks: how keys are hashed and compared; empty functions mean "by address".
struct VeltoWeakKeyCallbacks
{
    std::function<size_t(const void *key)> hash;
    std::function<bool(const void *a, const void *b)> equal;
};

class VELTOCORE_EXPORT VeltoWeakKeyDictionary
{
public:
    /// Makes an empty dictionary with address keys.
    VeltoWeakKeyDictionary();
    /// initWithKeyCallbacks: an empty dictionary whose keys are hashed and compared by \a callbacks.
    explicit VeltoWeakKeyDictionary(const VeltoWeakKeyCallbacks &callbacks);
    VeltoWeakKeyDictionary(const VeltoWeakKeyDictionary &) = delete;
    VeltoWeakKeyDictionary &operator=(const VeltoWeakKeyDictionary &) = delete;
    ~VeltoWeakKeyDictionary();

    [[nodiscard]] quint64 count() const;
    /// objectForKey: the value stored under \a key; invalid when none.
    [[nodiscard]] QVariant objectForKey(const void *key) const;
    /// setObject: stores \a value under \a key; an invalid \a value is ignored (no change, no removal).
    void setObject(const QVariant &value, const void *key);
    /**
     * removeObjectForKey: removes the entry. The value is kept alive until the removal has finished, so a
     * value whose last owner was this dictionary may itself be the one asking for its removal.
     */
    void removeObjectForKey(const void *key);
    void removeAllObjects();

    /// keyEnumerator: a snapshot of the keys; null when the dictionary is empty or the buffer cannot be allocated.
    [[nodiscard]] std::unique_ptr<VeltoWeakReferenceCollectionObjectEnumerator> keyEnumerator() const;
    /// allValues: the values in the map's order; empty optional when the dictionary is empty.
    [[nodiscard]] std::optional<QVariantList> allValues() const;
    /**
     * enumerateUsingBlock: calls \a block for each entry until it sets its stop flag.
     * \return true when every entry was visited, false when the block stopped it.
     */
    bool enumerateUsingBlock(const std::function<void(const void *key, const QVariant &value, bool *stop)> &block) const;

    /// copy: a new dictionary with address keys (whatever this one's callbacks), filled entry by entry.
    [[nodiscard]] std::unique_ptr<VeltoWeakKeyDictionary> copy() const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoPointerKeyDictionary.h
 * \brief VeltoPointerKeyDictionary: a hash map from raw addresses (compared and hashed by value, never
 * owned or touched) to values held while stored.
 */

#include "veltocore_export.h"

#include <QString>
#include <QVariant>

#include <memory>

class VELTOCORE_EXPORT VeltoPointerKeyDictionary
{
public:
    /// Makes an empty dictionary.
    VeltoPointerKeyDictionary();
    VeltoPointerKeyDictionary(const VeltoPointerKeyDictionary &) = delete;
    VeltoPointerKeyDictionary &operator=(const VeltoPointerKeyDictionary &) = delete;
    ~VeltoPointerKeyDictionary();

    /// count: the number of entries.
    [[nodiscard]] quint64 count() const;
    /// objectForPointer: the value stored under \a pointer; invalid when none.
    [[nodiscard]] QVariant objectForPointer(const void *pointer) const;
    /**
     * setObject: stores \a value under \a pointer, replacing (and releasing) any previous value.
     * An invalid \a value throws VeltoInvalidArgumentException and changes nothing.
     */
    void setObject(const QVariant &value, const void *pointer);
    /// removeObjectForPointer: removes the entry; nothing when absent.
    void removeObjectForPointer(const void *pointer);
    /**
     * newPointerVector: a new buffer of the keys, one per entry (count() of them), in the map's internal order;
     * null when it cannot be allocated.
     */
    [[nodiscard]] std::unique_ptr<void *[]> newPointerVector() const;
    /// description: "VeltoPointerKeyDictionary<0x...> { \n", then "\t0x... = value \n" per entry, then "}".
    [[nodiscard]] QString description() const;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

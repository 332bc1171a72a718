// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWeakReferenceCollectionObjectEnumerator.h
 * \brief An enumerator over a snapshot of addresses taken from a non-owning collection.
 *
 * Later changes to the collection do not affect it; the objects are not owned, so one removed and destroyed
 * after the snapshot was taken must not be used from it.
 */

#include "veltocore_export.h"

#include <QtGlobal>

#include <memory>

class VELTOCORE_EXPORT VeltoWeakReferenceCollectionObjectEnumerator
{
public:
    /// Takes ownership of \a buffer of \a count addresses.
    VeltoWeakReferenceCollectionObjectEnumerator(std::unique_ptr<void *[]> buffer, quint64 count);
    ~VeltoWeakReferenceCollectionObjectEnumerator();

    /// nextObject: the next address; null once past the end, and on every call after that.
    [[nodiscard]] void *nextObject();

private:
    std::unique_ptr<void *[]> m_buffer;
    quint64 m_count;
    quint64 m_cursor = 0;
};

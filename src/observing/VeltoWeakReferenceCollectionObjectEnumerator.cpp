// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWeakReferenceCollectionObjectEnumerator.h"

VeltoWeakReferenceCollectionObjectEnumerator::VeltoWeakReferenceCollectionObjectEnumerator(
    std::unique_ptr<void *[]> buffer, quint64 count)
    : m_buffer(std::move(buffer)), m_count(count)
{
}

VeltoWeakReferenceCollectionObjectEnumerator::~VeltoWeakReferenceCollectionObjectEnumerator() = default;

void *VeltoWeakReferenceCollectionObjectEnumerator::nextObject()
{
    const quint64 index = m_cursor++;
    return index < m_count ? m_buffer[index] : nullptr;
}

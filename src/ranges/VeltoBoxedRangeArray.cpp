// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoBoxedRangeArray.h"

#include "Variant+VeltoRanges.h"

VeltoBoxedRangeArray::VeltoBoxedRangeArray(const QVariantList &boxedRanges) : m_values(boxedRanges)
{
}

VeltoBoxedRangeArray::~VeltoBoxedRangeArray() = default;

VeltoRange VeltoBoxedRangeArray::rangeAtIndex(quint64 index) const
{
    if (index >= count())
        throwOutOfBounds(index, count());
    return velto::rangeValue(m_values.at(qsizetype(index)));
}

void VeltoBoxedRangeArray::insertRange(VeltoRange range, quint64 index)
{
    if (index > count())
        throwOutOfBounds(index, count() + 1);
    m_values.insert(qsizetype(index), velto::valueWithRange(range));
}

void VeltoBoxedRangeArray::replaceRangeAtIndex(quint64 index, VeltoRange range)
{
    if (index >= count())
        throwOutOfBounds(index, count());
    m_values[qsizetype(index)] = velto::valueWithRange(range);
}

void VeltoBoxedRangeArray::removeRangeAtIndex(quint64 index)
{
    removeObjectsInRange({index, 1});
}

void VeltoBoxedRangeArray::removeObjectsInRange(VeltoRange indexRange)
{
    if (isIndexRangeOutOfBounds(indexRange, count()))
        throwOutOfBounds(indexRange.end() - 1, count());
    m_values.remove(qsizetype(indexRange.location), qsizetype(indexRange.length));
}

void VeltoBoxedRangeArray::removeAllObjects()
{
    m_values.clear();
}

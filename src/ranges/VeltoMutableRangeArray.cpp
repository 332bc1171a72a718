// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoMutableRangeArray.h"

#include "VeltoException.h"
#include "VeltoRangeArray.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 DefaultCapacity = 4;
constexpr quint64 MaximumCapacity = SIZE_MAX / sizeof(VeltoRange);

VeltoRange *allocateRanges(quint64 capacity)
{
    return capacity <= MaximumCapacity ? static_cast<VeltoRange *>(std::malloc(capacity * sizeof(VeltoRange))) : nullptr;
}

} // namespace

template <typename Array>
std::shared_ptr<Array> VeltoMutableRangeArray::adopt(quint64 capacity, const VeltoRange *ranges, quint64 count)
{
    capacity = std::max<quint64>(capacity, 1);
    VeltoRange *buffer = allocateRanges(capacity);
    if (!buffer)
        return nullptr;
    count = std::min(capacity, count);
    if (count != 0)
        std::memcpy(buffer, ranges, count * sizeof(VeltoRange));
    return std::shared_ptr<Array>(new Array(buffer, capacity, count));
}

template <typename Array>
std::shared_ptr<Array> VeltoMutableRangeArray::adoptCopy(const VeltoAbstractRangeArray &other)
{
    const quint64 n = other.count();
    auto copy = adopt<Array>(n, nullptr, 0);
    if (copy) {
        other.getRanges(copy->m_data, {0, n});
        copy->m_count = n;
    }
    return copy;
}

template std::shared_ptr<VeltoRangeArray> VeltoMutableRangeArray::adopt<VeltoRangeArray>(quint64, const VeltoRange *, quint64);
template std::shared_ptr<VeltoRangeArray> VeltoMutableRangeArray::adoptCopy<VeltoRangeArray>(const VeltoAbstractRangeArray &);

VeltoMutableRangeArray::VeltoMutableRangeArray(VeltoRange *buffer, quint64 capacity, quint64 count) noexcept
    : m_count(count), m_capacity(capacity), m_data(buffer)
{
}

VeltoMutableRangeArray::~VeltoMutableRangeArray()
{
    std::free(m_data);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::initWithCapacity(quint64 capacity, const VeltoRange *ranges,
                                                                                 quint64 count)
{
    return adopt<VeltoMutableRangeArray>(capacity, ranges, count);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::initWithCapacity(quint64 capacity)
{
    return adopt<VeltoMutableRangeArray>(capacity, nullptr, 0);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::init()
{
    return initWithCapacity(DefaultCapacity);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::initWithArray(const VeltoAbstractRangeArray &other)
{
    return adoptCopy<VeltoMutableRangeArray>(other);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::initWithRange(VeltoRange range)
{
    return adopt<VeltoMutableRangeArray>(1, &range, 1);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::initWithRanges(const VeltoAbstractRangeArray &other)
{
    return initWithArray(other);
}

std::shared_ptr<const VeltoRangeArray> VeltoMutableRangeArray::copy() const
{
    return VeltoRangeArray::initWithArray(*this);
}

std::shared_ptr<VeltoMutableRangeArray> VeltoMutableRangeArray::mutableCopy() const
{
    return adopt<VeltoMutableRangeArray>(m_capacity, m_data, m_count);
}

VeltoRange VeltoMutableRangeArray::rangeAtIndex(quint64 index) const
{
    if (index >= m_count)
        throwOutOfBounds(index, m_count);
    return m_data[index];
}

void VeltoMutableRangeArray::getRanges(VeltoRange *buffer, VeltoRange indexRange) const
{
    if (indexRange.length == 0)
        return;
    if (isIndexRangeOutOfBounds(indexRange, m_count))
        throwOutOfBounds(indexRange.end() - 1, m_count);
    std::memcpy(buffer, m_data + indexRange.location, indexRange.length * sizeof(VeltoRange));
}

void VeltoMutableRangeArray::accessRangeBufferUsing(const RangeBufferBlock &block) const
{
    block(m_data, m_count);
}

void VeltoMutableRangeArray::addRange(VeltoRange range)
{
    insertRange(range, m_count);
}

void VeltoMutableRangeArray::insertRange(VeltoRange range, quint64 index)
{
    makeRoom(1, index);
    m_data[index] = range;
}

void VeltoMutableRangeArray::insertRangesFromArray(const VeltoAbstractRangeArray &other, quint64 index)
{
    const quint64 n = other.count();
    if (n == 0)
        return;
    // Inserting an array into itself: take the ranges before the room is made.
    if (&other == this) {
        const auto snapshot = mutableCopy();
        if (!snapshot)
            throw VeltoException(VeltoMallocException, u"Not enough memory for VeltoRangeArray with %1 elements"_s.arg(n));
        insertRangesFromArray(*snapshot, index);
        return;
    }
    makeRoom(n, index);
    other.getRanges(m_data + index, {0, n});
}

void VeltoMutableRangeArray::replaceRangeAtIndex(quint64 index, VeltoRange range)
{
    if (index >= m_count)
        throwOutOfBounds(index, m_count);
    m_data[index] = range;
}

bool VeltoMutableRangeArray::adjustRangesForEditInRange(VeltoRange editRange, quint64 delta)
{
    for (quint64 i = 0; i < m_count; ++i) {
        const VeltoRange adjusted = VeltoRange_AdjustedUnionForEdit(m_data[i], editRange, delta);
        if (adjusted == m_data[i])
            continue;
        replaceRangeAtIndex(i, adjusted);
        // Writing back a range that did not change does no harm, and saves a compare and a branch.
        for (++i; i < m_count; ++i)
            m_data[i] = VeltoRange_AdjustedUnionForEdit(m_data[i], editRange, delta);
        return true;
    }
    return false;
}

void VeltoMutableRangeArray::removeRangeAtIndex(quint64 index)
{
    removeObjectsInRange({index, 1});
}

void VeltoMutableRangeArray::removeObjectsInRange(VeltoRange indexRange)
{
    if (isIndexRangeOutOfBounds(indexRange, m_count))
        throwOutOfBounds(indexRange.end() - 1, m_count);
    std::memmove(m_data + indexRange.location, m_data + indexRange.end(),
                 (m_count - indexRange.end()) * sizeof(VeltoRange));
    m_count -= indexRange.length;
}

void VeltoMutableRangeArray::removeAllObjects()
{
    m_count = 0;
}

void VeltoMutableRangeArray::normalizeRanges()
{
    if (m_count < 2)
        return;
    VeltoRange *const begin = m_data;
    VeltoRange *const end = m_data + m_count;
    const VeltoRange first = *begin;
    const auto byLocation = [](const VeltoRange &a, const VeltoRange &b) { return a.location < b.location; };
    if (!std::is_sorted(begin, end, byLocation))
        std::sort(begin, end, byLocation);

    // One pass with a write cursor: what is written is always in normal form.
    quint64 out = 0;
    for (VeltoRange *r = begin; r != end; ++r) {
        if (r->length == 0)
            continue;
        if (out == 0 || r->location > m_data[out - 1].end())
            m_data[out++] = *r;
        else
            m_data[out - 1] = VeltoUnionRange(m_data[out - 1], *r);
    }
    if (out == 0) {
        // Every range was empty: the array keeps its first one rather than becoming empty.
        m_data[0] = first;
        out = 1;
    }
    m_count = out;
}

std::shared_ptr<const VeltoRangeArray> VeltoMutableRangeArray::subarrayWithRange(VeltoRange indexRange) const
{
    if (indexRange.length == 0)
        return VeltoRangeArray::emptyArray();
    if (isIndexRangeOutOfBounds(indexRange, m_count))
        throwOutOfBounds(indexRange.end() - 1, m_count);
    return VeltoRangeArray::initWithCapacity(indexRange.length, m_data + indexRange.location, indexRange.length);
}

void VeltoMutableRangeArray::makeRoom(quint64 n, quint64 index)
{
    if (index > m_count)
        throwOutOfBounds(index, m_count + 1);
    const quint64 needed = m_count + n;
    const bool wraps = needed < m_count;
    if (needed > m_capacity || wraps) {
        // At least doubling keeps the number of reallocations logarithmic in the number of ranges.
        const quint64 grown = std::max(needed, 2 * m_capacity);
        void *buffer = !wraps && grown <= MaximumCapacity ? std::realloc(m_data, grown * sizeof(VeltoRange)) : nullptr;
        if (!buffer) {
            throw VeltoException(VeltoMallocException,
                                 u"Not enough memory for VeltoRangeArray with %1 elements"_s.arg(grown));
        }
        m_data = static_cast<VeltoRange *>(buffer);
        m_capacity = grown;
    }
    if (index < m_count)
        std::memmove(m_data + index + n, m_data + index, (m_count - index) * sizeof(VeltoRange));
    m_count = needed;
}

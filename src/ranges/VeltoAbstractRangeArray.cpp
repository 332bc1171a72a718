// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAbstractRangeArray.h"

#include "Variant+VeltoRanges.h"
#include "VeltoBinarySearch.h"
#include "VeltoException.h"
#include "VeltoRangeArray.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

VeltoAbstractRangeArray::~VeltoAbstractRangeArray() = default;

void VeltoAbstractRangeArray::getRanges(VeltoRange *buffer, VeltoRange indexRange) const
{
    for (quint64 i = 0; i < indexRange.length; ++i)
        buffer[i] = rangeAtIndex(indexRange.location + i);
}

void VeltoAbstractRangeArray::accessRangeBufferUsing(const RangeBufferBlock &block) const
{
    const quint64 n = count();
    if (n > SIZE_MAX / sizeof(VeltoRange))
        return;
    std::unique_ptr<VeltoRange, void (*)(void *)> buffer(static_cast<VeltoRange *>(std::malloc(n * sizeof(VeltoRange))),
                                                         std::free);
    if (!buffer && n != 0)
        return;
    getRanges(buffer.get(), {0, n});
    block(buffer.get(), n);
}

void VeltoAbstractRangeArray::addRange(VeltoRange range)
{
    insertRange(range, count());
}

QVariant VeltoAbstractRangeArray::objectAtIndex(quint64 index) const
{
    return velto::valueWithRange(rangeAtIndex(index));
}

void VeltoAbstractRangeArray::addObject(const QVariant &boxedRange)
{
    addRange(velto::rangeValue(boxedRange));
}

void VeltoAbstractRangeArray::insertObject(const QVariant &boxedRange, quint64 index)
{
    insertRange(velto::rangeValue(boxedRange), index);
}

void VeltoAbstractRangeArray::replaceObjectAtIndex(quint64 index, const QVariant &boxedRange)
{
    replaceRangeAtIndex(index, velto::rangeValue(boxedRange));
}

void VeltoAbstractRangeArray::removeObjectAtIndex(quint64 index)
{
    removeRangeAtIndex(index);
}

void VeltoAbstractRangeArray::removeLastObject()
{
    removeRangeAtIndex(count() - 1);
}

bool VeltoAbstractRangeArray::enumerateRangesVeltoUsing(const RangeBlock &block) const
{
    bool stop = false;
    const quint64 n = count();
    for (quint64 i = 0; i < n; ++i) {
        block(rangeAtIndex(i), i, &stop);
        if (stop)
            return false;
    }
    return true;
}

std::shared_ptr<const VeltoAbstractRangeArray> VeltoAbstractRangeArray::arrayByNormalizingRanges() const
{
    if (count() < 2)
        return selfOrCopy();
    auto normalized = VeltoMutableRangeArray::initWithArray(*this);
    if (normalized)
        normalized->normalizeRanges();
    return normalized;
}

bool VeltoAbstractRangeArray::isNormalizedRangeArray() const
{
    bool normalized = true;
    accessRangeBufferUsing([&normalized](const VeltoRange *ranges, quint64 n) {
        for (quint64 i = 1; i < n && normalized; ++i) {
            const VeltoRange previous = ranges[i - 1];
            normalized = ranges[i].location > previous.end()
                && VeltoIntersectionRange(previous, ranges[i]).length == 0;
        }
    });
    return normalized;
}

std::shared_ptr<VeltoMutableRangeArray> VeltoAbstractRangeArray::arrayByInvertingRangesWithinLimit(quint64 limit) const
{
    auto gaps = VeltoMutableRangeArray::initWithCapacity(count());
    if (!gaps)
        return gaps;
    accessRangeBufferUsing([&](const VeltoRange *ranges, quint64 n) {
        quint64 position = 0;
        for (quint64 i = 0; i < n; ++i) {
            const quint64 gapEnd = std::min(ranges[i].location, limit);
            if (gapEnd > position)
                gaps->addRange({position, gapEnd - position});
            position = ranges[i].end();
        }
        if (position < limit)
            gaps->addRange({position, limit - position});
    });
    return gaps;
}

quint64 VeltoAbstractRangeArray::insertionIndexForSortedRange(VeltoRange range) const
{
    return insertionIndexForSortedRange(range, VeltoRange_Compare);
}

quint64 VeltoAbstractRangeArray::insertionIndexForSortedRange(VeltoRange range, VeltoRangeComparingFunction compare) const
{
    quint64 index = 0;
    accessRangeBufferUsing([&](const VeltoRange *ranges, quint64 n) {
        quint64 insertion = 0;
        const quint64 found = VeltoIndexOfBinarySearch(n, &insertion,
                                                       [&](quint64 i) { return compare(range, ranges[i]); });
        index = found != VeltoNotFound ? found : insertion;
    });
    return index;
}

VeltoRange VeltoAbstractRangeArray::indexesOfSortedRangesIntersectingRange(VeltoRange range) const
{
    return indexesOfSortedRangesIntersectingRange(range, {0, count()});
}

VeltoRange VeltoAbstractRangeArray::indexesOfSortedRangesIntersectingRange(VeltoRange range, VeltoRange indexes) const
{
    VeltoRange result{VeltoNotFound, 0};
    accessRangeBufferUsing([&](const VeltoRange *ranges, quint64 n) {
        if (n == 1 && ranges[0].length == 0) {
            if (range.location <= ranges[0].location && ranges[0].location <= range.end())
                result = {0, 1};
            return;
        }
        if (indexes.end() < indexes.location || indexes.end() > n) {
            const quint64 first = std::min(indexes.location, n);
            indexes = {first, n - first};
        }
        const auto intersects = [&range](VeltoRange e) {
            if (e.length != 0)
                return VeltoIntersectionRange(e, range).length != 0;
            return range.location <= e.location && e.location < range.end();
        };
        // Some element that reaches into the range; elements ending at or before its start lie to the left.
        quint64 start = 0;
        const VeltoRange *span = ranges + indexes.location;
        const quint64 found = VeltoIndexOfBinarySearch(indexes.length, &start, [&](quint64 i) -> qint64 {
            if (span[i].location >= range.end())
                return -1;
            return span[i].end() > range.location ? 0 : 1;
        });
        if (found != VeltoNotFound) {
            start = found;
            while (start > 0 && intersects(span[start - 1]))
                --start;
        }
        for (quint64 i = indexes.location + start; i < indexes.end(); ++i) {
            if (!intersects(ranges[i]))
                continue;
            if (result.location == VeltoNotFound)
                result = {i, 1};
            else
                ++result.length;
        }
    });
    return result;
}

VeltoRange VeltoAbstractRangeArray::unionSortedRanges() const
{
    const quint64 n = count();
    if (n == 0)
        return {VeltoNotFound, 0};
    if (n == 1)
        return rangeAtIndex(0);
    return VeltoUnionRange(rangeAtIndex(0), rangeAtIndex(n - 1));
}

bool VeltoAbstractRangeArray::adjustRangesForEditInRange(VeltoRange editRange, quint64 delta)
{
    bool changed = false;
    accessRangeBufferUsing([&](const VeltoRange *ranges, quint64 n) {
        for (quint64 i = 0; i < n; ++i) {
            const VeltoRange adjusted = VeltoRange_AdjustedUnionForEdit(ranges[i], editRange, delta);
            if (adjusted != ranges[i]) {
                replaceRangeAtIndex(i, adjusted);
                changed = true;
            }
        }
    });
    return changed;
}

void VeltoAbstractRangeArray::insertSortedRange(VeltoRange range)
{
    insertRange(range, insertionIndexForSortedRange(range));
}

std::shared_ptr<const VeltoMutableRangeArray> VeltoAbstractRangeArray::arrayWithZeroRange()
{
    static const std::shared_ptr<const VeltoMutableRangeArray> zero = VeltoMutableRangeArray::initWithRange({0, 0});
    return zero;
}

std::shared_ptr<VeltoMutableRangeArray> VeltoAbstractRangeArray::arrayWithRange(VeltoRange range)
{
    return VeltoMutableRangeArray::initWithRange(range);
}

std::shared_ptr<const VeltoAbstractRangeArray> VeltoAbstractRangeArray::selfOrCopy() const
{
    if (auto self = weak_from_this().lock())
        return self;
    return VeltoRangeArray::initWithArray(*this);
}

void VeltoAbstractRangeArray::throwOutOfBounds(quint64 index, quint64 bound)
{
    throw VeltoException(VeltoRangeException,
                         u"The given VeltoRangeArray index (%1) is out of bounds (%2)."_s.arg(index).arg(bound));
}

bool VeltoAbstractRangeArray::isIndexRangeOutOfBounds(VeltoRange indexRange, quint64 count)
{
    // The last index wraps for an empty range at 0; a range whose end wraps must not pass either.
    const quint64 last = indexRange.end() - 1;
    return last >= count || (indexRange.length != 0 && indexRange.length > count - std::min(indexRange.location, count));
}

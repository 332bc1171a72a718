// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoRangeUtil.h"

#include "VeltoRangeArray.h"

using namespace Qt::StringLiterals;

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};

template <typename T>
constexpr qint64 threeWay(T a, T b) noexcept
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

} // namespace

qint64 VeltoRange_Compare(VeltoRange a, VeltoRange b) noexcept
{
    const qint64 byLocation = threeWay(a.location, b.location);
    return byLocation != 0 ? byLocation : threeWay(a.length, b.length);
}

qint64 VeltoRange_CompareByBound(VeltoRange a, VeltoRange b) noexcept
{
    const qint64 byEnd = threeWay(a.end(), b.end());
    return byEnd != 0 ? byEnd : threeWay(a.location, b.location);
}

VeltoRange VeltoRange_IntersectionRange(VeltoRange a, VeltoRange b) noexcept
{
    // Empty ranges count as inside only strictly within a non-empty one; the platform intersection
    // would also accept them at its edges.
    if (a.length == 0 && b.length == 0) {
        if (a.location == b.location)
            return a;
    } else if (b.length == 0) {
        if (a.location < b.location && b.location < a.end())
            return b;
    } else if (a.length == 0) {
        if (b.location < a.location && a.location < b.end())
            return a;
    }
    const VeltoRange common = VeltoIntersectionRange(a, b);
    return common.length == 0 ? NoRange : common;
}

VeltoRange VeltoRange_UnionContiguous(VeltoRange a, VeltoRange b) noexcept
{
    const VeltoRange lower = b.location < a.location ? b : a;
    const VeltoRange upper = b.location < a.location ? a : b;
    if (lower.end() < upper.location)
        return NoRange;
    return {lower.location, std::max(lower.end(), upper.end()) - lower.location};
}

quint64 VeltoRange_SubtractRange(VeltoRange r, VeltoRange s, VeltoRange out[2]) noexcept
{
    const VeltoRange common = VeltoIntersectionRange(r, s);
    if (common.length != 0) {
        quint64 written = 0;
        if (common.location > r.location)
            out[written++] = {r.location, common.location - r.location};
        if (r.end() > common.end())
            out[written++] = {common.end(), r.end() - common.end()};
        return written;
    }
    // No overlap: r survives unless it lies within s. For an empty r both of s's ends count as
    // within, unlike VeltoRange_IntersectionRange: an empty range at the end of a deletion goes too.
    const bool covered = r.length != 0 ? (r.location >= s.location && r.end() <= s.end())
                       : s.length != 0 ? (s.location <= r.location && r.location <= s.end())
                                       : r.location == s.location;
    if (covered)
        return 0;
    out[0] = r;
    return 1;
}

std::shared_ptr<const VeltoAbstractRangeArray> VeltoRange_RangesBySubtractingRange(VeltoRange r, VeltoRange s)
{
    VeltoRange pieces[2];
    const quint64 count = VeltoRange_SubtractRange(r, s, pieces);
    if (count == 0)
        return VeltoRangeArray::emptyArray();
    if (count == 1)
        return VeltoAbstractRangeArray::arrayWithRange(pieces[0]);
    auto both = VeltoMutableRangeArray::initWithCapacity(2);
    if (both) {
        both->addRange(pieces[0]);
        both->addRange(pieces[1]);
    }
    return both;
}

VeltoRange VeltoRange_AdjustedPerfectlyForEdit(VeltoRange r, VeltoRange editRange, quint64 delta) noexcept
{
    if (r.location == VeltoNotFound || delta == 0 || r.end() <= editRange.location)
        return r;
    const quint64 oldEnd = editRange.end() - delta;
    if (oldEnd <= r.location)
        return {r.location + delta, r.length};
    if (editRange.location >= r.location && oldEnd <= r.end())
        return {r.location, r.length + delta};
    return NoRange;
}

VeltoRange VeltoRange_AdjustedUnionForEdit(VeltoRange r, VeltoRange editRange, quint64 delta) noexcept
{
    if (r.location == VeltoNotFound || delta == 0)
        return r;
    const VeltoRange oldSpan{editRange.location, editRange.length - delta};
    // The replaced text reaches across an edge of r: r grows to cover it, then takes the delta.
    const auto unionAdjusted = [&] {
        const VeltoRange both = VeltoUnionRange(r, oldSpan);
        return VeltoRange{both.location, both.length + delta};
    };
    if (editRange.location < r.location) {
        if (oldSpan.end() <= r.location)
            return {r.location + delta, r.length};
        return unionAdjusted();
    }
    if (editRange.location >= r.end()) {
        // Only an empty r can meet an edit here at its own location; a pure insertion pushes it along.
        if (r.length == 0 && oldSpan.end() == r.location)
            return {r.location + delta, 0};
        return r;
    }
    if (oldSpan.length == 0 && editRange.location == r.location)
        return {r.location + delta, r.length};
    if (oldSpan.end() > r.end())
        return unionAdjusted();
    return {r.location, r.length + delta};
}

VeltoRange VeltoRange_AdjustForDeletion(VeltoRange r, VeltoRange deleted) noexcept
{
    if (r.location == VeltoNotFound)
        return {VeltoNotFound, r.length};
    if (deleted.location > r.location) {
        if (r.end() <= deleted.location)
            return r;
        return {r.location, r.length - VeltoIntersectionRange(r, deleted).length};
    }
    if (r.end() <= deleted.end())
        return {deleted.location, 0};
    const quint64 overlap = VeltoIntersectionRange(r, deleted).length;
    const quint64 location = deleted.location == r.location ? r.location : r.location - deleted.length + overlap;
    return {location, r.length - overlap};
}

VeltoRange VeltoRange_AdjustForInsertion(VeltoRange r, VeltoRange inserted) noexcept
{
    if (r.location == VeltoNotFound)
        return {VeltoNotFound, r.length};
    if (inserted.location <= r.location)
        return {r.location + inserted.length, r.length};
    if (r.end() > inserted.location)
        return {r.location, r.length + inserted.length};
    return r;
}

QString VeltoRange_ToString(VeltoRange range)
{
    return u"{%1, %2}"_s.arg(range.location).arg(range.length);
}

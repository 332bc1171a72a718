// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoRangeUtil.h
 * \brief Range arithmetic: ordering, intersection, contiguous union, subtraction, and the rules by which
 * a range moves, grows, shrinks or vanishes when the text it indexes is edited.
 *
 * Text code keeps ranges of characters (selections, found matches, styled runs) alive across edits by
 * passing them through these functions; range arrays (VeltoAbstractRangeArray) apply them to every
 * element. Every function is total and pure: no errors, no checks for overflow (location + length
 * wraps like unsigned arithmetic), and no allocation except VeltoRange_RangesBySubtractingRange().
 *
 * An edit is described by the edit range, the span the new text occupies after the edit, and a delta,
 * the change of the text's length carried in an unsigned word (two's complement: adding it to a
 * location is plain wrap-around addition, so a negative delta subtracts). Inserting k characters at p
 * is the edit ((p, k), k); deleting k characters at p is ((p, 0), -k).
 *
 * \code
 * VeltoRange selection{10, 5};
 * // the user typed 3 characters at 12, inside the selection:
 * selection = VeltoRange_AdjustedUnionForEdit(selection, {12, 3}, 3);   // (10, 8)
 * \endcode
 *
 * Use VeltoAbstractRangeArray::adjustRangesForEditInRange() to carry a whole array across an edit.
 */

#include "veltocore_export.h"

#include "VeltoRange.h"

#include <QMetaType>
#include <QString>

#include <algorithm>
#include <memory>

class VeltoAbstractRangeArray;

/// VeltoRangeComparingFunction: answers -1, 0 or 1 for the order of two ranges.
using VeltoRangeComparingFunction = qint64 (*)(VeltoRange a, VeltoRange b);

/**
 * VeltoUnionRange: the smallest range covering both, (min location, max end − min location), whether
 * or not they touch.
 */
[[nodiscard]] constexpr VeltoRange VeltoUnionRange(VeltoRange a, VeltoRange b) noexcept
{
    const quint64 location = std::min(a.location, b.location);
    return {location, std::max(a.end(), b.end()) - location};
}

/**
 * VeltoIntersectionRange: the common part of two ranges; (0, 0) when one ends before the other begins.
 * Ranges that only touch give a range of length 0 at the touching position.
 */
[[nodiscard]] constexpr VeltoRange VeltoIntersectionRange(VeltoRange a, VeltoRange b) noexcept
{
    if (a.end() < b.location || b.end() < a.location)
        return {0, 0};
    const quint64 location = std::max(a.location, b.location);
    return {location, std::min(a.end(), b.end()) - location};
}

/// VeltoRange_Compare: orders by location, then by length; -1 when \a a sorts first, 1 when \a b does, 0 when equal.
[[nodiscard]] VELTOCORE_EXPORT qint64 VeltoRange_Compare(VeltoRange a, VeltoRange b) noexcept;

/// VeltoRange_CompareByBound: orders by end, then by location; -1, 0 or 1 as VeltoRange_Compare().
[[nodiscard]] VELTOCORE_EXPORT qint64 VeltoRange_CompareByBound(VeltoRange a, VeltoRange b) noexcept;

/**
 * VeltoRange_IntersectionRange: the overlap of \a a and \a b, or (VeltoNotFound, 0) when they share no
 * character. Two equal empty ranges give that empty range; an empty range strictly inside a non-empty
 * one gives the empty range (at the other's first position or at its end it is not inside).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_IntersectionRange(VeltoRange a, VeltoRange b) noexcept;

/**
 * VeltoRange_UnionContiguous: the union of two ranges that overlap or touch (an empty range at the
 * other's end joins it), or (VeltoNotFound, 0) when a gap lies between them.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_UnionContiguous(VeltoRange a, VeltoRange b) noexcept;

/**
 * VeltoRange_SubtractRange: writes the parts of \a r that \a s does not cover into \a out, in ascending
 * order, and returns their count (0, 1 or 2). Without overlap \a r survives whole, except that it is
 * removed when it lies within \a s; an empty \a r is removed when it lies within \a s or at either of
 * its ends, or when both are empty at the same location.
 */
VELTOCORE_EXPORT quint64 VeltoRange_SubtractRange(VeltoRange r, VeltoRange s, VeltoRange out[2]) noexcept;

/**
 * VeltoRange_RangesBySubtractingRange: VeltoRange_SubtractRange() as an array: the shared empty
 * VeltoRangeArray for no piece, a new VeltoMutableRangeArray for one or two. Null only when memory
 * for the array cannot be had.
 */
[[nodiscard]] VELTOCORE_EXPORT std::shared_ptr<const VeltoAbstractRangeArray>
VeltoRange_RangesBySubtractingRange(VeltoRange r, VeltoRange s);

/**
 * VeltoRange_AdjustedPerfectlyForEdit: \a r after an edit, kept only when the edit clearly lies before,
 * after or inside it. An edit with delta 0, an edit at or after r's end, or a range whose location is
 * VeltoNotFound leave it unchanged; replaced text wholly before r moves it; replaced text within r
 * (edges included) resizes it; replaced text across an edge of r gives (VeltoNotFound, 0). An insertion
 * at r's first position moves r; an empty r with an insertion at its location stays in front of it.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_AdjustedPerfectlyForEdit(VeltoRange r, VeltoRange editRange,
                                                                             quint64 delta) noexcept;

/**
 * VeltoRange_AdjustedUnionForEdit: like VeltoRange_AdjustedPerfectlyForEdit(), but an edit across an
 * edge of \a r makes it cover the union of r and the replaced text, adjusted by the delta, so that the
 * range survives. An empty r meeting an insertion at its location moves behind the inserted text.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_AdjustedUnionForEdit(VeltoRange r, VeltoRange editRange,
                                                                         quint64 delta) noexcept;

/**
 * VeltoRange_AdjustForDeletion: \a r after the text of \a deleted (in the old text's coordinates) was
 * removed. A range wholly inside the deleted text becomes (deleted.location, 0); a range whose location
 * is VeltoNotFound comes back as (VeltoNotFound, r.length).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_AdjustForDeletion(VeltoRange r, VeltoRange deleted) noexcept;

/**
 * VeltoRange_AdjustForInsertion: \a r after \a inserted (in the new text's coordinates) was inserted.
 * An insertion at or before r's location moves it (an empty range too), one strictly inside grows it,
 * one at or after its end leaves it alone. A range whose location is VeltoNotFound comes back as
 * (VeltoNotFound, r.length).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange VeltoRange_AdjustForInsertion(VeltoRange r, VeltoRange inserted) noexcept;

/// VeltoRange_ToString: "{location, length}", for logs and messages ("{10, 5}").
[[nodiscard]] VELTOCORE_EXPORT QString VeltoRange_ToString(VeltoRange range);

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAbstractRangeArray.h
 * \brief VeltoAbstractRangeArray: the one interface of every array of ranges, with the operations
 * written once against its primitives: normalising, inverting, sorted search, edit adjustment.
 *
 * Two kinds implement it: the compact VeltoMutableRangeArray (and its immutable VeltoRangeArray),
 * which keeps the ranges unboxed in one buffer, and VeltoBoxedRangeArray, a QVariantList of boxed
 * ranges. Callers hand arrays of ranges around through this interface and never need to know which
 * kind they hold.
 *
 * \code
 * auto matches = VeltoMutableRangeArray::init();
 * matches->addRange({4, 3});
 * matches->addRange({12, 3});
 * text.insert(0, u"> "_s);
 * matches->adjustRangesForEditInRange({0, 2}, 2);      // (6, 3), (14, 3)
 * \endcode
 *
 * Arrays are objects with identity, held by std::shared_ptr. Operations that may answer the receiver
 * itself or a shared array return std::shared_ptr<const ...>; a receiver that is not held by a
 * std::shared_ptr answers an equal immutable copy instead of itself. None of these classes locks: use
 * an array from one thread at a time.
 */

#include "veltocore_export.h"

#include "VeltoRangeUtil.h"

#include <QVariant>

#include <functional>
#include <memory>

class VeltoMutableRangeArray;

/**
 * \brief VeltoAbstractRangeArray: an array of ranges.
 *
 * Subclasses provide the primitives (count(), rangeAtIndex(), the mutators, and faster getRanges() and
 * accessRangeBufferUsing() where they can); everything else works on any kind. Out-of-bounds indexes
 * throw VeltoException named VeltoRangeException.
 */
class VELTOCORE_EXPORT VeltoAbstractRangeArray : public std::enable_shared_from_this<VeltoAbstractRangeArray>
{
public:
    /// A block reading \a count ranges in place; the pointer is valid only during the call.
    using RangeBufferBlock = std::function<void(const VeltoRange *ranges, quint64 count)>;
    /// A block called for each range in order; setting *stop ends the enumeration after this call.
    using RangeBlock = std::function<void(VeltoRange range, quint64 index, bool *stop)>;

    virtual ~VeltoAbstractRangeArray();
    VeltoAbstractRangeArray(const VeltoAbstractRangeArray &) = delete;
    VeltoAbstractRangeArray &operator=(const VeltoAbstractRangeArray &) = delete;

    /// count: the number of ranges.
    [[nodiscard]] virtual quint64 count() const = 0;
    /// rangeAtIndex: the range at \a index; an index ≥ count() throws.
    [[nodiscard]] virtual VeltoRange rangeAtIndex(quint64 index) const = 0;
    /**
     * getRanges: copies the ranges at the index range \a indexRange into \a buffer. This generic form
     * reads rangeAtIndex() for each index in order, which does the bounds checks.
     */
    virtual void getRanges(VeltoRange *buffer, VeltoRange indexRange) const;
    /**
     * accessRangeBufferUsing: calls \a block once with all ranges in one buffer. This generic form copies
     * them into a temporary buffer; if that memory cannot be had, the block is not called at all.
     */
    virtual void accessRangeBufferUsing(const RangeBufferBlock &block) const;

    /// addRange: appends \a range.
    virtual void addRange(VeltoRange range);
    /// insertRange: inserts \a range at \a index (count() appends); a larger index throws.
    virtual void insertRange(VeltoRange range, quint64 index) = 0;
    /// replaceRangeAtIndex: overwrites the range at \a index; an index ≥ count() throws.
    virtual void replaceRangeAtIndex(quint64 index, VeltoRange range) = 0;
    /// removeRangeAtIndex: removes the range at \a index; an index ≥ count() throws.
    virtual void removeRangeAtIndex(quint64 index) = 0;
    /**
     * removeObjectsInRange: removes the ranges at the index range \a indexRange. Throws when its last
     * index, location + length − 1 computed with wrap-around, is ≥ count(): an empty index range at 0
     * throws.
     */
    virtual void removeObjectsInRange(VeltoRange indexRange) = 0;
    /// removeAllObjects: removes every range.
    virtual void removeAllObjects() = 0;

    /// objectAtIndex: the range at \a index boxed in a QVariant (see Variant+VeltoRanges.h).
    [[nodiscard]] QVariant objectAtIndex(quint64 index) const;
    /**
     * addObject, insertObject, replaceObjectAtIndex: the range primitives with a boxed range. A value
     * that is not a boxed VeltoRange throws VeltoException named VeltoInvalidArgumentException.
     */
    void addObject(const QVariant &boxedRange);
    void insertObject(const QVariant &boxedRange, quint64 index);
    void replaceObjectAtIndex(quint64 index, const QVariant &boxedRange);
    /// removeObjectAtIndex: removeRangeAtIndex().
    void removeObjectAtIndex(quint64 index);
    /// removeLastObject: removes the range at count() − 1 (an empty array throws).
    void removeLastObject();

    /**
     * enumerateRangesVeltoUsing: calls \a block with each range and its index, in order, stopping after
     * the call that sets its stop flag. Answers true when it ran to the end (also for no ranges).
     */
    bool enumerateRangesVeltoUsing(const RangeBlock &block) const;

    /**
     * arrayByNormalizingRanges: the ranges in normal form (sorted, none empty, none overlapping or
     * touching; see VeltoMutableRangeArray::normalizeRanges()). An array of fewer than 2 ranges is
     * answered as it is; otherwise a new VeltoMutableRangeArray.
     */
    [[nodiscard]] std::shared_ptr<const VeltoAbstractRangeArray> arrayByNormalizingRanges() const;
    /**
     * isNormalizedRangeArray: true for 0 or 1 ranges; otherwise false as soon as a range begins at or
     * before the previous range's end or intersects it. Empty ranges after the first are not rejected.
     */
    [[nodiscard]] bool isNormalizedRangeArray() const;
    /**
     * arrayByInvertingRangesWithinLimit: the gaps between the ranges (expected normalised) from 0 up to
     * \a limit, as a new array. Each range's location is clamped to the limit, its end is not; no ranges
     * give (0, limit), or nothing for a limit of 0. Null only when memory cannot be had.
     */
    [[nodiscard]] std::shared_ptr<VeltoMutableRangeArray> arrayByInvertingRangesWithinLimit(quint64 limit) const;
    /**
     * insertionIndexForSortedRange: in an array sorted by VeltoRange_Compare() (or by \a compare, called
     * as compare(range, element)), the index of the first range equal to \a range, else the first
     * position whose range sorts after it; 0 for an empty array.
     */
    [[nodiscard]] quint64 insertionIndexForSortedRange(VeltoRange range) const;
    [[nodiscard]] quint64 insertionIndexForSortedRange(VeltoRange range, VeltoRangeComparingFunction compare) const;
    /// indexesOfSortedRangesIntersectingRange: the same as the next over every index.
    [[nodiscard]] VeltoRange indexesOfSortedRangesIntersectingRange(VeltoRange range) const;
    /**
     * indexesOfSortedRangesIntersectingRange: the index range of the elements within \a indexes (clamped
     * to the array) that intersect \a range, or (VeltoNotFound, 0). A non-empty element intersects when it
     * shares a character with \a range; an empty element when it lies at range.location ≤ e < range's end,
     * so an empty \a range meets nothing. An array that is one empty range answers (0, 1) when that range
     * lies within \a range, both ends included. The answer is a correct run only for sorted, normalised
     * arrays: the scan counts every intersecting element after the first, adjacent or not.
     */
    [[nodiscard]] VeltoRange indexesOfSortedRangesIntersectingRange(VeltoRange range, VeltoRange indexes) const;
    /**
     * unionSortedRanges: (VeltoNotFound, 0) for no ranges, the range for one, otherwise the union of the
     * first and the last range only (the ranges in between are not read).
     */
    [[nodiscard]] VeltoRange unionSortedRanges() const;

    /**
     * adjustRangesForEditInRange: carries every range across an edit (VeltoRange_AdjustedUnionForEdit())
     * and writes back those that changed. The array is not normalised afterwards: ranges may come to
     * touch, overlap or repeat. Answers true when any range changed; a delta of 0 changes nothing. This
     * generic form writes each changed range back with replaceRangeAtIndex().
     */
    virtual bool adjustRangesForEditInRange(VeltoRange editRange, quint64 delta);
    /// insertSortedRange: inserts \a range at insertionIndexForSortedRange(), in front of any equal ones.
    void insertSortedRange(VeltoRange range);

    /**
     * arrayWithZeroRange: one array holding (0, 0), made on first use and shared by every caller for the
     * life of the process.
     */
    [[nodiscard]] static std::shared_ptr<const VeltoMutableRangeArray> arrayWithZeroRange();
    /// arrayWithRange: a new VeltoMutableRangeArray holding \a range; null only when memory cannot be had.
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> arrayWithRange(VeltoRange range);

protected:
    VeltoAbstractRangeArray() = default;
    /// selfOrCopy: the receiver when a std::shared_ptr holds it, else an equal immutable copy.
    [[nodiscard]] std::shared_ptr<const VeltoAbstractRangeArray> selfOrCopy() const;
    /// throwOutOfBounds: the VeltoRangeException every kind throws for \a index beyond \a bound.
    [[noreturn]] static void throwOutOfBounds(quint64 index, quint64 bound);
    /**
     * isIndexRangeOutOfBounds: whether \a indexRange does not fit in \a count elements; an empty index
     * range is out of bounds when its location − 1 (with wrap-around) is ≥ count.
     */
    [[nodiscard]] static bool isIndexRangeOutOfBounds(VeltoRange indexRange, quint64 count);
};

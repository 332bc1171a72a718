// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoMutableRangeArray.h
 * \brief VeltoMutableRangeArray: the compact array of ranges, stored unboxed in one contiguous buffer.
 *
 * Range-heavy code uses it to avoid one boxed object per range: the buffer grows at least by doubling
 * (never per range), bulk copies are single memory moves, and the operations of
 * VeltoAbstractRangeArray read the buffer in place. VeltoRangeArray is its immutable kind.
 *
 * \code
 * auto ranges = VeltoMutableRangeArray::init();        // capacity 4
 * ranges->addRange({5, 3});
 * ranges->addRange({0, 2});
 * ranges->addRange({2, 3});
 * ranges->normalizeRanges();                           // (0, 8)
 * \endcode
 *
 * The initialisers are static functions answering null when the buffer cannot be allocated. Errors of
 * the caller throw VeltoException: an index out of bounds VeltoRangeException ("The given
 * VeltoRangeArray index (7) is out of bounds (3)."), a buffer that cannot grow VeltoMallocException
 * ("Not enough memory for VeltoRangeArray with 8 elements"). The array keeps its ranges in whatever
 * order it is given; sortedness and normal form are what the operations create or test.
 */

#include "VeltoAbstractRangeArray.h"

class VeltoRangeArray;

/**
 * \brief VeltoMutableRangeArray: count, capacity (never 0) and a heap buffer of capacity ranges.
 *
 * Not copyable: copy() and mutableCopy() make new arrays.
 */
class VELTOCORE_EXPORT VeltoMutableRangeArray : public VeltoAbstractRangeArray
{
public:
    /**
     * initWithCapacity: an array of \a capacity ranges (0 counts as 1) holding the first
     * min(capacity, count) of \a ranges; ranges beyond the capacity are dropped. Null when the buffer
     * cannot be allocated.
     */
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> initWithCapacity(quint64 capacity,
                                                                                const VeltoRange *ranges, quint64 count);
    /// initWithCapacity: an empty array of \a capacity (0 counts as 1).
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> initWithCapacity(quint64 capacity);
    /// init: an empty array of capacity 4.
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> init();
    /// initWithArray: a copy of \a other's ranges, capacity = their count (at least 1).
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> initWithArray(const VeltoAbstractRangeArray &other);
    /// initWithRange: capacity 1, holding \a range.
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> initWithRange(VeltoRange range);
    /// initWithRanges: the same as initWithArray().
    [[nodiscard]] static std::shared_ptr<VeltoMutableRangeArray> initWithRanges(const VeltoAbstractRangeArray &other);

    ~VeltoMutableRangeArray() override;

    /// copy: a new immutable VeltoRangeArray with the same ranges (VeltoRangeArray answers itself).
    [[nodiscard]] virtual std::shared_ptr<const VeltoRangeArray> copy() const;
    /// mutableCopy: a new VeltoMutableRangeArray with the same capacity, ranges and count.
    [[nodiscard]] virtual std::shared_ptr<VeltoMutableRangeArray> mutableCopy() const;

    /// capacity: how many ranges the buffer holds before it must grow.
    [[nodiscard]] quint64 capacity() const { return m_capacity; }
    [[nodiscard]] quint64 count() const override { return m_count; }
    [[nodiscard]] VeltoRange rangeAtIndex(quint64 index) const override;
    /// getRanges: one memory copy; an empty index range does nothing, one beyond count() throws.
    void getRanges(VeltoRange *buffer, VeltoRange indexRange) const override;
    /// accessRangeBufferUsing: calls \a block with the internal buffer itself.
    void accessRangeBufferUsing(const RangeBufferBlock &block) const override;

    void addRange(VeltoRange range) override;
    /**
     * insertRange: makes room at \a index (an index > count() throws with (index, count + 1)) and stores
     * \a range. Growth: when the buffer is full the capacity becomes max(count + 1, 2 × capacity).
     */
    void insertRange(VeltoRange range, quint64 index) override;
    /**
     * insertRangesFromArray: inserts all of \a other's ranges at \a index, growing to
     * max(count + n, 2 × capacity) when needed; an empty \a other does nothing.
     */
    void insertRangesFromArray(const VeltoAbstractRangeArray &other, quint64 index);
    void replaceRangeAtIndex(quint64 index, VeltoRange range) override;
    /**
     * adjustRangesForEditInRange: adjusts the ranges in the buffer itself. The first range that changes
     * still goes through replaceRangeAtIndex(), so the immutable kind refuses the edit before anything
     * changed.
     */
    bool adjustRangesForEditInRange(VeltoRange editRange, quint64 delta) override;
    void removeRangeAtIndex(quint64 index) override;
    void removeObjectsInRange(VeltoRange indexRange) override;
    /// removeAllObjects: count becomes 0; the buffer and its capacity are kept.
    void removeAllObjects() override;

    /**
     * normalizeRanges: brings the array into normal form in place: sorted by location, no empty range,
     * no two ranges overlapping or touching (touching ranges join). Fewer than 2 ranges are left as they
     * are, and an array whose ranges are all empty keeps its first range: a normalised non-empty array
     * never becomes empty. Sorted input takes one pass; other input is sorted in place first.
     */
    virtual void normalizeRanges();

    /**
     * subarrayWithRange: the ranges at \a indexRange as a new VeltoRangeArray; an empty index range gives
     * the shared empty VeltoRangeArray; otherwise bounds are checked as by removeObjectsInRange().
     */
    [[nodiscard]] virtual std::shared_ptr<const VeltoRangeArray> subarrayWithRange(VeltoRange indexRange) const;

protected:
    /// Takes ownership of \a buffer, a malloc'ed block of \a capacity ranges of which \a count are in use.
    VeltoMutableRangeArray(VeltoRange *buffer, quint64 capacity, quint64 count) noexcept;

    /// adopt: allocates a buffer for \a capacity ranges (0 counts as 1) and makes an Array on it, or null.
    template <typename Array>
    [[nodiscard]] static std::shared_ptr<Array> adopt(quint64 capacity, const VeltoRange *ranges, quint64 count);
    /// adoptCopy: an Array holding \a other's ranges, capacity = their count.
    template <typename Array>
    [[nodiscard]] static std::shared_ptr<Array> adoptCopy(const VeltoAbstractRangeArray &other);

private:
    /// makeRoom: opens \a n places at \a index, growing the buffer by the growth rule.
    void makeRoom(quint64 n, quint64 index);

    quint64 m_count;
    quint64 m_capacity;
    VeltoRange *m_data;
};

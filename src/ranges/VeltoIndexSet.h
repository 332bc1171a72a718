// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoIndexSet.h
 * \brief VeltoIndexSet: a set of unsigned indexes kept as sorted runs of consecutive indexes, for rows,
 * columns and bit positions; with conversions from lists of numbers, arrays of ranges and bit flags.
 *
 * Qt has no such type. Storage is one run per stretch of consecutive indexes, so {0 … 9999} costs what
 * {5} costs; lookups are binary searches over the runs.
 *
 * \code
 * VeltoIndexSet rows;
 * rows.addIndexesInRange({2, 3});                       // {2, 3, 4}
 * rows.addIndex(8);                                     // {2, 3, 4, 8}
 * rows.indexRangeStartingAtOrAfterIndex(3);             // (3, 2)
 * rows.shiftIndexesStartingAtIndex(4, -1);              // {2, 3, 7}: index 3 is deleted, 4 moves to 3
 * \endcode
 *
 * Indexes run from 0 to VeltoNotFound − 1; adding beyond throws VeltoException named VeltoRangeException.
 * A value type, cheap to copy (implicitly shared).
 */

#include "veltocore_export.h"

#include "VeltoRange.h"

#include <QList>
#include <QSharedDataPointer>
#include <QString>
#include <QVariantList>

#include <optional>

class VeltoAbstractRangeArray;

/// \brief VeltoIndexSet: a sorted run-length set of indexes.
class VELTOCORE_EXPORT VeltoIndexSet
{
public:
    /// An empty set.
    VeltoIndexSet();
    /// The set of one index.
    explicit VeltoIndexSet(quint64 index);
    /// The set of every index of \a indexes (empty for an empty range).
    explicit VeltoIndexSet(VeltoRange indexes);
    VeltoIndexSet(const VeltoIndexSet &other);
    VeltoIndexSet &operator=(const VeltoIndexSet &other);
    ~VeltoIndexSet();

    /**
     * indexSetWithNumberArray: the set of the unsigned integer values of \a numbers (numbers or strings
     * of digits); empty for an empty list. A value that is not an unsigned integer throws
     * VeltoException named VeltoInvalidArgumentException.
     */
    [[nodiscard]] static VeltoIndexSet indexSetWithNumberArray(const QVariantList &numbers);
    /// indexSetWithRangeArray: every index of every range of \a ranges (any kind); empty for none.
    [[nodiscard]] static VeltoIndexSet indexSetWithRangeArray(const VeltoAbstractRangeArray &ranges);

    /// count: the number of indexes.
    [[nodiscard]] quint64 count() const;
    [[nodiscard]] bool isEmpty() const;
    /// firstIndex, lastIndex: the smallest and largest index; VeltoNotFound when empty.
    [[nodiscard]] quint64 firstIndex() const;
    [[nodiscard]] quint64 lastIndex() const;
    /// The nearest member above, at or above, below, at or below \a index; VeltoNotFound when there is none.
    [[nodiscard]] quint64 indexGreaterThanIndex(quint64 index) const;
    [[nodiscard]] quint64 indexGreaterThanOrEqualToIndex(quint64 index) const;
    [[nodiscard]] quint64 indexLessThanIndex(quint64 index) const;
    [[nodiscard]] quint64 indexLessThanOrEqualToIndex(quint64 index) const;

    [[nodiscard]] bool containsIndex(quint64 index) const;
    /// containsIndexesInRange: whether every index of \a indexes is a member (false for an empty range).
    [[nodiscard]] bool containsIndexesInRange(VeltoRange indexes) const;
    /// containsIndexes: whether every member of \a other is a member (true for an empty \a other).
    [[nodiscard]] bool containsIndexes(const VeltoIndexSet &other) const;
    /// intersectsIndexesInRange: whether some index of \a indexes is a member.
    [[nodiscard]] bool intersectsIndexesInRange(VeltoRange indexes) const;
    /// countOfIndexesInRange: how many indexes of \a indexes are members.
    [[nodiscard]] quint64 countOfIndexesInRange(VeltoRange indexes) const;

    /**
     * indexRangeStartingAtOrAfterIndex: the run of consecutive members that begins at the first member at
     * or after \a index, as (that member, run length); (VeltoNotFound, 0) when there is no such member.
     */
    [[nodiscard]] VeltoRange indexRangeStartingAtOrAfterIndex(quint64 index) const;

    /// ranges: the runs in ascending order, none empty, none touching another.
    [[nodiscard]] QList<VeltoRange> ranges() const;
    /// indexes: every member in ascending order.
    [[nodiscard]] QList<quint64> indexes() const;

    void addIndex(quint64 index);
    void addIndexesInRange(VeltoRange indexes);
    void addIndexes(const VeltoIndexSet &other);
    void removeIndex(quint64 index);
    void removeIndexesInRange(VeltoRange indexes);
    void removeIndexes(const VeltoIndexSet &other);
    void removeAllIndexes();
    /**
     * shiftIndexesStartingAtIndex: moves every member ≥ \a index by \a delta. Moving down deletes the
     * members in the \a delta indexes below \a index that the moved ones land on (down to 0 at most).
     */
    void shiftIndexesStartingAtIndex(quint64 index, qint64 delta);

    bool operator==(const VeltoIndexSet &other) const;
    /// description: the runs, "(2-4, 8)"; "()" when empty.
    [[nodiscard]] QString description() const;

private:
    class Private;
    QSharedDataPointer<Private> d;
};

/**
 * VeltoIndexesForBitFlags: the bit positions of \a flags; nothing for 0.
 *
 * For each position p from 0 to 63 in order, the mask is the 32-bit 1 << (p mod 32) sign-extended to 64
 * bits; when it shares a bit with \a flags, p is added and the mask joins an accumulator, and the walk
 * ends as soon as the accumulator equals \a flags. So flags within bits 0 to 30 give exactly their
 * positions, while bit 31's mask covers bits 31 to 63: any flag from 31 up adds 31 (and later positions
 * whose low-bit masks match again), and 1 << 32 gives {31, 63}.
 */
[[nodiscard]] VELTOCORE_EXPORT std::optional<VeltoIndexSet> VeltoIndexesForBitFlags(quint64 flags);

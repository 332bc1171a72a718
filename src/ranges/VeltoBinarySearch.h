// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoBinarySearch.h
 * \brief VeltoIndexOfBinarySearch: the one binary search behind every sorted collection of the library
 * (sorted lists, range arrays, the spatial array's points).
 *
 * The search knows nothing about the collection: it asks a comparison for an index and gets the order
 * of the sought value against the element there. Between equal elements it always answers the first
 * of the run, so a sorted insertion places a new element in front of its equals.
 *
 * \code
 * const QList<int> sorted{1, 3, 3, 3, 7};
 * quint64 insertAt = 0;
 * const quint64 found = VeltoIndexOfBinarySearch(sorted.size(), &insertAt, [&](quint64 i) {
 *     return qint64(4 < sorted[i] ? -1 : sorted[i] < 4 ? 1 : 0);
 * });                                         // found = VeltoNotFound, insertAt = 4
 * \endcode
 *
 * For lists, List+VeltoCore.h wraps this in indexOfSortedObjectVelto() and its companions.
 */

#include "VeltoRange.h"

#include <QtGlobal>

/**
 * VeltoIndexOfBinarySearch: the index of the first element equal to the sought value among \a count
 * sorted elements, or VeltoNotFound.
 *
 * \a compare(index) answers the order of the sought value against the element at index: -1 when the
 * sought value sorts before it, 1 when after; any other answer, 0 included, counts as equal. Without a
 * match, \a insertionIndex (when given) receives the first position whose element sorts after the
 * sought value (0 for no elements, \a count when every element sorts before); after a match it is left
 * as it was. From a match the search walks down to the first of the run while the element below
 * answers exactly 0.
 */
template <typename Compare>
[[nodiscard]] quint64 VeltoIndexOfBinarySearch(quint64 count, quint64 *insertionIndex, Compare &&compare)
{
    quint64 low = 0;
    if (count != 0) {
        quint64 high = count - 1;
        for (;;) {
            const quint64 half = (high - low) / 2;
            const quint64 middle = low + half;
            const qint64 order = compare(middle);
            if (order == 1) {
                low = middle + 1;
                if (high == middle)
                    break;
            } else if (order == -1) {
                if (half == 0) {
                    low = middle;
                    break;
                }
                high = middle - 1;
            } else {
                // A match: the elements below low all sort before the sought value, so the run of
                // equals begins at or above it.
                // The walk down takes only an answer of exactly 0 as equal.
                quint64 first = middle;
                while (first > low && compare(first - 1) == 0)
                    --first;
                return first;
            }
        }
    }
    if (insertionIndex)
        *insertionIndex = low;
    return VeltoNotFound;
}

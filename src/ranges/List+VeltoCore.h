// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file List+VeltoCore.h
 * \brief Additions to QList: search, insertion and removal in lists kept sorted by a comparison, and a
 * few conveniences beside them (moving, reversing, shuffling, tests and reverse enumeration).
 *
 * A comparison is a callable (sought, element) answering -1 when the sought object sorts before the
 * element, 1 when after, anything else for equal. For lists of QObjects it may instead be a method of
 * the sought object named by its selector ("compareItem"), a slot or Q_INVOKABLE taking one pointer
 * to the element's class and answering an integer (int, long or long long).
 *
 * \code
 * QList<int> sorted{1, 3, 3, 3, 7};
 * const auto byValue = [](int a, int b) { return qint64(a < b ? -1 : a > b ? 1 : 0); };
 * velto::indexOfSortedObjectVelto(sorted, 3, byValue);   // 1, the first of the equal run
 * velto::insertSortedObjectVelto(sorted, 4, byValue);    // 4
 * velto::removeSortedObjectVelto(sorted, 3, byValue);    // true; sorted is {1, 4, 7}
 * \endcode
 *
 * Between equal elements every search answers, and every insertion goes in front of, the first of the
 * run. Indexes out of bounds throw VeltoException named VeltoRangeException; a selector the sought
 * object does not answer throws VeltoInvalidArgumentException.
 */

#include "veltocore_export.h"

#include "Variant+VeltoRanges.h"
#include "VeltoBinarySearch.h"
#include "VeltoCollection.h"
#include "VeltoRandom.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>
#include <utility>

namespace velto {

namespace internal {
/// Throws VeltoRangeException "*** index %1 beyond bounds [0 .. %2]" (or "... for empty array").
[[noreturn]] VELTOCORE_EXPORT void throwIndexBeyondBounds(quint64 index, quint64 count);
/**
 * The answer of \a receiver's method named \a selector called with \a argument, read as an integer
 * (velto::intForPerformSelector); throws VeltoInvalidArgumentException when the receiver lacks the method.
 */
[[nodiscard]] VELTOCORE_EXPORT qint64 intForPerformSelector(QObject *receiver, const char *selector, QObject *argument);

inline void checkIndex(quint64 index, qsizetype count)
{
    if (index >= quint64(count))
        throwIndexBeyondBounds(index, quint64(count));
}

template <typename T>
auto selectorComparison(const char *selector)
{
    return [selector](T *sought, T *element) { return intForPerformSelector(sought, selector, element); };
}
} // namespace internal

/// A test of (element, index, stop flag); setting *stop ends the walk after this call.
template <typename T>
using ListTest = std::function<bool(const T &object, quint64 index, bool *stop)>;
/// A block of (element, index, stop flag).
template <typename T>
using ListBlock = std::function<void(const T &object, quint64 index, bool *stop)>;

/**
 * indexOfSortedObjectVelto: the index of the first element equal to \a sought in \a list sorted by
 * \a compare, or VeltoNotFound; without a match, \a insertionIndex (when given) receives the first
 * position whose element sorts after \a sought.
 */
template <typename T, typename Compare>
[[nodiscard]] quint64 indexOfSortedObjectVelto(const QList<T> &list, const T &sought, Compare &&compare,
                                               quint64 *insertionIndex = nullptr)
{
    return VeltoIndexOfBinarySearch(quint64(list.size()), insertionIndex,
                                    [&](quint64 i) { return qint64(compare(sought, list.at(qsizetype(i)))); });
}

/// indexOfSortedObjectVeltoWithCompareSelector: indexOfSortedObjectVelto() comparing with \a sought's method \a selector.
template <typename T>
[[nodiscard]] quint64 indexOfSortedObjectVeltoWithCompareSelector(const QList<T *> &list, T *sought, const char *selector)
{
    return indexOfSortedObjectVelto(list, sought, internal::selectorComparison<T>(selector));
}

/// insertionIndexOfSortedObjectVelto: the index of the first equal element, else the insertion index.
template <typename T, typename Compare>
[[nodiscard]] quint64 insertionIndexOfSortedObjectVelto(const QList<T> &list, const T &sought, Compare &&compare)
{
    quint64 insertion = 0;
    const quint64 found = indexOfSortedObjectVelto(list, sought, compare, &insertion);
    return found != VeltoNotFound ? found : insertion;
}

/**
 * nearestIndexOfSortedObjectVelto: the first element not sorting before \a sought: the first equal one,
 * else the insertion index when it is inside the list, else VeltoNotFound.
 */
template <typename T, typename Compare>
[[nodiscard]] quint64 nearestIndexOfSortedObjectVelto(const QList<T> &list, const T &sought, Compare &&compare)
{
    const quint64 index = insertionIndexOfSortedObjectVelto(list, sought, compare);
    return index < quint64(list.size()) ? index : VeltoNotFound;
}

/// nearestIndexOfSortedObjectVeltoWithCompareSelector: nearestIndexOfSortedObjectVelto() by \a sought's method \a selector.
template <typename T>
[[nodiscard]] quint64 nearestIndexOfSortedObjectVeltoWithCompareSelector(const QList<T *> &list, T *sought,
                                                                         const char *selector)
{
    return nearestIndexOfSortedObjectVelto(list, sought, internal::selectorComparison<T>(selector));
}

/**
 * isSortedInRangeVelto: false as soon as an adjacent pair (previous, next) within \a indexRange compares 1,
 * else true. The element at the range's location is read even when the range is empty, so that location
 * must be an index of the list.
 */
template <typename T, typename Compare>
[[nodiscard]] bool isSortedInRangeVelto(const QList<T> &list, VeltoRange indexRange, Compare &&compare)
{
    internal::checkIndex(indexRange.location, list.size());
    if (indexRange.length != 0)
        internal::checkIndex(indexRange.end() - 1, list.size());
    const T *previous = &list.at(qsizetype(indexRange.location));
    for (quint64 i = indexRange.location + 1; i < indexRange.end(); ++i) {
        const T *next = &list.at(qsizetype(i));
        if (qint64(compare(*previous, *next)) == 1)
            return false;
        previous = next;
    }
    return true;
}

/**
 * indexOfObjectVelto: a linear scan for the first element for which \a sought's method \a selector
 * answers 0; VeltoNotFound otherwise (also for an empty list). The list need not be sorted.
 */
template <typename T>
[[nodiscard]] quint64 indexOfObjectVelto(const QList<T *> &list, T *sought, const char *selector)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (internal::intForPerformSelector(sought, selector, list.at(i)) == 0)
            return quint64(i);
    }
    return VeltoNotFound;
}

/// containsObjectIdenticalToVelto: whether \a object itself (the same address) is an element.
template <typename T>
[[nodiscard]] bool containsObjectIdenticalToVelto(const QList<T *> &list, const T *object)
{
    return std::find(list.cbegin(), list.cend(), object) != list.cend();
}

/**
 * arrayByAddingObjectVelto: \a array with \a object appended; a nil object (nullptr, an invalid QVariant)
 * gives \a array unchanged. An empty \a array stands for a missing one.
 */
template <typename T>
[[nodiscard]] QList<T> arrayByAddingObjectVelto(const T &object, const QList<T> &array)
{
    if (isNilVelto(object))
        return array;
    QList<T> added = array;
    added.append(object);
    return added;
}

/// arrayByRemovingObjectVelto: \a list without the first element equal to \a object; \a list itself when there is none.
template <typename T>
[[nodiscard]] QList<T> arrayByRemovingObjectVelto(const QList<T> &list, const T &object)
{
    const qsizetype index = isNilVelto(object) ? -1 : list.indexOf(object);
    if (index < 0)
        return list;
    QList<T> removed = list;
    removed.removeAt(index);
    return removed;
}

/**
 * arrayByMovingObjects: a new list in which \a objects stand together at \a destination: walking the
 * list's indexes, all of \a objects are appended when the walk reaches \a destination, and every element
 * not among \a objects is appended in turn. A destination ≥ the list's size puts them at the end.
 */
template <typename T>
[[nodiscard]] QList<T> arrayByMovingObjects(const QList<T> &list, const QList<T> &objects, quint64 destination)
{
    QList<T> moved;
    moved.reserve(list.size() + objects.size());
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (quint64(i) == destination)
            moved.append(objects);
        if (!objects.contains(list.at(i)))
            moved.append(list.at(i));
    }
    if (destination >= quint64(list.size()))
        moved.append(objects);
    return moved;
}

/// subarrayWithObjectsPassingTestVelto: the elements for which \a test answers true, in order.
template <typename T>
[[nodiscard]] QList<T> subarrayWithObjectsPassingTestVelto(const QList<T> &list, const ListTest<T> &test)
{
    QList<T> passing;
    bool stop = false;
    for (qsizetype i = 0; i < list.size() && !stop; ++i) {
        if (test(list.at(i), quint64(i), &stop))
            passing.append(list.at(i));
    }
    return passing;
}

/**
 * indexOfLastObjectPassingTestVelto: walking from the last index down, the first index where \a test
 * answers true; VeltoNotFound when none passes or when the test sets its stop flag (even on the call
 * that answered true).
 */
template <typename T>
[[nodiscard]] quint64 indexOfLastObjectPassingTestVelto(const QList<T> &list, const ListTest<T> &test)
{
    for (qsizetype i = list.size() - 1; i >= 0; --i) {
        bool stop = false;
        const bool passed = test(list.at(i), quint64(i), &stop);
        if (stop)
            return VeltoNotFound;
        if (passed)
            return quint64(i);
    }
    return VeltoNotFound;
}

/// firstObjectPassingTestVelto: the first element for which \a test answers true, or nothing.
template <typename T>
[[nodiscard]] std::optional<T> firstObjectPassingTestVelto(const QList<T> &list, const ListTest<T> &test)
{
    bool stop = false;
    for (qsizetype i = 0; i < list.size() && !stop; ++i) {
        if (test(list.at(i), quint64(i), &stop))
            return list.at(i);
    }
    return std::nullopt;
}

/// lastObjectPassingTestVelto: the element at indexOfLastObjectPassingTestVelto(), or nothing.
template <typename T>
[[nodiscard]] std::optional<T> lastObjectPassingTestVelto(const QList<T> &list, const ListTest<T> &test)
{
    const quint64 index = indexOfLastObjectPassingTestVelto(list, test);
    return index == VeltoNotFound ? std::nullopt : std::optional<T>(list.at(qsizetype(index)));
}

/// enumerateObjectsInReverseVeltoUsing: calls \a block from the last index down to 0, stopping after the call that sets the flag.
template <typename T>
void enumerateObjectsInReverseVeltoUsing(const QList<T> &list, const ListBlock<T> &block)
{
    bool stop = false;
    for (qsizetype i = list.size() - 1; i >= 0 && !stop; --i)
        block(list.at(i), quint64(i), &stop);
}

/// enumerateObjectsInReverseVelto: the reverse enumeration when \a reverse is true, else the forward one.
template <typename T>
void enumerateObjectsInReverseVelto(const QList<T> &list, bool reverse, const ListBlock<T> &block)
{
    if (reverse) {
        enumerateObjectsInReverseVeltoUsing(list, block);
        return;
    }
    bool stop = false;
    for (qsizetype i = 0; i < list.size() && !stop; ++i)
        block(list.at(i), quint64(i), &stop);
}

/// allObjects: the list itself.
template <typename T>
[[nodiscard]] const QList<T> &allObjects(const QList<T> &list)
{
    return list;
}

/// rangeAtIndex: the range boxed at \a index of a list of boxed ranges (see Variant+VeltoRanges.h).
[[nodiscard]] inline VeltoRange rangeAtIndex(const QVariantList &list, quint64 index)
{
    internal::checkIndex(index, list.size());
    return rangeValue(list.at(qsizetype(index)));
}

/**
 * enumerateRangesVeltoUsing: calls \a block with each boxed range of \a list and its index, in order;
 * true when it ran to the end (also for an empty list), false when the block stopped it.
 */
inline bool enumerateRangesVeltoUsing(const QVariantList &list,
                                      const std::function<void(VeltoRange range, quint64 index, bool *stop)> &block)
{
    bool stop = false;
    for (qsizetype i = 0; i < list.size(); ++i) {
        block(rangeValue(list.at(i)), quint64(i), &stop);
        if (stop)
            return false;
    }
    return true;
}

/**
 * insertSortedObjectVelto: inserts \a object into \a list sorted by \a compare, in front of any equal
 * elements, and answers the index it went to.
 */
template <typename T, typename Compare>
quint64 insertSortedObjectVelto(QList<T> &list, const T &object, Compare &&compare)
{
    const quint64 index = insertionIndexOfSortedObjectVelto(list, object, compare);
    list.insert(qsizetype(index), object);
    return index;
}

/// insertSortedObjectVeltoWithCompareSelector: insertSortedObjectVelto() by \a object's method \a selector.
template <typename T>
quint64 insertSortedObjectVeltoWithCompareSelector(QList<T *> &list, T *object, const char *selector)
{
    return insertSortedObjectVelto(list, object, internal::selectorComparison<T>(selector));
}

/**
 * removeSortedObjectVelto: removes the whole run of elements equal to \a object from \a list sorted by
 * \a compare; false when there is none. \a object may be an element of the list itself.
 */
template <typename T, typename Compare>
bool removeSortedObjectVelto(QList<T> &list, const T &object, Compare &&compare)
{
    const T sought = object; // stays valid while its equals, perhaps itself, leave the list
    const quint64 index = indexOfSortedObjectVelto(list, sought, compare);
    if (index == VeltoNotFound)
        return false;
    const auto at = qsizetype(index);
    do {
        list.removeAt(at);
    } while (at < list.size() && qint64(compare(sought, list.at(at))) == 0);
    return true;
}

/// removeSortedObjectVeltoWithCompareSelector: removeSortedObjectVelto() by \a object's method \a selector.
template <typename T>
bool removeSortedObjectVeltoWithCompareSelector(QList<T *> &list, T *object, const char *selector)
{
    return removeSortedObjectVelto(list, object, internal::selectorComparison<T>(selector));
}

/// initWithSingleObject: a list of \a count copies of \a object.
template <typename T>
[[nodiscard]] QList<T> initWithSingleObject(const T &object, quint64 count)
{
    return QList<T>(qsizetype(count), object);
}

/**
 * moveObjectAtIndex: moves the element at \a from so that it ends at \a destination (an index of the
 * list after the removal); nothing when they are equal.
 */
template <typename T>
void moveObjectAtIndex(QList<T> &list, quint64 from, quint64 destination)
{
    if (from == destination)
        return;
    internal::checkIndex(from, list.size());
    internal::checkIndex(destination, list.size());
    T object = list.takeAt(qsizetype(from));
    list.insert(qsizetype(destination), std::move(object));
}

/**
 * randomizeVelto: shuffles \a list: each index i in turn is exchanged with a random index from i to the
 * last, drawn with VeltoRandom_UIntegerBetween() (seed it for a repeatable order).
 */
template <typename T>
void randomizeVelto(QList<T> &list)
{
    const quint64 n = quint64(list.size());
    for (quint64 i = 0; i < n; ++i)
        list.swapItemsAt(qsizetype(i), qsizetype(VeltoRandom_UIntegerBetween(i, n - 1)));
}

/// reverseVelto: reverses \a list in place.
template <typename T>
void reverseVelto(QList<T> &list)
{
    const qsizetype n = list.size();
    for (qsizetype k = 0; k < n / 2; ++k)
        list.swapItemsAt(k, n - 1 - k);
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDirectArray.h
 * \brief VeltoDirectArray: a fixed-capacity array of QVariants with no bounds or capacity checks,
 * exposing its buffer for direct reads in the inner loops of layout code.
 *
 * The capacity is fixed at creation and never checked: create it large enough for everything that will
 * be added. Builds with assertions (Debug) check additions against the capacity; release builds do not.
 *
 * \code
 * auto names = VeltoDirectArray::initWithCapacity(3);
 * names->addObject(u"beta"_s);
 * names->addObject(u"Alpha"_s);
 * names->sortLiteralStringsInRange({0, 2});              // "Alpha", "beta"
 * \endcode
 */

#include "veltocore_export.h"

#include "VeltoRange.h"

#include <QVariant>
#include <QVariantList>

#include <memory>

/// \brief VeltoDirectArray: count elements in a buffer of capacity QVariants.
class VELTOCORE_EXPORT VeltoDirectArray
{
public:
    /// initWithCapacity: room for max(\a capacity, 1) elements, all null; null when the memory cannot be had.
    [[nodiscard]] static std::unique_ptr<VeltoDirectArray> initWithCapacity(quint64 capacity);
    /// Releases the elements, last first.
    ~VeltoDirectArray();
    VeltoDirectArray(const VeltoDirectArray &) = delete;
    VeltoDirectArray &operator=(const VeltoDirectArray &) = delete;

    [[nodiscard]] quint64 count() const { return m_count; }
    [[nodiscard]] quint64 capacity() const { return m_capacity; }
    /// objectAtIndex: the element at \a index; not checked.
    [[nodiscard]] const QVariant &objectAtIndex(quint64 index) const { return m_buffer[index]; }
    /**
     * bufferForObjectRangeVelto: a pointer to the element at \a range's location and, when \a boundsEnd is
     * given, the pointer one past the range's end. Not checked.
     */
    [[nodiscard]] QVariant *bufferForObjectRangeVelto(VeltoRange range, QVariant **boundsEnd = nullptr);
    /// getObjects: copies the elements at \a range into \a objects; not checked.
    void getObjects(QVariant *objects, VeltoRange range) const;
    /// addObject: stores \a object at count() and counts it; no capacity check, no growth.
    void addObject(const QVariant &object);
    /// addObjectsFromArray: appends every element of \a objects; no capacity check, no growth.
    void addObjectsFromArray(const QVariantList &objects);

    /// isEqual: equal counts and, element by element, equal values (same for the spelled-out form).
    [[nodiscard]] bool isEqual(const VeltoDirectArray &other) const;
    [[nodiscard]] bool isEqualToVeltoDirectArray(const VeltoDirectArray &other) const { return isEqual(other); }
    /// isEqual: the elements compared with a list, as two lists compare.
    [[nodiscard]] bool isEqual(const QVariantList &objects) const;

    /**
     * sortLiteralStringsInRange: sorts the string elements at \a range in place by their UTF-16 code
     * units (case-sensitive, no locale); not checked.
     */
    void sortLiteralStringsInRange(VeltoRange range);

private:
    VeltoDirectArray(QVariant *buffer, quint64 capacity) noexcept;

    QVariant *m_buffer;
    quint64 m_capacity;
    quint64 m_count = 0;
};

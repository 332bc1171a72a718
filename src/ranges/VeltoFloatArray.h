// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFloatArray.h
 * \brief VeltoFloatArray: a fixed-length buffer of doubles for layout and measuring code, with bounds
 * checks, sums and boxed access; VeltoFloatVector is its growable kind.
 *
 * \code
 * auto widths = VeltoFloatArray::initWithCapacity(3);   // three zeros
 * widths->replaceFloatAtIndex(0, 12.5);
 * widths->addFloatToFloatAtIndex(2.0f, 0);              // 14.5
 * widths->sumFloats();                                   // 14.5
 * \endcode
 *
 * The initialisers answer null when there is nothing to allocate (a count of 0) or the memory cannot be
 * had. An index out of bounds throws VeltoException named VeltoRangeException, "VeltoFloatArray<0x…>
 * index out of bounds (index=3, count=3) during floatAtIndex"; for an index range the offending index
 * is location + length − 1. Not thread-safe.
 */

#include "veltocore_export.h"

#include "VeltoRange.h"

#include <QString>
#include <QVariant>

#include <memory>

/// \brief VeltoFloatArray: count doubles in one owned buffer.
class VELTOCORE_EXPORT VeltoFloatArray
{
public:
    /**
     * initWithFloats: an array of \a count doubles, copied from \a floats when given, zeros otherwise.
     * Null for a count of 0 or when the memory cannot be had.
     */
    [[nodiscard]] static std::unique_ptr<VeltoFloatArray> initWithFloats(const double *floats, quint64 count);
    /// initWithCapacity: initWithFloats() with no source: \a capacity zeros.
    [[nodiscard]] static std::unique_ptr<VeltoFloatArray> initWithCapacity(quint64 capacity);

    virtual ~VeltoFloatArray();
    VeltoFloatArray(const VeltoFloatArray &) = delete;
    VeltoFloatArray &operator=(const VeltoFloatArray &) = delete;

    /// copy: a new VeltoFloatArray (never a vector) with the same values.
    [[nodiscard]] std::unique_ptr<VeltoFloatArray> copy() const;

    [[nodiscard]] quint64 count() const { return m_count; }
    /// capacity: how many doubles the buffer holds.
    [[nodiscard]] quint64 capacity() const { return m_capacity; }
    /// floatBuffer: the buffer itself, for reading and writing in place.
    [[nodiscard]] double *floatBuffer() { return m_floats; }
    [[nodiscard]] const double *floatBuffer() const { return m_floats; }

    [[nodiscard]] double floatAtIndex(quint64 index) const;
    /// getFloats: copies the doubles at \a range into \a buffer; an empty range does nothing.
    void getFloats(double *buffer, VeltoRange range) const;
    /// setFloat: stores a single-precision value, widened to double.
    void setFloat(float value, quint64 index);
    /// addFloatToFloatAtIndex: adds a single-precision value, widened, to the one stored.
    void addFloatToFloatAtIndex(float value, quint64 index);
    /// replaceFloatAtIndex: stores a double-precision value.
    void replaceFloatAtIndex(quint64 index, double value);
    /// replaceFloatsInRange: copies doubles from \a floats over \a range; an empty range does nothing.
    void replaceFloatsInRange(VeltoRange range, const double *floats);
    /// sumFloats, sumFloatsInRange: the plain left-to-right sum; 0 for an empty range.
    [[nodiscard]] double sumFloats() const;
    [[nodiscard]] double sumFloatsInRange(VeltoRange range) const;

    /// objectAtIndex: the value as a QVariant holding a double.
    [[nodiscard]] QVariant objectAtIndex(quint64 index) const;
    /// replaceObjectAtIndex: stores \a value converted to a double.
    void replaceObjectAtIndex(quint64 index, const QVariant &value);

    /**
     * isEqual: the same object is equal; another float array when the counts match and the buffers are
     * byte for byte the same (0 and −0 differ, a NaN equals itself).
     */
    [[nodiscard]] bool isEqual(const VeltoFloatArray &other) const;
    /// isEqual: equal counts and, index by index, numerically equal values (a NaN equals nothing).
    [[nodiscard]] bool isEqual(const QVariantList &values) const;

    /// description: "VeltoFloatArray <0x…> \n" followed by "   %f, \n" for each value.
    [[nodiscard]] QString description() const;

protected:
    /// Takes ownership of \a floats, a malloc'ed buffer of \a capacity doubles of which \a count are in use.
    VeltoFloatArray(double *floats, quint64 count, quint64 capacity) noexcept;
    /// allocateZeros: a zeroed buffer of \a count doubles copied from \a source when given, or null.
    [[nodiscard]] static double *allocateZeros(const double *source, quint64 count);
    /// checkIndex: throws the out-of-bounds exception for \a index in \a operation.
    void checkIndex(quint64 index, const char *operation) const;
    void checkRange(VeltoRange range, const char *operation) const;

    quint64 m_count;
    quint64 m_capacity;
    double *m_floats;
};

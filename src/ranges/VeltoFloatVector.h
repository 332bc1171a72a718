// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFloatVector.h
 * \brief VeltoFloatVector: a VeltoFloatArray that grows, doubling its capacity when full.
 *
 * \code
 * auto offsets = VeltoFloatVector::initWithCapacity(2);  // count 0, capacity 2
 * offsets->addFloat(0);
 * offsets->addFloat(12.5);
 * offsets->addFloat(30);                                  // capacity 4
 * \endcode
 */

#include "VeltoFloatArray.h"

/// \brief VeltoFloatVector: a growable buffer of doubles.
class VELTOCORE_EXPORT VeltoFloatVector : public VeltoFloatArray
{
public:
    /**
     * initWithFloats: capacity \a count; the count is \a count when \a floats is given, else 0. Null for
     * a count of 0 or when the memory cannot be had.
     */
    [[nodiscard]] static std::unique_ptr<VeltoFloatVector> initWithFloats(const double *floats, quint64 count);
    /// initWithCapacity: an empty vector with room for \a capacity doubles (null for 0).
    [[nodiscard]] static std::unique_ptr<VeltoFloatVector> initWithCapacity(quint64 capacity);

    /// addFloat: appends \a value.
    void addFloat(double value);
    /**
     * insertFloat: inserts \a value at \a index, doubling the capacity when the vector is full. The index
     * is not checked: it must be at most count().
     * \throws VeltoException named VeltoMallocException when the buffer cannot grow.
     */
    void insertFloat(double value, quint64 index);
    /// removeFloatAtIndex: removes the value at \a index, moving the tail down.
    void removeFloatAtIndex(quint64 index);
    /// removeAllFloats: count becomes 0; the capacity is kept.
    void removeAllFloats();

private:
    using VeltoFloatArray::VeltoFloatArray;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoBoxedRangeArray.h
 * \brief VeltoBoxedRangeArray: an array of ranges boxed one by one in QVariants, behind the same
 * interface as the compact VeltoMutableRangeArray.
 *
 * Use it where ranges arrive in, or must leave as, a QVariantList (property lists, item-model data);
 * for range-heavy work prefer VeltoMutableRangeArray, which keeps them unboxed in one buffer.
 *
 * \code
 * VeltoBoxedRangeArray found({velto::valueWithRange({0, 2}), velto::valueWithRange({2, 3})});
 * found.isNormalizedRangeArray();             // false: the two ranges touch
 * \endcode
 */

#include "VeltoAbstractRangeArray.h"

#include <QVariantList>

/**
 * \brief VeltoBoxedRangeArray: a QVariantList of boxed VeltoRange values.
 *
 * An index out of bounds throws VeltoException named VeltoRangeException; an element that is not a
 * boxed range throws VeltoInvalidArgumentException when it is read as a range.
 */
class VELTOCORE_EXPORT VeltoBoxedRangeArray final : public VeltoAbstractRangeArray
{
public:
    /// Makes an array of the given boxed ranges (see velto::valueWithRange()).
    explicit VeltoBoxedRangeArray(const QVariantList &boxedRanges = {});
    ~VeltoBoxedRangeArray() override;

    /// boxedRanges: the elements as they are stored.
    [[nodiscard]] QVariantList boxedRanges() const { return m_values; }

    [[nodiscard]] quint64 count() const override { return quint64(m_values.size()); }
    [[nodiscard]] VeltoRange rangeAtIndex(quint64 index) const override;
    void insertRange(VeltoRange range, quint64 index) override;
    void replaceRangeAtIndex(quint64 index, VeltoRange range) override;
    void removeRangeAtIndex(quint64 index) override;
    void removeObjectsInRange(VeltoRange indexRange) override;
    void removeAllObjects() override;

private:
    QVariantList m_values;
};

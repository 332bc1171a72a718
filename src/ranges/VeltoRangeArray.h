// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoRangeArray.h
 * \brief VeltoRangeArray: the immutable kind of the compact range array.
 *
 * It derives from VeltoMutableRangeArray and refuses the mutating primitives addRange(),
 * replaceRangeAtIndex(), insertRange(), removeRangeAtIndex(), removeObjectsInRange() and
 * normalizeRanges() (and so the boxed-object mutators and the operations built on them) with
 * VeltoException named VeltoInternalInconsistencyException, "Attempt to modify immutable
 * VeltoRangeArray via addRange". removeAllObjects() and insertRangesFromArray() are not refused and do
 * modify it: callers that share a VeltoRangeArray hold it as std::shared_ptr<const VeltoRangeArray>.
 */

#include "VeltoMutableRangeArray.h"

/// \brief VeltoRangeArray: a compact range array whose guarded mutators throw.
class VELTOCORE_EXPORT VeltoRangeArray : public VeltoMutableRangeArray
{
public:
    /// initWithCapacity, init, initWithArray, initWithRange, initWithRanges: as VeltoMutableRangeArray's.
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> initWithCapacity(quint64 capacity, const VeltoRange *ranges,
                                                                         quint64 count);
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> initWithCapacity(quint64 capacity);
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> init();
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> initWithArray(const VeltoAbstractRangeArray &other);
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> initWithRange(VeltoRange range);
    [[nodiscard]] static std::shared_ptr<VeltoRangeArray> initWithRanges(const VeltoAbstractRangeArray &other);

    /// emptyArray: the one shared empty array, made on first use and kept for the life of the process.
    [[nodiscard]] static std::shared_ptr<const VeltoRangeArray> emptyArray();

    /// copy: the receiver itself.
    [[nodiscard]] std::shared_ptr<const VeltoRangeArray> copy() const override;
    /// mutableCopy: a new VeltoMutableRangeArray made with initWithArray() (capacity = count).
    [[nodiscard]] std::shared_ptr<VeltoMutableRangeArray> mutableCopy() const override;
    /// subarrayWithRange: the receiver itself for (0, count()); otherwise as VeltoMutableRangeArray's.
    [[nodiscard]] std::shared_ptr<const VeltoRangeArray> subarrayWithRange(VeltoRange indexRange) const override;

    void addRange(VeltoRange range) override;
    void insertRange(VeltoRange range, quint64 index) override;
    void replaceRangeAtIndex(quint64 index, VeltoRange range) override;
    void removeRangeAtIndex(quint64 index) override;
    void removeObjectsInRange(VeltoRange indexRange) override;
    void normalizeRanges() override;

private:
    friend class VeltoMutableRangeArray;
    VeltoRangeArray(VeltoRange *buffer, quint64 capacity, quint64 count) noexcept
        : VeltoMutableRangeArray(buffer, capacity, count)
    {
    }
    [[noreturn]] static void throwImmutable(const char *operation);
};

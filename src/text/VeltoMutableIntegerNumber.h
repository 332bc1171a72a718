#pragma once

/**
 * \file VeltoMutableIntegerNumber.h
 * \brief VeltoMutableIntegerNumber: a mutable signed 64-bit number (type code "q"). See VeltoMutableNumber.h.
 */

#include "VeltoMutableNumber.h"
#include "veltocore_export.h"

#include <type_traits>

class VELTOCORE_EXPORT VeltoMutableIntegerNumber final : public VeltoMutableNumber
{
public:
    /// Holds 0.
    VeltoMutableIntegerNumber() = default;
    /**
     * Holds \a value converted to qint64: integers as C++ converts them (a bool as 0 or 1, unsigned values
     * above the qint64 range wrap), floating values truncated toward zero (saturated; NaN as 0).
     */
    template <typename T>
        requires std::is_arithmetic_v<T>
    explicit VeltoMutableIntegerNumber(T value) noexcept
    {
        if constexpr (std::is_floating_point_v<T>)
            m_value = truncatedInteger(double(value));
        else
            m_value = static_cast<qint64>(value);
    }

    /// numberWithBool: a new number holding 1 or 0.
    [[nodiscard]] static std::unique_ptr<VeltoMutableIntegerNumber> numberWithBool(bool value);
    /// numberWithInt: a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableIntegerNumber> numberWithInt(int value);
    /// numberWithUnsignedInt: a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableIntegerNumber> numberWithUnsignedInt(unsigned int value);
    /// numberWithInteger: a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableIntegerNumber> numberWithInteger(qint64 value);
    /// numberWithUnsignedInteger: a new number holding \a value (wrapped above the qint64 range).
    [[nodiscard]] static std::unique_ptr<VeltoMutableIntegerNumber> numberWithUnsignedInteger(quint64 value);

    [[nodiscard]] const char *objCType() const override;
    void getValue(void *buffer) const override;
    [[nodiscard]] qint64 integerValue() const override;
    [[nodiscard]] quint64 unsignedIntegerValue() const override;
    [[nodiscard]] double doubleValue() const override;
    [[nodiscard]] bool boolValue() const override;
    void setIntValue(int value) override;
    void setIntegerValue(qint64 value) override;
    void setDoubleValue(double value) override;
    void resetToZero() override;
    [[nodiscard]] QVariant copy() const override;
    [[nodiscard]] std::unique_ptr<VeltoMutableNumber> mutableCopy() const override;
    void encodeWithCoder(QDataStream &stream) const override;

protected:
    [[nodiscard]] QLatin1StringView className() const override;
    qint64 addNumber(const QVariant &number, Operation operation) override;

private:
    qint64 m_value = 0;
};

#pragma once

/**
 * \file VeltoMutableDoubleNumber.h
 * \brief VeltoMutableDoubleNumber: a mutable double number (type code "d"). See VeltoMutableNumber.h.
 */

#include "VeltoMutableNumber.h"
#include "veltocore_export.h"

#include <type_traits>

class VELTOCORE_EXPORT VeltoMutableDoubleNumber final : public VeltoMutableNumber
{
public:
    /// Holds 0.0.
    VeltoMutableDoubleNumber() = default;
    /// Holds \a value converted to double (a bool as 0.0 or 1.0).
    template <typename T>
        requires std::is_arithmetic_v<T>
    explicit VeltoMutableDoubleNumber(T value) noexcept : m_value(static_cast<double>(value))
    {
    }

    /// numberWithDouble: a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableDoubleNumber> numberWithDouble(double value);
    /// numberWithFloat: a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableDoubleNumber> numberWithFloat(float value);

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
    double m_value = 0.0;
};

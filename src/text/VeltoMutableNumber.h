// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoMutableNumber.h
 * \brief VeltoMutableNumber: a number whose value changes in place, for counters kept in collections
 * (counts per key, running totals) where replacing an immutable QVariant on every change is clumsy.
 *
 * \code
 * QHash<QString, std::shared_ptr<VeltoMutableNumber>> counts;
 * auto &n = counts[word];
 * if (!n)
 *     n = VeltoMutableNumber::create();   // the integer kind, holding 0
 * n->increment();
 * \endcode
 *
 * Two kinds, both VeltoMutableNumberOf: VeltoMutableIntegerNumber (qint64, type code "q") and
 * VeltoMutableDoubleNumber (double, type code "d"). Each answers every getter by converting its own
 * value. Not thread-safe: guard a number shared between threads. For a value that never changes, use a
 * QVariant (copy() gives one).
 */

#include "veltocore_export.h"

#include <QDataStream>
#include <QString>
#include <QVariant>

#include <memory>
#include <type_traits>

class VELTOCORE_EXPORT VeltoMutableNumber
{
public:
    virtual ~VeltoMutableNumber();
    VeltoMutableNumber(const VeltoMutableNumber &) = delete;
    VeltoMutableNumber &operator=(const VeltoMutableNumber &) = delete;

    /// create: a new number of the base kind, which is the integer kind, holding 0.
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumber> create();
    /**
     * initWithCoder: the number encodeWithCoder() wrote at the stream's position: an integer number for
     * type code "q", a double number for "d". Returns nullptr for any other code or a short read, and then
     * sets the stream's status to QDataStream::ReadCorruptData (or keeps its past-end status).
     */
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumber> initWithCoder(QDataStream &stream);

    /// objCType: the type code of the stored value: "q" (qint64) or "d" (double). Never null.
    [[nodiscard]] virtual const char *objCType() const = 0;

    /// integerValue: the value as qint64 (a double truncated toward zero, saturated; NaN as 0).
    [[nodiscard]] virtual qint64 integerValue() const = 0;
    /// unsignedIntegerValue: the value as quint64; doubles of 2^63 and more convert exactly.
    [[nodiscard]] virtual quint64 unsignedIntegerValue() const = 0;
    /// doubleValue: the value as double.
    [[nodiscard]] virtual double doubleValue() const = 0;
    /// boolValue: whether the value is not zero.
    [[nodiscard]] bool boolValue() const { return doubleValue() != 0.0; }
    /// The narrower getters convert integerValue() (or doubleValue() for float) as C++ converts
    /// integers: the low bits are kept.
    [[nodiscard]] char charValue() const { return static_cast<char>(integerValue()); }
    [[nodiscard]] unsigned char unsignedCharValue() const { return static_cast<unsigned char>(integerValue()); }
    [[nodiscard]] short shortValue() const { return static_cast<short>(integerValue()); }
    [[nodiscard]] unsigned short unsignedShortValue() const { return static_cast<unsigned short>(integerValue()); }
    [[nodiscard]] int intValue() const { return static_cast<int>(integerValue()); }
    [[nodiscard]] unsigned int unsignedIntValue() const { return static_cast<unsigned int>(integerValue()); }
    [[nodiscard]] long longValue() const { return static_cast<long>(integerValue()); }
    [[nodiscard]] unsigned long unsignedLongValue() const { return static_cast<unsigned long>(unsignedIntegerValue()); }
    [[nodiscard]] long long longLongValue() const { return integerValue(); }
    [[nodiscard]] unsigned long long unsignedLongLongValue() const { return unsignedIntegerValue(); }
    [[nodiscard]] float floatValue() const { return static_cast<float>(doubleValue()); }

    /// setIntValue: stores \a value.
    void setIntValue(int value) { setIntegerValue(value); }
    /// setIntegerValue: stores \a value.
    virtual void setIntegerValue(qint64 value) = 0;
    /// setDoubleValue: stores \a value (the integer kind truncates it toward zero, saturated).
    virtual void setDoubleValue(double value) = 0;
    /// resetToZero: stores 0.
    void resetToZero() { setIntegerValue(0); }

    /**
     * incrementByNumber: adds \a number (its integer value for the integer kind, its double value for the
     * double kind; a QVariant that is not a number counts as 0) and returns the new value as an integer
     * (the double kind's truncated). Integer arithmetic wraps around at the 64-bit limits.
     */
    qint64 incrementByNumber(const QVariant &number) { return addNumber(number, Operation::Add); }
    qint64 incrementByNumber(const VeltoMutableNumber &number) { return addNumber(number.copy(), Operation::Add); }
    /// decrementByNumber: subtracts \a number, as incrementByNumber() adds it.
    qint64 decrementByNumber(const QVariant &number) { return addNumber(number, Operation::Subtract); }
    qint64 decrementByNumber(const VeltoMutableNumber &number) { return addNumber(number.copy(), Operation::Subtract); }
    /// increment: incrementByNumber() with 1.
    qint64 increment() { return incrementByNumber(QVariant(qint64(1))); }
    /// decrement: incrementByNumber() with -1 (0 becomes -1).
    qint64 decrement() { return incrementByNumber(QVariant(qint64(-1))); }

    /// copy: an immutable number: a QVariant holding qint64 or double.
    [[nodiscard]] virtual QVariant copy() const = 0;
    /// mutableCopy: a new mutable number of the same kind and value.
    [[nodiscard]] virtual std::unique_ptr<VeltoMutableNumber> mutableCopy() const = 0;
    /// encodeWithCoder: writes the type code (one byte, 'q' or 'd') and then the value.
    virtual void encodeWithCoder(QDataStream &stream) const = 0;

    /// description: the class name, "=" and integerValue(): "VeltoMutableIntegerNumber=5".
    [[nodiscard]] QString description() const;

protected:
    VeltoMutableNumber() = default;
    /// The kind's class name, for description().
    [[nodiscard]] virtual QLatin1StringView className() const = 0;
    enum class Operation { Add, Subtract };
    /// Adds or subtracts \a number on the kind's own value type; the new value as an integer.
    virtual qint64 addNumber(const QVariant &number, Operation operation) = 0;
    /// truncatedInteger: \a value truncated toward zero into qint64, saturated; NaN gives 0.
    [[nodiscard]] static qint64 truncatedInteger(double value) noexcept;
};

/**
 * \brief VeltoMutableNumberOf: the mutable number holding a \a Value, qint64 (VeltoMutableIntegerNumber)
 * or double (VeltoMutableDoubleNumber). Both kinds share this one implementation; they differ only in
 * how a value of the other kind converts into theirs.
 */
template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
class VELTOCORE_EXPORT VeltoMutableNumberOf final : public VeltoMutableNumber
{
public:
    static constexpr bool IsInteger = std::is_integral_v<Value>;

    /// Holds 0.
    VeltoMutableNumberOf() = default;
    /**
     * Holds \a value converted to the kind: for the integer kind, integers as C++ converts them (a bool as 0
     * or 1, unsigned values above the qint64 range wrap) and floating values truncated toward zero
     * (saturated; NaN as 0); for the double kind, the value as a double.
     */
    template <typename T>
        requires std::is_arithmetic_v<T>
    explicit VeltoMutableNumberOf(T value) noexcept
    {
        if constexpr (IsInteger && std::is_floating_point_v<T>)
            m_value = truncatedInteger(double(value));
        else
            m_value = static_cast<Value>(value);
    }

    /// numberWithBool, numberWithInt, numberWithUnsignedInt, numberWithInteger, numberWithUnsignedInteger
    /// (integer kind) and numberWithDouble, numberWithFloat (double kind): a new number holding \a value.
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithBool(bool value) requires IsInteger
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithInt(int value) requires IsInteger
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithUnsignedInt(unsigned int value)
        requires IsInteger
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithInteger(qint64 value) requires IsInteger
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithUnsignedInteger(quint64 value)
        requires IsInteger
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithDouble(double value) requires(!IsInteger)
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }
    [[nodiscard]] static std::unique_ptr<VeltoMutableNumberOf> numberWithFloat(float value) requires(!IsInteger)
    {
        return std::make_unique<VeltoMutableNumberOf>(value);
    }

    /// getValue: writes the stored value to \a buffer; nothing when null.
    void getValue(Value *buffer) const
    {
        if (buffer)
            *buffer = m_value;
    }
    /// value: the stored value.
    [[nodiscard]] Value value() const { return m_value; }

    [[nodiscard]] const char *objCType() const override;
    [[nodiscard]] qint64 integerValue() const override;
    [[nodiscard]] quint64 unsignedIntegerValue() const override;
    [[nodiscard]] double doubleValue() const override;
    void setIntegerValue(qint64 value) override;
    void setDoubleValue(double value) override;
    [[nodiscard]] QVariant copy() const override;
    [[nodiscard]] std::unique_ptr<VeltoMutableNumber> mutableCopy() const override;
    void encodeWithCoder(QDataStream &stream) const override;

protected:
    [[nodiscard]] QLatin1StringView className() const override;
    qint64 addNumber(const QVariant &number, Operation operation) override;

private:
    Value m_value = 0;
};

/// VeltoMutableIntegerNumber: a mutable signed 64-bit number (type code "q").
using VeltoMutableIntegerNumber = VeltoMutableNumberOf<qint64>;
/// VeltoMutableDoubleNumber: a mutable double number (type code "d").
using VeltoMutableDoubleNumber = VeltoMutableNumberOf<double>;

extern template class VeltoMutableNumberOf<qint64>;
extern template class VeltoMutableNumberOf<double>;

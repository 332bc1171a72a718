// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoMutableNumber.h"

#include "VTNumberConversion_p.h"

using namespace Qt::StringLiterals;

VeltoMutableNumber::~VeltoMutableNumber() = default;

std::unique_ptr<VeltoMutableNumber> VeltoMutableNumber::create()
{
    return std::make_unique<VeltoMutableIntegerNumber>();
}

std::unique_ptr<VeltoMutableNumber> VeltoMutableNumber::initWithCoder(QDataStream &stream)
{
    quint8 code = 0;
    stream >> code;
    std::unique_ptr<VeltoMutableNumber> number;
    if (code == 'q') {
        qint64 value = 0;
        stream >> value;
        number = std::make_unique<VeltoMutableIntegerNumber>(value);
    } else if (code == 'd') {
        double value = 0;
        stream >> value;
        number = std::make_unique<VeltoMutableDoubleNumber>(value);
    } else if (stream.status() == QDataStream::Ok) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    return stream.status() == QDataStream::Ok ? std::move(number) : nullptr;
}

QString VeltoMutableNumber::description() const
{
    return u"%1=%2"_s.arg(className(), QString::number(integerValue()));
}

qint64 VeltoMutableNumber::truncatedInteger(double value) noexcept
{
    return VTNumberConversion::truncatedInteger(value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
const char *VeltoMutableNumberOf<Value>::objCType() const
{
    return IsInteger ? "q" : "d";
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
qint64 VeltoMutableNumberOf<Value>::integerValue() const
{
    if constexpr (IsInteger)
        return m_value;
    else
        return truncatedInteger(m_value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
quint64 VeltoMutableNumberOf<Value>::unsignedIntegerValue() const
{
    if constexpr (IsInteger)
        return static_cast<quint64>(m_value);
    else
        return VTNumberConversion::truncatedUnsigned(m_value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
double VeltoMutableNumberOf<Value>::doubleValue() const
{
    return double(m_value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
void VeltoMutableNumberOf<Value>::setIntegerValue(qint64 value)
{
    m_value = Value(value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
void VeltoMutableNumberOf<Value>::setDoubleValue(double value)
{
    if constexpr (IsInteger)
        m_value = truncatedInteger(value);
    else
        m_value = value;
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
QVariant VeltoMutableNumberOf<Value>::copy() const
{
    return QVariant(m_value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
std::unique_ptr<VeltoMutableNumber> VeltoMutableNumberOf<Value>::mutableCopy() const
{
    return std::make_unique<VeltoMutableNumberOf>(m_value);
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
void VeltoMutableNumberOf<Value>::encodeWithCoder(QDataStream &stream) const
{
    stream << quint8(*objCType()) << m_value;
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
QLatin1StringView VeltoMutableNumberOf<Value>::className() const
{
    return IsInteger ? QLatin1StringView("VeltoMutableIntegerNumber") : QLatin1StringView("VeltoMutableDoubleNumber");
}

template <typename Value>
    requires std::is_same_v<Value, qint64> || std::is_same_v<Value, double>
qint64 VeltoMutableNumberOf<Value>::addNumber(const QVariant &number, Operation operation)
{
    if constexpr (IsInteger) {
        // Unsigned arithmetic: a counter that passes the limit wraps instead of being undefined.
        const quint64 other = quint64(VTNumberConversion::integerValue(number));
        const quint64 mine = quint64(m_value);
        m_value = static_cast<qint64>(operation == Operation::Add ? mine + other : mine - other);
    } else {
        const double other = VTNumberConversion::doubleValue(number);
        m_value = operation == Operation::Add ? m_value + other : m_value - other;
    }
    return integerValue();
}

template class VeltoMutableNumberOf<qint64>;
template class VeltoMutableNumberOf<double>;

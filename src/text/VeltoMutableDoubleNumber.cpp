#include "VeltoMutableDoubleNumber.h"

#include "VTNumberConversion_p.h"

#include <cstring>

std::unique_ptr<VeltoMutableDoubleNumber> VeltoMutableDoubleNumber::numberWithDouble(double value)
{
    return std::make_unique<VeltoMutableDoubleNumber>(value);
}

std::unique_ptr<VeltoMutableDoubleNumber> VeltoMutableDoubleNumber::numberWithFloat(float value)
{
    return std::make_unique<VeltoMutableDoubleNumber>(value);
}

const char *VeltoMutableDoubleNumber::objCType() const
{
    return "d";
}

void VeltoMutableDoubleNumber::getValue(void *buffer) const
{
    if (buffer)
        std::memcpy(buffer, &m_value, sizeof m_value);
}

qint64 VeltoMutableDoubleNumber::integerValue() const
{
    return truncatedInteger(m_value);
}

quint64 VeltoMutableDoubleNumber::unsignedIntegerValue() const
{
    return VTNumberConversion::truncatedUnsigned(m_value);
}

double VeltoMutableDoubleNumber::doubleValue() const
{
    return m_value;
}

bool VeltoMutableDoubleNumber::boolValue() const
{
    return m_value != 0.0;
}

void VeltoMutableDoubleNumber::setIntValue(int value)
{
    m_value = value;
}

void VeltoMutableDoubleNumber::setIntegerValue(qint64 value)
{
    m_value = double(value);
}

void VeltoMutableDoubleNumber::setDoubleValue(double value)
{
    m_value = value;
}

void VeltoMutableDoubleNumber::resetToZero()
{
    m_value = 0.0;
}

QVariant VeltoMutableDoubleNumber::copy() const
{
    return QVariant(m_value);
}

std::unique_ptr<VeltoMutableNumber> VeltoMutableDoubleNumber::mutableCopy() const
{
    return std::make_unique<VeltoMutableDoubleNumber>(m_value);
}

void VeltoMutableDoubleNumber::encodeWithCoder(QDataStream &stream) const
{
    stream << quint8('d') << m_value;
}

QLatin1StringView VeltoMutableDoubleNumber::className() const
{
    return QLatin1StringView("VeltoMutableDoubleNumber");
}

qint64 VeltoMutableDoubleNumber::addNumber(const QVariant &number, Operation operation)
{
    const double other = VTNumberConversion::doubleValue(number);
    m_value = operation == Operation::Add ? m_value + other : m_value - other;
    return truncatedInteger(m_value);
}

#include "VeltoMutableIntegerNumber.h"

#include "VTNumberConversion_p.h"

#include <cstring>

std::unique_ptr<VeltoMutableIntegerNumber> VeltoMutableIntegerNumber::numberWithBool(bool value)
{
    return std::make_unique<VeltoMutableIntegerNumber>(value);
}

std::unique_ptr<VeltoMutableIntegerNumber> VeltoMutableIntegerNumber::numberWithInt(int value)
{
    return std::make_unique<VeltoMutableIntegerNumber>(value);
}

std::unique_ptr<VeltoMutableIntegerNumber> VeltoMutableIntegerNumber::numberWithUnsignedInt(unsigned int value)
{
    return std::make_unique<VeltoMutableIntegerNumber>(value);
}

std::unique_ptr<VeltoMutableIntegerNumber> VeltoMutableIntegerNumber::numberWithInteger(qint64 value)
{
    return std::make_unique<VeltoMutableIntegerNumber>(value);
}

std::unique_ptr<VeltoMutableIntegerNumber> VeltoMutableIntegerNumber::numberWithUnsignedInteger(quint64 value)
{
    return std::make_unique<VeltoMutableIntegerNumber>(value);
}

const char *VeltoMutableIntegerNumber::objCType() const
{
    return "q";
}

void VeltoMutableIntegerNumber::getValue(void *buffer) const
{
    if (buffer)
        std::memcpy(buffer, &m_value, sizeof m_value);
}

qint64 VeltoMutableIntegerNumber::integerValue() const
{
    return m_value;
}

quint64 VeltoMutableIntegerNumber::unsignedIntegerValue() const
{
    return static_cast<quint64>(m_value);
}

double VeltoMutableIntegerNumber::doubleValue() const
{
    return double(m_value);
}

bool VeltoMutableIntegerNumber::boolValue() const
{
    return m_value != 0;
}

void VeltoMutableIntegerNumber::setIntValue(int value)
{
    m_value = value;
}

void VeltoMutableIntegerNumber::setIntegerValue(qint64 value)
{
    m_value = value;
}

void VeltoMutableIntegerNumber::setDoubleValue(double value)
{
    m_value = truncatedInteger(value);
}

void VeltoMutableIntegerNumber::resetToZero()
{
    m_value = 0;
}

QVariant VeltoMutableIntegerNumber::copy() const
{
    return QVariant(m_value);
}

std::unique_ptr<VeltoMutableNumber> VeltoMutableIntegerNumber::mutableCopy() const
{
    return std::make_unique<VeltoMutableIntegerNumber>(m_value);
}

void VeltoMutableIntegerNumber::encodeWithCoder(QDataStream &stream) const
{
    stream << quint8('q') << m_value;
}

QLatin1StringView VeltoMutableIntegerNumber::className() const
{
    return QLatin1StringView("VeltoMutableIntegerNumber");
}

qint64 VeltoMutableIntegerNumber::addNumber(const QVariant &number, Operation operation)
{
    // Unsigned arithmetic: a counter that passes the limit wraps instead of being undefined.
    const quint64 other = quint64(VTNumberConversion::integerValue(number));
    const quint64 mine = quint64(m_value);
    m_value = static_cast<qint64>(operation == Operation::Add ? mine + other : mine - other);
    return m_value;
}

#include "VeltoMutableNumber.h"

#include "VTNumberConversion_p.h"
#include "VeltoMutableDoubleNumber.h"
#include "VeltoMutableIntegerNumber.h"

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

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFloatArray.h"

#include "VeltoException.h"

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

std::unique_ptr<VeltoFloatArray> VeltoFloatArray::initWithFloats(const double *floats, quint64 count)
{
    double *buffer = allocateZeros(floats, count);
    return buffer ? std::unique_ptr<VeltoFloatArray>(new VeltoFloatArray(buffer, count, count)) : nullptr;
}

std::unique_ptr<VeltoFloatArray> VeltoFloatArray::initWithCapacity(quint64 capacity)
{
    return initWithFloats(nullptr, capacity);
}

VeltoFloatArray::VeltoFloatArray(double *floats, quint64 count, quint64 capacity) noexcept
    : m_count(count), m_capacity(capacity), m_floats(floats)
{
}

VeltoFloatArray::~VeltoFloatArray()
{
    std::free(m_floats);
}

double *VeltoFloatArray::allocateZeros(const double *source, quint64 count)
{
    if (count == 0 || count > SIZE_MAX / sizeof(double))
        return nullptr;
    auto *buffer = static_cast<double *>(std::calloc(count, sizeof(double)));
    if (buffer && source)
        std::memcpy(buffer, source, count * sizeof(double));
    return buffer;
}

std::unique_ptr<VeltoFloatArray> VeltoFloatArray::copy() const
{
    return initWithFloats(m_floats, m_count);
}

void VeltoFloatArray::checkIndex(quint64 index, const char *operation) const
{
    if (index < m_count)
        return;
    throw VeltoException(VeltoRangeException,
                         u"VeltoFloatArray<0x%1> index out of bounds (index=%2, count=%3) during %4"_s
                             .arg(quintptr(this), 0, 16)
                             .arg(index)
                             .arg(m_count)
                             .arg(QLatin1StringView(operation)));
}

void VeltoFloatArray::checkRange(VeltoRange range, const char *operation) const
{
    const quint64 last = range.end() - 1;
    // A non-empty range whose end wraps has its last index below its location: it does not fit either.
    checkIndex(range.location <= last ? last : std::max(last, m_count), operation);
}

double VeltoFloatArray::floatAtIndex(quint64 index) const
{
    checkIndex(index, "floatAtIndex");
    return m_floats[index];
}

void VeltoFloatArray::getFloats(double *buffer, VeltoRange range) const
{
    if (range.length == 0)
        return;
    checkRange(range, "getFloats");
    std::memcpy(buffer, m_floats + range.location, range.length * sizeof(double));
}

void VeltoFloatArray::setFloat(float value, quint64 index)
{
    checkIndex(index, "setFloat");
    m_floats[index] = double(value);
}

void VeltoFloatArray::addFloatToFloatAtIndex(float value, quint64 index)
{
    checkIndex(index, "addFloatToFloatAtIndex");
    m_floats[index] += double(value);
}

void VeltoFloatArray::replaceFloatAtIndex(quint64 index, double value)
{
    checkIndex(index, "replaceFloatAtIndex");
    m_floats[index] = value;
}

void VeltoFloatArray::replaceFloatsInRange(VeltoRange range, const double *floats)
{
    if (range.length == 0)
        return;
    checkRange(range, "replaceFloatsInRange");
    std::memcpy(m_floats + range.location, floats, range.length * sizeof(double));
}

double VeltoFloatArray::sumFloats() const
{
    return sumFloatsInRange({0, m_count});
}

double VeltoFloatArray::sumFloatsInRange(VeltoRange range) const
{
    if (range.length == 0)
        return 0;
    checkRange(range, "sumFloatsInRange");
    double sum = 0;
    for (quint64 i = range.location; i < range.end(); ++i)
        sum += m_floats[i];
    return sum;
}

QVariant VeltoFloatArray::objectAtIndex(quint64 index) const
{
    checkIndex(index, "objectAtIndex");
    return m_floats[index];
}

void VeltoFloatArray::replaceObjectAtIndex(quint64 index, const QVariant &value)
{
    checkIndex(index, "replaceObjectAtIndex");
    m_floats[index] = value.toDouble();
}

bool VeltoFloatArray::isEqual(const VeltoFloatArray &other) const
{
    return &other == this
        || (other.m_count == m_count && std::memcmp(other.m_floats, m_floats, m_count * sizeof(double)) == 0);
}

bool VeltoFloatArray::isEqual(const QVariantList &values) const
{
    if (quint64(values.size()) != m_count)
        return false;
    for (quint64 i = 0; i < m_count; ++i) {
        const double mine = m_floats[i];
        const double theirs = values.at(qsizetype(i)).toDouble();
        // Neither smaller nor greater, and no NaN on either side.
        if (mine < theirs || mine > theirs || mine != mine || theirs != theirs)
            return false;
    }
    return true;
}

QString VeltoFloatArray::description() const
{
    QString text = u"VeltoFloatArray <0x%1> \n"_s.arg(quintptr(this), 0, 16);
    for (quint64 i = 0; i < m_count; ++i)
        text += QString::asprintf("   %f, \n", m_floats[i]);
    return text;
}

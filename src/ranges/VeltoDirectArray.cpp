// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDirectArray.h"

#include <algorithm>
#include <new>

std::unique_ptr<VeltoDirectArray> VeltoDirectArray::initWithCapacity(quint64 capacity)
{
    capacity = std::max<quint64>(capacity, 1);
    if (capacity > SIZE_MAX / sizeof(QVariant))
        return nullptr;
    auto *buffer = new (std::nothrow) QVariant[capacity];
    return buffer ? std::unique_ptr<VeltoDirectArray>(new VeltoDirectArray(buffer, capacity)) : nullptr;
}

VeltoDirectArray::VeltoDirectArray(QVariant *buffer, quint64 capacity) noexcept : m_buffer(buffer), m_capacity(capacity)
{
}

VeltoDirectArray::~VeltoDirectArray()
{
    for (quint64 i = m_count; i > 0; --i)
        m_buffer[i - 1] = QVariant();
    delete[] m_buffer;
}

QVariant *VeltoDirectArray::bufferForObjectRangeVelto(VeltoRange range, QVariant **boundsEnd)
{
    if (boundsEnd)
        *boundsEnd = m_buffer + range.end();
    return m_buffer + range.location;
}

void VeltoDirectArray::getObjects(QVariant *objects, VeltoRange range) const
{
    std::copy_n(m_buffer + range.location, range.length, objects);
}

void VeltoDirectArray::addObject(const QVariant &object)
{
    Q_ASSERT_X(m_count < m_capacity, "VeltoDirectArray::addObject", "the array is full");
    m_buffer[m_count++] = object;
}

void VeltoDirectArray::addObjectsFromArray(const QVariantList &objects)
{
    Q_ASSERT_X(quint64(objects.size()) <= m_capacity - m_count, "VeltoDirectArray::addObjectsFromArray", "the array is full");
    std::copy(objects.cbegin(), objects.cend(), m_buffer + m_count);
    m_count += quint64(objects.size());
}

bool VeltoDirectArray::isEqual(const VeltoDirectArray &other) const
{
    return other.m_count == m_count && std::equal(m_buffer, m_buffer + m_count, other.m_buffer);
}

bool VeltoDirectArray::isEqual(const QVariantList &objects) const
{
    return quint64(objects.size()) == m_count && std::equal(m_buffer, m_buffer + m_count, objects.cbegin());
}

void VeltoDirectArray::sortLiteralStringsInRange(VeltoRange range)
{
    std::sort(m_buffer + range.location, m_buffer + range.end(), [](const QVariant &a, const QVariant &b) {
        return QString::compare(a.toString(), b.toString(), Qt::CaseSensitive) < 0;
    });
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFloatVector.h"

#include "VeltoException.h"

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

std::unique_ptr<VeltoFloatVector> VeltoFloatVector::initWithFloats(const double *floats, quint64 count)
{
    double *buffer = allocateZeros(floats, count);
    return buffer ? std::unique_ptr<VeltoFloatVector>(new VeltoFloatVector(buffer, floats ? count : 0, count)) : nullptr;
}

std::unique_ptr<VeltoFloatVector> VeltoFloatVector::initWithCapacity(quint64 capacity)
{
    return initWithFloats(nullptr, capacity);
}

void VeltoFloatVector::addFloat(double value)
{
    insertFloat(value, m_count);
}

void VeltoFloatVector::insertFloat(double value, quint64 index)
{
    Q_ASSERT_X(index <= m_count, "VeltoFloatVector::insertFloat", "index beyond the end");
    if (m_count == m_capacity) {
        const quint64 grown = 2 * m_capacity;
        void *buffer = grown <= SIZE_MAX / sizeof(double) ? std::realloc(m_floats, grown * sizeof(double)) : nullptr;
        if (!buffer)
            throw VeltoException(VeltoMallocException, u"Not enough memory for VeltoFloatVector with %1 elements"_s.arg(grown));
        m_floats = static_cast<double *>(buffer);
        m_capacity = grown;
    }
    std::memmove(m_floats + index + 1, m_floats + index, (m_count - index) * sizeof(double));
    m_floats[index] = value;
    ++m_count;
}

void VeltoFloatVector::removeFloatAtIndex(quint64 index)
{
    checkIndex(index, "removeFloatAtIndex");
    std::memmove(m_floats + index, m_floats + index + 1, (m_count - index - 1) * sizeof(double));
    --m_count;
}

void VeltoFloatVector::removeAllFloats()
{
    m_count = 0;
}

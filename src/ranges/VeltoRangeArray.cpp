// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoRangeArray.h"

#include "VeltoException.h"

using namespace Qt::StringLiterals;

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::initWithCapacity(quint64 capacity, const VeltoRange *ranges, quint64 count)
{
    return adopt<VeltoRangeArray>(capacity, ranges, count);
}

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::initWithCapacity(quint64 capacity)
{
    return adopt<VeltoRangeArray>(capacity, nullptr, 0);
}

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::init()
{
    return initWithCapacity(4);
}

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::initWithArray(const VeltoAbstractRangeArray &other)
{
    return adoptCopy<VeltoRangeArray>(other);
}

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::initWithRange(VeltoRange range)
{
    return adopt<VeltoRangeArray>(1, &range, 1);
}

std::shared_ptr<VeltoRangeArray> VeltoRangeArray::initWithRanges(const VeltoAbstractRangeArray &other)
{
    return initWithArray(other);
}

std::shared_ptr<const VeltoRangeArray> VeltoRangeArray::emptyArray()
{
    static const std::shared_ptr<const VeltoRangeArray> empty = initWithCapacity(1);
    return empty;
}

std::shared_ptr<const VeltoRangeArray> VeltoRangeArray::copy() const
{
    return std::static_pointer_cast<const VeltoRangeArray>(selfOrCopy());
}

std::shared_ptr<VeltoMutableRangeArray> VeltoRangeArray::mutableCopy() const
{
    return VeltoMutableRangeArray::initWithArray(*this);
}

std::shared_ptr<const VeltoRangeArray> VeltoRangeArray::subarrayWithRange(VeltoRange indexRange) const
{
    if (indexRange == VeltoRange{0, count()})
        return copy();
    return VeltoMutableRangeArray::subarrayWithRange(indexRange);
}

void VeltoRangeArray::addRange(VeltoRange)
{
    throwImmutable("addRange");
}

void VeltoRangeArray::insertRange(VeltoRange, quint64)
{
    throwImmutable("insertRange");
}

void VeltoRangeArray::replaceRangeAtIndex(quint64, VeltoRange)
{
    throwImmutable("replaceRangeAtIndex");
}

void VeltoRangeArray::removeRangeAtIndex(quint64)
{
    throwImmutable("removeRangeAtIndex");
}

void VeltoRangeArray::removeObjectsInRange(VeltoRange)
{
    throwImmutable("removeObjectsInRange");
}

void VeltoRangeArray::normalizeRanges()
{
    throwImmutable("normalizeRanges");
}

void VeltoRangeArray::throwImmutable(const char *operation)
{
    throw VeltoException(VeltoInternalInconsistencyException,
                         u"Attempt to modify immutable VeltoRangeArray via %1"_s.arg(QLatin1StringView(operation)));
}

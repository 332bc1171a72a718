// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Variant+VeltoRanges.h"

#include "VeltoException.h"

using namespace Qt::StringLiterals;

namespace {

template <typename T>
T unboxed(const QVariant &value, QLatin1StringView typeName)
{
    if (value.metaType() != QMetaType::fromType<T>()) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"A value of type %1 was given where a boxed %2 is expected"_s
                                 .arg(QLatin1StringView(value.metaType().name() ? value.metaType().name() : "(none)"),
                                      typeName));
    }
    return *static_cast<const T *>(value.constData());
}

} // namespace

namespace velto {

QVariant valueWithRange(VeltoRange range)
{
    return QVariant::fromValue(range);
}

VeltoRange rangeValue(const QVariant &value)
{
    return unboxed<VeltoRange>(value, "VeltoRange"_L1);
}

QVariant valueWithVeltoSpatialEdge(VeltoSpatialEdge edge)
{
    return QVariant::fromValue(edge);
}

VeltoSpatialEdge veltoSpatialEdgeValue(const QVariant &value)
{
    return unboxed<VeltoSpatialEdge>(value, "VeltoSpatialEdge"_L1);
}

} // namespace velto

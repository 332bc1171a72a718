// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Variant+VeltoRanges.h
 * \brief Boxing ranges and spatial edges in a QVariant, as arrays of boxed values (QVariantList,
 * VeltoBoxedRangeArray) hold them.
 *
 * \code
 * const QVariant boxed = velto::valueWithRange({10, 5});
 * const VeltoRange range = velto::rangeValue(boxed);     // (10, 5)
 * \endcode
 */

#include "veltocore_export.h"

#include "VeltoRange.h"
#include "VeltoSpatialEdge.h"

#include <QVariant>

namespace velto {

/// valueWithRange: \a range boxed in a QVariant.
[[nodiscard]] VELTOCORE_EXPORT QVariant valueWithRange(VeltoRange range);

/**
 * rangeValue: the range boxed in \a value.
 * \throws VeltoException named VeltoInvalidArgumentException when \a value holds no VeltoRange.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeValue(const QVariant &value);

/// valueWithVeltoSpatialEdge: \a edge boxed in a QVariant.
[[nodiscard]] VELTOCORE_EXPORT QVariant valueWithVeltoSpatialEdge(VeltoSpatialEdge edge);

/**
 * veltoSpatialEdgeValue: the edge boxed in \a value.
 * \throws VeltoException named VeltoInvalidArgumentException when \a value holds no VeltoSpatialEdge.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoSpatialEdge veltoSpatialEdgeValue(const QVariant &value);

} // namespace velto

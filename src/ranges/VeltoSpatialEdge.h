// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSpatialEdge.h
 * \brief VeltoSpatialEdge: a one-dimensional extent of floating-point coordinates (location, length),
 * such as the vertical span of a laid-out item; the key of VeltoSpatialArray.
 */

#include "veltocore_export.h"

#include <QString>

/// VeltoSpatialEdge: the extent from location to location + length.
struct VeltoSpatialEdge
{
    double location = 0;
    double length = 0;

    /// end: location + length.
    [[nodiscard]] constexpr double end() const noexcept { return location + length; }
    /// Equal when both location and length are equal.
    constexpr bool operator==(const VeltoSpatialEdge &) const noexcept = default;
};

/**
 * VeltoSpatialEdge_ToString: "{loc=%.f, len=%.f}" as C's printf writes it: both numbers without fractional
 * digits, halves rounded to even ("{loc=10, len=5}"; (2.5, 0.5) gives "{loc=2, len=0}").
 */
[[nodiscard]] VELTOCORE_EXPORT QString VeltoSpatialEdge_ToString(VeltoSpatialEdge edge);

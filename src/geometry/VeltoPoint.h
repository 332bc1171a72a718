// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoPoint.h
 * \brief VeltoPoint: a point (x, y) in floating-point display coordinates.
 *
 * A plain value that converts implicitly to and from QPointF, so it can be handed to Qt drawing code
 * and back without ceremony. Equality is exact; use VeltoIsEqualDisplayPoints() (VeltoGeometryUtil.h)
 * to compare within a tenth of a unit.
 */

#include <QMetaType>
#include <QPointF>

/// VeltoPoint: x and y as doubles; a default-constructed point is (0, 0).
struct VeltoPoint
{
    double x = 0;
    double y = 0;

    constexpr VeltoPoint() noexcept = default;
    constexpr VeltoPoint(double x, double y) noexcept : x(x), y(y) {}
    constexpr VeltoPoint(const QPointF &point) noexcept : x(point.x()), y(point.y()) {}

    constexpr operator QPointF() const noexcept { return QPointF(x, y); }
    constexpr bool operator==(const VeltoPoint &) const noexcept = default;
};

Q_DECLARE_METATYPE(VeltoPoint)

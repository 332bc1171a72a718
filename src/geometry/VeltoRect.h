// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoRect.h
 * \brief VeltoRect: a rectangle (origin, size) in floating-point display coordinates, the zero
 * rectangle and the null rectangle.
 *
 * The maximum corner is (x + width, y + height). A rectangle is "positive" when its width and height
 * are both above 0; lines (one of them 0) and points (both 0) are degenerate rectangles that the
 * functions of VeltoGeometryUtil.h handle by their own rules.
 *
 * VeltoNullRect stands for "no rectangle": VeltoRect_IntersectionRect() returns it when degenerate
 * rectangles do not meet, and the union and intersection treat a non-positive rectangle whose x or y
 * is the null coordinate as absent.
 *
 * \code
 * VeltoRect dirty = VeltoNullRect;
 * for (const VeltoRect &changed : changes)
 *     dirty = VeltoRect_UnionRects(dirty, changed);   // the first change replaces "nothing"
 * widget->update(QRectF(dirty).toAlignedRect());
 * \endcode
 *
 * Converts implicitly to and from QRectF. Equality is exact; QRectF's own == is fuzzy.
 */

#include "VeltoPoint.h"
#include "VeltoSize.h"

#include <QMetaType>
#include <QRectF>

#include <limits>

/// VeltoRect: origin and size; a default-constructed rectangle is the zero rectangle.
struct VeltoRect
{
    VeltoPoint origin;
    VeltoSize size;

    constexpr VeltoRect() noexcept = default;
    constexpr VeltoRect(VeltoPoint origin, VeltoSize size) noexcept : origin(origin), size(size) {}
    constexpr VeltoRect(double x, double y, double width, double height) noexcept
        : origin(x, y), size(width, height)
    {
    }
    constexpr VeltoRect(const QRectF &rect) noexcept : origin(rect.x(), rect.y()), size(rect.width(), rect.height()) {}

    constexpr operator QRectF() const noexcept { return QRectF(origin.x, origin.y, size.width, size.height); }
    constexpr bool operator==(const VeltoRect &) const noexcept = default;

    /// maxX: x + width.
    [[nodiscard]] constexpr double maxX() const noexcept { return origin.x + size.width; }
    /// maxY: y + height.
    [[nodiscard]] constexpr double maxY() const noexcept { return origin.y + size.height; }
    /// maxPoint: the maximum corner (maxX, maxY).
    [[nodiscard]] constexpr VeltoPoint maxPoint() const noexcept { return {maxX(), maxY()}; }
    /// isPositive: width and height both above 0.
    [[nodiscard]] constexpr bool isPositive() const noexcept { return size.width > 0 && size.height > 0; }
};

Q_DECLARE_METATYPE(VeltoRect)

/// The coordinate of the null rectangle's origin: the largest finite double (bits 0x7FEFFFFFFFFFFFFF).
inline constexpr double VeltoNullRectCoordinate = std::numeric_limits<double>::max();

/// The zero rectangle (0, 0, 0, 0).
inline constexpr VeltoRect VeltoZeroRect{0, 0, 0, 0};

/// The null rectangle: origin (VeltoNullRectCoordinate, VeltoNullRectCoordinate), size (0, 0).
inline constexpr VeltoRect VeltoNullRect{VeltoNullRectCoordinate, VeltoNullRectCoordinate, 0, 0};

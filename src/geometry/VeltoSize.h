// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSize.h
 * \brief VeltoSize: a size (width, height) in floating-point display coordinates.
 *
 * A plain value that converts implicitly to and from QSizeF. Sizes may be zero or negative; the
 * functions of VeltoGeometryUtil.h say how they treat such sizes.
 */

#include <QMetaType>
#include <QSizeF>

/// VeltoSize: width and height as doubles; a default-constructed size is (0, 0).
struct VeltoSize
{
    double width = 0;
    double height = 0;

    constexpr VeltoSize() noexcept = default;
    constexpr VeltoSize(double width, double height) noexcept : width(width), height(height) {}
    constexpr VeltoSize(const QSizeF &size) noexcept : width(size.width()), height(size.height()) {}

    constexpr operator QSizeF() const noexcept { return QSizeF(width, height); }
    constexpr bool operator==(const VeltoSize &) const noexcept = default;
};

Q_DECLARE_METATYPE(VeltoSize)

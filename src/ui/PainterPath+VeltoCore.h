// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file PainterPath+VeltoCore.h
 * \brief Rounded-rectangle outlines as QPainterPath, for one rectangle or for a list of them (the
 * highlighted lines of a text selection, the cells of a table).
 *
 * Each rectangle gets its own closed subpath. The corner radius shrinks to half the rectangle's shorter
 * side when the rectangle is too small for it; when that leaves 2 units or less, the rectangle is drawn
 * with square corners. A side that is all rounding leaves no line of its own (zero-length lines are
 * not added). The path's fill rule is Qt::WindingFill, so overlapping outlines fill as one region instead
 * of cancelling out.
 *
 * \code
 * const QList<VeltoRect> lines = selectionLineRects();
 * painter.fillPath(velto::roundedBezierPathWithRects(lines.constData(), lines.size(), 4), highlight);
 * \endcode
 */

#include "veltocoregui_export.h"

#include "VeltoRect.h"

#include <QPainterPath>

namespace velto {

/**
 * roundedBezierPathWithRects: one rounded outline per rectangle in one path, in order. For each
 * rectangle (x, y, w, h) the radius used is min(w, h) / 2 when min(w, h) < 2 × \a radius, else \a radius;
 * above 2.0 the outline starts at (x + used radius, y) and runs along y first, otherwise it is the
 * rectangle's plain outline. A \a count of 0 or less gives an empty path.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QPainterPath roundedBezierPathWithRects(const VeltoRect *rects, qsizetype count,
                                                                          double radius);

/// roundedBezierPathWithRect: roundedBezierPathWithRects() with the one rectangle.
[[nodiscard]] VELTOCOREGUI_EXPORT QPainterPath roundedBezierPathWithRect(const VeltoRect &rect, double radius);

} // namespace velto

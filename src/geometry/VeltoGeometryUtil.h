// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoGeometryUtil.h
 * \brief Arithmetic on points, sizes and rectangles in display coordinates: distance, proportional
 * shrinking, outsetting and clipping, enclosing rectangles, intersection tests, union and intersection
 * that also take lines and points, subtraction into strips, comparison within a tenth of a unit, and
 * snapping to the pixel grid so that thin lines draw crisply.
 *
 * All functions take and return values; none allocates, fails or throws. Coordinates are the caller's:
 * nothing here assumes that y grows up or down. For plain arithmetic on positive rectangles QRectF
 * does as well; use these where lines, points and VeltoNullRect must be handled, or where the exact
 * rules below matter (edges, tolerances, pixel centres).
 *
 * \code
 * // Highlight a text line that may be empty (a zero-width caret rectangle) inside the visible area.
 * const VeltoRect shown = VeltoRect_IntersectionRect(visibleRect, lineRect);
 * if (shown != VeltoNullRect)
 *     painter.drawRect(QRectF(VeltoIntegralDisplayRect(shown)));
 * \endcode
 */

#include "veltocore_export.h"

#include "VeltoPoint.h"
#include "VeltoRect.h"
#include "VeltoSize.h"

/// The display tolerance: coordinates closer than this (strictly) count as the same place on screen.
inline constexpr double VeltoDisplayTolerance = 0.1;

/// VeltoDistanceBetweenPoints: the Euclidean distance, sqrt(dx² + dy²).
[[nodiscard]] VELTOCORE_EXPORT double VeltoDistanceBetweenPoints(VeltoPoint a, VeltoPoint b);

/**
 * VeltoSize_ConstrainProportionally: \a size shrunk to fit \a maxSize with its aspect ratio kept; a
 * size that fits is returned unchanged (it is never grown). The width is fitted first, then the height
 * of the result: (200, 100) within (100, 100) gives (100, 50), (100, 400) within (200, 100) gives (25, 100).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoSize VeltoSize_ConstrainProportionally(VeltoSize size, VeltoSize maxSize);

/// VeltoRect_OutsetXY: (x − dx, y − dy, width + 2dx, height + 2dy); negative amounts inset.
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_OutsetXY(VeltoRect rect, double dx, double dy);

/**
 * VeltoRect_OutsetEdges: moves each edge of \a rect outwards by its own amount. The two x amounts act
 * whenever they are non-zero (a negative amount moves its edge inwards); the two y amounts act only
 * when positive, so the rectangle can be inset horizontally but never vertically by this call.
 * \param minXOutset moves the minimum-x edge: x decreases and width grows by it.
 * \param maxXOutset moves the maximum-x edge: width grows by it.
 * \param minYOutset when positive, y decreases and height grows by it.
 * \param maxYOutset when positive, height grows by it.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_OutsetEdges(double minXOutset, double maxXOutset,
                                                               double minYOutset, double maxYOutset,
                                                               VeltoRect rect);

/**
 * VeltoRect_RectEnclosingPoints: the rectangle spanned by two points; per axis the origin is the smaller
 * coordinate and the size the absolute difference (zero when the points share that coordinate).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_RectEnclosingPoints(VeltoPoint a, VeltoPoint b);

/**
 * VeltoRect_RectEnclosingRectAndPoint: the smallest rectangle holding \a rect's origin, its maximum corner
 * and \a point.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_RectEnclosingRectAndPoint(VeltoPoint point, VeltoRect rect);

/**
 * VeltoRect_IsRectsIntersect: whether two rectangles meet. Positive rectangles intersect when they
 * overlap with some area (sharing only an edge is not enough). A rectangle of zero (or negative) width
 * or height is taken as a line: it intersects the other rectangle when it lies within the other's span
 * across the line and one of its end points (origin or maximum corner) lies in the other rectangle,
 * minimum edges included and maximum edges excluded. So a line crossing a rectangle with both ends
 * outside does not intersect it.
 */
[[nodiscard]] VELTOCORE_EXPORT bool VeltoRect_IsRectsIntersect(VeltoRect a, VeltoRect b);

/**
 * VeltoRect_UnionRects: the bounding rectangle of \a a and \a b. Lines and points widen the union like
 * any rectangle; a non-positive rectangle with the null coordinate as x or y (VeltoNullRect) is absent
 * and the other one is returned as it is. The union of two absent rectangles is \a b.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_UnionRects(VeltoRect a, VeltoRect b);

/**
 * VeltoRect_IntersectionRect: the common part of \a a and \a b.
 * - Two positive rectangles: their overlap, or VeltoZeroRect when they do not overlap (also when they
 *   only touch).
 * - Otherwise (a line or a point is involved): VeltoNullRect when either is absent (see
 *   VeltoRect_UnionRects) or when they do not meet; touching counts as meeting, giving a zero-width or
 *   zero-height result on the shared edge, and a point or line inside a rectangle gives itself.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_IntersectionRect(VeltoRect a, VeltoRect b);

/**
 * VeltoRect_ClipStartOfRect: removes up to \a dx from the minimum-x side and up to \a dy from the
 * minimum-y side (the origin moves, the size shrinks, never below 0). Amounts of 0 or less do nothing.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_ClipStartOfRect(VeltoRect rect, double dx, double dy);

/// VeltoRect_ClipEndOfRect: as VeltoRect_ClipStartOfRect(), but from the maximum sides: the origin stays.
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoRect_ClipEndOfRect(VeltoRect rect, double dx, double dy);

/**
 * VeltoRect_SubtractRects: the parts of \a a not covered by \a b, as up to four strips.
 *
 * When \a b is not positive or does not intersect \a a, \a below is \a a, the other three are
 * VeltoZeroRect, and the result is true. Otherwise each strip is VeltoZeroRect unless that side of \a a
 * reaches beyond \a b:
 * - below = (a.x, a.y, a.width, b.y − a.y) and above = (a.x, maxY(b), a.width, maxY(a) − maxY(b)) span
 *   the full width of \a a;
 * - left = (a.x, b.y, b.x − a.x, b.height) and right = (maxX(b), b.y, maxX(a) − maxX(b), b.height) take
 *   b's y and height as they are: where \a b reaches beyond \a a vertically, so do these two strips.
 *
 * Any output pointer may be null; that strip is then not written.
 * \return false only when \a b covers \a a entirely (all four strips are zero).
 */
VELTOCORE_EXPORT bool VeltoRect_SubtractRects(VeltoRect *below, VeltoRect *right, VeltoRect *above,
                                              VeltoRect *left, VeltoRect a, VeltoRect b);

/// VeltoIsEqualDisplayPoints: |Δx| < 0.1 and |Δy| < 0.1.
[[nodiscard]] VELTOCORE_EXPORT bool VeltoIsEqualDisplayPoints(VeltoPoint a, VeltoPoint b);

/// VeltoIsEqualDisplaySizes: |Δwidth| < 0.1 and |Δheight| < 0.1.
[[nodiscard]] VELTOCORE_EXPORT bool VeltoIsEqualDisplaySizes(VeltoSize a, VeltoSize b);

/**
 * VeltoIsEqualDisplayRects: |Δx| + |Δwidth| < 0.1 and |Δy| + |Δheight| < 0.1: per axis, origin and size
 * share one tolerance. (0, 0, 10, 10) and (0.06, 0, 10.06, 10) differ by 0.12 on x and are not equal.
 */
[[nodiscard]] VELTOCORE_EXPORT bool VeltoIsEqualDisplayRects(VeltoRect a, VeltoRect b);

/**
 * VeltoIntegralDisplayRect: \a rect moved onto the pixel grid for one-unit strokes. Per axis, with
 * d = floor(v) + 0.5 − v for the origin coordinate v: the origin becomes floor(v) + 0.5 (the centre of
 * its pixel) and the size floor(size − d). (1.2, 3.7, 10, 5) gives (1.5, 3.5, 9, 5).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRect VeltoIntegralDisplayRect(VeltoRect rect);

/**
 * VeltoIntegralDisplayCoordinateForThickness: where to put a line of \a thickness near \a coordinate so
 * that it covers whole pixels.
 * - When the integer part of \a thickness (truncated toward zero) is even, or negative and odd, and
 *   \a thickness is not 0: \a coordinate rounded to the nearest integer in the current rounding mode
 *   (ties to even by default): (2.5, 2) gives 2, (3.5, 2) gives 4.
 * - Otherwise (0, or an odd positive integer part): with i and f the integer part and the fraction of
 *   \a coordinate (both with its sign), i + 1.5 when |f| > 0.99, else coordinate + 0.5 − |f|. For a
 *   coordinate of 0 or more that is the pixel centre floor(c) + 0.5, or the next centre up when the
 *   fraction is above 0.99: (2.3, 1) gives 2.5, (2.995, 1) gives 3.5. Negative coordinates follow the
 *   same formula and land elsewhere: (−2.3, 1) gives −2.1.
 */
[[nodiscard]] VELTOCORE_EXPORT double VeltoIntegralDisplayCoordinateForThickness(double coordinate, double thickness);

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoGeometryUtil.h"

#include <algorithm>
#include <cmath>

namespace {

// The rectangle tests of the original platform, with the exact edge behaviour the rules below rely on.

bool pointInRect(VeltoPoint p, const VeltoRect &r)
{
    // Minimum edges inside, maximum edges outside.
    return r.origin.x <= p.x && p.x < r.maxX() && r.origin.y <= p.y && p.y < r.maxY();
}

bool positiveRectsOverlap(const VeltoRect &a, const VeltoRect &b)
{
    return a.isPositive() && b.isPositive() && a.origin.x < b.maxX() && b.origin.x < a.maxX()
        && a.origin.y < b.maxY() && b.origin.y < a.maxY();
}

// The rectangle spanning both, read from their origins and maximum corners.
VeltoRect boundingRect(const VeltoRect &a, const VeltoRect &b)
{
    const double x = std::min(a.origin.x, b.origin.x);
    const double y = std::min(a.origin.y, b.origin.y);
    return {x, y, std::max(a.maxX(), b.maxX()) - x, std::max(a.maxY(), b.maxY()) - y};
}

VeltoRect overlapOfPositiveRects(const VeltoRect &a, const VeltoRect &b)
{
    if (!positiveRectsOverlap(a, b))
        return VeltoZeroRect;
    const double x = std::max(a.origin.x, b.origin.x);
    const double y = std::max(a.origin.y, b.origin.y);
    return {x, y, std::min(a.maxX(), b.maxX()) - x, std::min(a.maxY(), b.maxY()) - y};
}

// A degenerate rectangle carrying the null coordinate stands for "no rectangle".
bool isPresent(const VeltoRect &r)
{
    return r.isPositive() || (r.origin.x != VeltoNullRectCoordinate && r.origin.y != VeltoNullRectCoordinate);
}

// Whether \a line, flat across one axis (its extent there is 0 or less), meets \a other: it must lie
// within other's span across that axis and have an end point inside other.
bool lineMeetsRect(const VeltoRect &line, double lineCross, double otherCrossMin, double otherCrossMax,
                   const VeltoRect &other)
{
    return otherCrossMin <= lineCross && lineCross <= otherCrossMax
        && (pointInRect(line.origin, other) || pointInRect(line.maxPoint(), other));
}

// Shrinks one side by up to \a amount; returns how much was taken.
double clipLength(double &length, double amount)
{
    if (amount <= 0)
        return 0;
    const double clipped = std::min(amount, length);
    length -= clipped;
    return clipped;
}

} // namespace

double VeltoDistanceBetweenPoints(VeltoPoint a, VeltoPoint b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

VeltoSize VeltoSize_ConstrainProportionally(VeltoSize size, VeltoSize maxSize)
{
    if (maxSize.width < size.width) {
        size.height *= maxSize.width / size.width;
        size.width = maxSize.width;
    }
    if (maxSize.height < size.height) {
        size.width *= maxSize.height / size.height;
        size.height = maxSize.height;
    }
    return size;
}

VeltoRect VeltoRect_OutsetXY(VeltoRect rect, double dx, double dy)
{
    return {rect.origin.x - dx, rect.origin.y - dy, rect.size.width + 2 * dx, rect.size.height + 2 * dy};
}

VeltoRect VeltoRect_OutsetEdges(double minXOutset, double maxXOutset, double minYOutset, double maxYOutset,
                                VeltoRect rect)
{
    // The y edges only ever grow; the x edges move either way.
    if (minYOutset > 0) {
        rect.origin.y -= minYOutset;
        rect.size.height += minYOutset;
    }
    if (maxYOutset > 0)
        rect.size.height += maxYOutset;
    if (minXOutset != 0) {
        rect.origin.x -= minXOutset;
        rect.size.width += minXOutset;
    }
    if (maxXOutset != 0)
        rect.size.width += maxXOutset;
    return rect;
}

VeltoRect VeltoRect_RectEnclosingPoints(VeltoPoint a, VeltoPoint b)
{
    // On a tie the second point's coordinate is taken; the two are equal then anyway.
    return {a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y, std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

VeltoRect VeltoRect_RectEnclosingRectAndPoint(VeltoPoint point, VeltoRect rect)
{
    return boundingRect(rect, VeltoRect(point, VeltoSize()));
}

bool VeltoRect_IsRectsIntersect(VeltoRect a, VeltoRect b)
{
    if (positiveRectsOverlap(a, b))
        return true;
    return (a.size.height <= 0 && lineMeetsRect(a, a.origin.y, b.origin.y, b.maxY(), b))
        || (b.size.height <= 0 && lineMeetsRect(b, b.origin.y, a.origin.y, a.maxY(), a))
        || (a.size.width <= 0 && lineMeetsRect(a, a.origin.x, b.origin.x, b.maxX(), b))
        || (b.size.width <= 0 && lineMeetsRect(b, b.origin.x, a.origin.x, a.maxX(), a));
}

VeltoRect VeltoRect_UnionRects(VeltoRect a, VeltoRect b)
{
    const bool aPresent = isPresent(a);
    if (aPresent && isPresent(b))
        return boundingRect(a, b);
    return aPresent ? a : b;
}

VeltoRect VeltoRect_IntersectionRect(VeltoRect a, VeltoRect b)
{
    if (a.isPositive() && b.isPositive())
        return overlapOfPositiveRects(a, b);
    if (!isPresent(a) || !isPresent(b))
        return VeltoNullRect;

    // Touching counts here: only a gap makes them miss each other.
    const VeltoRect &left = a.origin.x <= b.origin.x ? a : b;
    const double x = std::max(a.origin.x, b.origin.x);
    if (x > left.maxX())
        return VeltoNullRect;
    const VeltoRect &lower = b.origin.y < a.origin.y ? b : a;
    const VeltoRect &upper = &lower == &a ? b : a;
    const double y = upper.origin.y;
    if (y > lower.maxY())
        return VeltoNullRect;
    return {x, y, std::min(a.maxX(), b.maxX()) - x, std::min(a.maxY(), b.maxY()) - y};
}

VeltoRect VeltoRect_ClipStartOfRect(VeltoRect rect, double dx, double dy)
{
    rect.origin.x += clipLength(rect.size.width, dx);
    rect.origin.y += clipLength(rect.size.height, dy);
    return rect;
}

VeltoRect VeltoRect_ClipEndOfRect(VeltoRect rect, double dx, double dy)
{
    clipLength(rect.size.width, dx);
    clipLength(rect.size.height, dy);
    return rect;
}

bool VeltoRect_SubtractRects(VeltoRect *below, VeltoRect *right, VeltoRect *above, VeltoRect *left,
                             VeltoRect a, VeltoRect b)
{
    VeltoRect strips[4] = {a, VeltoZeroRect, VeltoZeroRect, VeltoZeroRect}; // below, right, above, left
    bool anyStrip = true;
    if (positiveRectsOverlap(a, b)) {
        strips[0] = b.origin.y > a.origin.y ? VeltoRect(a.origin.x, a.origin.y, a.size.width, b.origin.y - a.origin.y)
                                            : VeltoZeroRect;
        strips[1] = a.maxX() > b.maxX() ? VeltoRect(b.maxX(), b.origin.y, a.maxX() - b.maxX(), b.size.height)
                                        : VeltoZeroRect;
        strips[2] = a.maxY() > b.maxY() ? VeltoRect(a.origin.x, b.maxY(), a.size.width, a.maxY() - b.maxY())
                                        : VeltoZeroRect;
        strips[3] = b.origin.x > a.origin.x ? VeltoRect(a.origin.x, b.origin.y, b.origin.x - a.origin.x, b.size.height)
                                            : VeltoZeroRect;
        anyStrip = std::any_of(std::begin(strips), std::end(strips),
                               [](const VeltoRect &strip) { return strip != VeltoZeroRect; });
    }
    VeltoRect *outputs[4] = {below, right, above, left};
    for (int i = 0; i < 4; ++i) {
        if (outputs[i])
            *outputs[i] = strips[i];
    }
    return anyStrip;
}

bool VeltoIsEqualDisplayPoints(VeltoPoint a, VeltoPoint b)
{
    return std::abs(a.x - b.x) < VeltoDisplayTolerance && std::abs(a.y - b.y) < VeltoDisplayTolerance;
}

bool VeltoIsEqualDisplaySizes(VeltoSize a, VeltoSize b)
{
    return std::abs(a.width - b.width) < VeltoDisplayTolerance
        && std::abs(a.height - b.height) < VeltoDisplayTolerance;
}

bool VeltoIsEqualDisplayRects(VeltoRect a, VeltoRect b)
{
    return std::abs(a.origin.x - b.origin.x) + std::abs(a.size.width - b.size.width) < VeltoDisplayTolerance
        && std::abs(a.origin.y - b.origin.y) + std::abs(a.size.height - b.size.height) < VeltoDisplayTolerance;
}

VeltoRect VeltoIntegralDisplayRect(VeltoRect rect)
{
    // Origins go to pixel centres, so that one-unit strokes along the edges cover whole pixels.
    const auto snap = [](double &origin, double &length) {
        const double centre = std::floor(origin) + 0.5;
        length = std::floor(length - (centre - origin));
        origin = centre;
    };
    snap(rect.origin.x, rect.size.width);
    snap(rect.origin.y, rect.size.height);
    return rect;
}

double VeltoIntegralDisplayCoordinateForThickness(double coordinate, double thickness)
{
    // fmod keeps the dividend's sign: negative odd thicknesses leave −1 and count as even.
    if (thickness != 0 && std::fmod(std::trunc(thickness), 2.0) != 1.0)
        return std::nearbyint(coordinate);
    double integral = 0;
    const double fraction = std::abs(std::modf(coordinate, &integral));
    if (fraction > 0.99)
        return integral + 1.5;
    return coordinate + 0.5 - fraction;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTRoundedRectRegionBuilder_p.h"

#include "VeltoGeometryUtil.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace {

QPointF rotated(QPointF v, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {v.x() * c - v.y() * s, v.x() * s + v.y() * c};
}

double crossProduct(QPointF a, QPointF b)
{
    return a.x() * b.y() - a.y() * b.x();
}

// The arc of a circle of \a radius tangent to the line from the path's current point to \a corner and
// to the line from \a corner to \a toward (PostScript's arct, the platform path's "arc from point to
// point"), preceded by a line to its first tangent point. Where no such circle exists (a radius of 0 or
// less, the current point or \a toward on the corner, all three points on one line) a line goes to the
// corner instead: the corner stays sharp. The arc is drawn as one cubic per quarter turn or less.
void appendArc(QPainterPath &path, QPointF corner, QPointF toward, double radius)
{
    const QPointF back = path.currentPosition() - corner;
    const QPointF ahead = toward - corner;
    const double backLength = std::hypot(back.x(), back.y());
    const double aheadLength = std::hypot(ahead.x(), ahead.y());
    if (!(radius > 0) || backLength == 0 || aheadLength == 0 || crossProduct(back, ahead) == 0) {
        path.lineTo(corner);
        return;
    }
    const QPointF u1 = back / backLength;
    const QPointF u2 = ahead / aheadLength;
    const double cosCorner = QPointF::dotProduct(u1, u2);
    const double sinCorner = std::abs(crossProduct(u1, u2));
    // radius / tan(corner / 2), exact for the right angles of rectangle outlines.
    const double tangentLength = radius * (1 + cosCorner) / sinCorner;
    const QPointF start = corner + u1 * tangentLength;
    const QPointF end = corner + u2 * tangentLength;
    path.lineTo(start);

    const QPointF centre = start + (u2 - u1 * cosCorner) / sinCorner * radius;
    const double sense = crossProduct(start - centre, end - centre) > 0 ? 1 : -1;
    const double turn = std::numbers::pi - std::acos(std::clamp(cosCorner, -1.0, 1.0));
    const int pieces = std::max(1, int(std::ceil(turn / (std::numbers::pi / 2) - 1e-9)));
    const double step = turn / pieces;
    const double handle = 4.0 / 3.0 * std::tan(step / 4) * radius;
    QPointF from = start;
    QPointF fromDirection = -u1;
    for (int piece = 1; piece <= pieces; ++piece) {
        const bool last = piece == pieces;
        const QPointF to = last ? end : centre + rotated(start - centre, sense * step * piece);
        const QPointF toDirection = last ? u2 : rotated((to - centre) / radius, sense * std::numbers::pi / 2);
        path.cubicTo(from + fromDirection * handle, to - toDirection * handle, to);
        from = to;
        fromDirection = toDirection;
    }
}

} // namespace

VTRoundedRectRegionBuilder::VTRoundedRectRegionBuilder(VeltoPoint origin, double radius)
{
    resetWithOrigin(origin, radius);
}

void VTRoundedRectRegionBuilder::resetWithOrigin(VeltoPoint origin, double radius)
{
    m_path = QPainterPath();
    m_path.setFillRule(Qt::WindingFill); // the platform path's default: overlapping outlines fill as one
    m_hasPath = true;
    m_firstPt = origin;
    m_lastPt = origin;
    m_count = 1;
    m_radius = radius;
    m_isDisableArc = radius == 0;
}

void VTRoundedRectRegionBuilder::moveHorizontallyTo(double x)
{
    move(Axis::Horizontal, x);
}

void VTRoundedRectRegionBuilder::moveVerticallyTo(double y)
{
    move(Axis::Vertical, y);
}

void VTRoundedRectRegionBuilder::move(Axis axis, double target)
{
    const bool vertical = axis == Axis::Vertical;
    const double from = vertical ? m_lastPt.y : m_lastPt.x;
    const double distance = std::abs(target - from);
    if (distance < VeltoDisplayTolerance)
        return;

    const auto onSide = [&](double coordinate) {
        return vertical ? VeltoPoint(m_lastPt.x, coordinate) : VeltoPoint(coordinate, m_lastPt.y);
    };
    const double sign = target > from ? 1 : -1;
    const VeltoPoint nearEnd = onSide(from + sign * m_radius);
    VeltoPoint sideEnd = onSide(target - sign * m_radius);

    if (++m_count == 2) {
        m_firstArcPt = nearEnd;
        moveTo(nearEnd);
    } else if (vertical != m_lastMoveVertical) {
        // A side too short for the rounding keeps its starting corner sharp here and, through
        // m_isDisableArc, its ending corner at the next turn.
        if (distance < m_radius || m_isDisableArc) {
            lineTo(m_lastPt);
            sideEnd = onSide(target);
        } else {
            arcFrom(m_lastPt, nearEnd);
        }
        m_isDisableArc = distance < m_radius;
    }
    lineTo(sideEnd);

    m_lastPt = onSide(target);
    m_lastMoveVertical = vertical;
}

QPainterPath VTRoundedRectRegionBuilder::finalizedBezierPath()
{
    if (!VeltoIsEqualDisplayPoints(m_lastPt, m_firstPt)) {
        if (std::abs(m_lastPt.x - m_firstPt.x) < VeltoDisplayTolerance)
            moveVerticallyTo(m_firstPt.y);
        else
            moveHorizontallyTo(m_firstPt.y); // the origin's y as the target x: kept, outlines depend on it
    }
    if (m_hasPath && m_path.elementCount() > 0) {
        arcFrom(m_firstPt, m_firstArcPt);
        m_path.closeSubpath();
    }
    m_hasPath = false;
    return std::exchange(m_path, QPainterPath());
}

void VTRoundedRectRegionBuilder::moveTo(VeltoPoint point)
{
    if (m_hasPath)
        m_path.moveTo(point);
}

void VTRoundedRectRegionBuilder::lineTo(VeltoPoint point)
{
    if (m_hasPath)
        m_path.lineTo(point);
}

void VTRoundedRectRegionBuilder::arcFrom(VeltoPoint corner, VeltoPoint toward)
{
    if (m_hasPath)
        appendArc(m_path, corner, toward, m_radius);
}

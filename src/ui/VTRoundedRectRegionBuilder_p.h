// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Walks the outline of a rectangle, or of a region made of rectangles, as strictly horizontal and
// vertical moves, and builds a closed QPainterPath whose corners are rounded with one radius. A corner
// stays sharp where a side is shorter than the radius: both corners of such a side are left square.
//
//   VTRoundedRectRegionBuilder builder({x, y}, 6);
//   builder.moveHorizontallyTo(x + w);
//   builder.moveVerticallyTo(y + h);
//   builder.moveHorizontallyTo(x);
//   QPainterPath outline = builder.finalizedBezierPath();   // closes vertically back to y
//
// velto::roundedBezierPathWithRects() (PainterPath+VeltoCore.h) is the public way to use it.

#include "veltocoregui_export.h"

#include "VeltoPoint.h"

#include <QPainterPath>

class VELTOCOREGUI_TESTS_EXPORT VTRoundedRectRegionBuilder
{
public:
    /// initWithOrigin: resetWithOrigin(origin, radius).
    VTRoundedRectRegionBuilder(VeltoPoint origin, double radius);

    /// resetWithOrigin: starts a new walk at \a origin with a new empty path. A radius of 0 keeps
    /// every corner sharp.
    void resetWithOrigin(VeltoPoint origin, double radius);

    /// moveHorizontallyTo: walks from the current point to (x, current y). Moves shorter than 0.1 are
    /// ignored entirely.
    void moveHorizontallyTo(double x);
    /// moveVerticallyTo: walks from the current point to (current x, y). Moves shorter than 0.1 are
    /// ignored entirely.
    void moveVerticallyTo(double y);

    /**
     * finalizedBezierPath: closes the walk back to its origin and hands the path over; the builder holds
     * no path until the next reset (moves made before then are walked but draw nothing, and finalising
     * again gives an empty path). A walk still at its origin is closed where it is. A walk whose x is
     * the origin's closes with a vertical move; any other walk closes with a horizontal move that is
     * given the origin's y as its target x (a long-standing rule of this walk, kept so that outlines stay
     * the same). The starting corner is always rounded with the builder's radius. A walk without any
     * accepted move has nothing to close and gives an empty path.
     */
    [[nodiscard]] QPainterPath finalizedBezierPath();

    /// count: 1 after a reset, plus one for each accepted move.
    [[nodiscard]] int count() const { return m_count; }
    /// lastPoint: the corner the walk has reached.
    [[nodiscard]] VeltoPoint lastPoint() const { return m_lastPt; }
    /// radius: the corner radius of this walk.
    [[nodiscard]] double radius() const { return m_radius; }

private:
    enum class Axis { Horizontal, Vertical };
    void move(Axis axis, double target);

    // The path operations; after finalizedBezierPath() they do nothing until the next reset.
    void moveTo(VeltoPoint point);
    void lineTo(VeltoPoint point);
    void arcFrom(VeltoPoint corner, VeltoPoint toward);

    QPainterPath m_path;
    bool m_hasPath = false;
    VeltoPoint m_firstPt;
    VeltoPoint m_lastPt;
    int m_count = 1;
    double m_radius = 0;
    bool m_isDisableArc = false;
    VeltoPoint m_firstArcPt;
    bool m_lastMoveVertical = false;
};

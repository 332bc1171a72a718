// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's geometry stop: rectangle arithmetic with lines, points and the null rectangle, and
// snapping to the pixel grid. (The rounded outlines are drawn by VeltoCoreGui; docs/images shows them.)

#include "Commands.h"
#include "Tour.h"

#include "VeltoGeometryUtil.h"

using namespace Qt::StringLiterals;

namespace {

QString shown(const VeltoRect &rect)
{
    if (rect == VeltoNullRect)
        return u"null rectangle"_s;
    return u"(%1, %2, %3, %4)"_s.arg(rect.origin.x).arg(rect.origin.y).arg(rect.size.width).arg(rect.size.height);
}

void geometryStop(Tour &tour)
{
    tour.stop(u"Rectangles, lines, points and the pixel grid"_s);
    const VeltoRect square(0, 0, 10, 10);

    tour.say(u"collecting changed areas, starting from the null rectangle:"_s);
    VeltoRect dirty = VeltoNullRect;
    for (const VeltoRect &changed : {VeltoRect(4, 4, 2, 2), VeltoRect(12, 1, 0, 8), VeltoRect(-3, 6, 0, 0)}) {
        dirty = VeltoRect_UnionRects(dirty, changed);
        tour.say(u"  + %1 -> %2"_s.arg(shown(changed).leftJustified(16), shown(dirty)));
    }

    tour.say(u"the square %1 meets:"_s.arg(shown(square)));
    for (const VeltoRect &other : {VeltoRect(10, 0, 5, 5), VeltoRect(2, 5, 3, 0), VeltoRect(-5, 5, 30, 0),
                                   VeltoRect(20, 20, 0, 0)}) {
        tour.say(u"  %1 intersects: %2, intersection %3"_s
                     .arg(shown(other).leftJustified(16),
                          (VeltoRect_IsRectsIntersect(square, other) ? u"yes"_s : u"no "_s),
                          shown(VeltoRect_IntersectionRect(square, other))));
    }

    VeltoRect below, right, above, left;
    const VeltoRect hole(2, -3, 3, 8);
    (void)VeltoRect_SubtractRects(&below, &right, &above, &left, square, hole);
    tour.say(u"the square minus %1 leaves the strips"_s.arg(shown(hole)));
    tour.say(u"  below %1, right %2, above %3, left %4"_s.arg(shown(below), shown(right), shown(above), shown(left)));
    tour.say(u"  (the side strips keep the hole's y and height, reaching below the square)"_s);

    tour.say(u"pixel grid: %1 snaps to %2"_s.arg(shown({1.2, 3.7, 10, 5}),
                                                 shown(VeltoIntegralDisplayRect({1.2, 3.7, 10, 5}))));
    QStringList placements;
    for (const auto &[coordinate, thickness] : {std::pair{2.3, 1.0}, {2.995, 1.0}, {2.5, 2.0}, {3.5, 2.0}, {-2.3, 1.0}})
        placements << u"%1 at %2 -> %3"_s.arg(thickness).arg(coordinate).arg(
            VeltoIntegralDisplayCoordinateForThickness(coordinate, thickness));
    tour.say(u"lines of thickness t near c: "_s + placements.join(u"; "_s));
    tour.say(u"(0, 0, 10, 10) and (0.06, 0, 10.06, 10) look the same on screen: %1 (0.12 apart on x)"_s
                 .arg(VeltoIsEqualDisplayRects(square, {0.06, 0, 10.06, 10}) ? u"yes"_s : u"no"_s));
}

const bool registered = registerTourStop(700, geometryStop);

} // namespace

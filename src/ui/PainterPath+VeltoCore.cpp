// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "PainterPath+VeltoCore.h"

#include "VTRoundedRectRegionBuilder_p.h"

#include <algorithm>
#include <span>

namespace velto {

QPainterPath roundedBezierPathWithRects(const VeltoRect *rects, qsizetype count, double radius)
{
    QPainterPath result;
    result.setFillRule(Qt::WindingFill);
    if (count <= 0)
        return result;

    VTRoundedRectRegionBuilder builder({}, radius);
    for (const VeltoRect &rect : std::span(rects, size_t(count))) {
        const double shorterSide = std::min(rect.size.width, rect.size.height);
        const double usedRadius = shorterSide < 2 * radius ? shorterSide * 0.5 : radius;
        // Roundings of 2 units or less are hardly visible; those rectangles keep square corners.
        if (usedRadius > 2.0) {
            builder.resetWithOrigin(rect.origin, usedRadius);
            builder.moveHorizontallyTo(rect.maxX());
            builder.moveVerticallyTo(rect.maxY());
            builder.moveHorizontallyTo(rect.origin.x);
            result.addPath(builder.finalizedBezierPath());
        } else {
            result.addRect(rect);
        }
    }
    return result;
}

QPainterPath roundedBezierPathWithRect(const VeltoRect &rect, double radius)
{
    return roundedBezierPathWithRects(&rect, 1, radius);
}

} // namespace velto

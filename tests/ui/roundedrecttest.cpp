// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "PainterPath+VeltoCore.h"
#include "VTRoundedRectRegionBuilder_p.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

// The path's elements as letters: M move, L line, C curve (its three points count once).
QString shape(const QPainterPath &path)
{
    QString letters;
    for (int i = 0; i < path.elementCount(); ++i) {
        if (const auto type = path.elementAt(i).type; type != QPainterPath::CurveToDataElement)
            letters += u"MLC"_s.at(type);
    }
    return letters;
}

// The points the outline passes through (ends of moves, lines and curves), in order.
QList<QPointF> corners(const QPainterPath &path)
{
    QList<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        if (e.type == QPainterPath::CurveToElement)
            i += 2;
        points.append(path.elementAt(i));
    }
    return points;
}

// Radii of the circles through each curve's start, middle (t = 0.5) and end: a circular arc gives its radius.
QList<double> curveRadii(const QPainterPath &path)
{
    QList<double> radii;
    for (int i = 1; i < path.elementCount(); ++i) {
        if (path.elementAt(i).type != QPainterPath::CurveToElement)
            continue;
        const QPointF p0 = path.elementAt(i - 1), c1 = path.elementAt(i), c2 = path.elementAt(i + 1),
                      p3 = path.elementAt(i + 2);
        const QPointF mid = (p0 + 3 * c1 + 3 * c2 + p3) / 8;
        const double a = QLineF(p0, mid).length(), b = QLineF(mid, p3).length(), c = QLineF(p0, p3).length();
        const QPointF u = mid - p0, v = p3 - p0;
        const double doubleArea = std::abs(u.x() * v.y() - v.x() * u.y());
        radii.append(a * b * c / (2 * doubleArea));
    }
    return radii;
}

// The walk of a rectangle, as roundedBezierPathWithRects() makes it, with a builder of any radius.
QPainterPath walkedRect(const VeltoRect &r, double radius)
{
    VTRoundedRectRegionBuilder builder(r.origin, radius);
    builder.moveHorizontallyTo(r.maxX());
    builder.moveVerticallyTo(r.maxY());
    builder.moveHorizontallyTo(r.origin.x);
    return builder.finalizedBezierPath();
}

// A region with a step: its 3-unit side is shorter than the radius 5.
QPainterPath steppedRegion()
{
    VTRoundedRectRegionBuilder builder({0, 0}, 5);
    builder.moveHorizontallyTo(100);
    builder.moveVerticallyTo(20);
    builder.moveHorizontallyTo(97);
    builder.moveVerticallyTo(40);
    builder.moveHorizontallyTo(0);
    return builder.finalizedBezierPath();
}

const QList<VeltoRect> selectionLines = {{40, 0, 160, 24}, {0, 24, 220, 24}, {0, 48, 90, 24}};

struct Panel
{
    QString label;
    QPainterPath path;
    double scale;
};

// Draws the panels side by side, each scaled up under its label; on-curve points are marked red.
QImage render(const QList<Panel> &panels)
{
    constexpr int margin = 24, labelHeight = 22;
    QImage image(1, 1, QImage::Format_ARGB32);
    const QFontMetricsF metrics(QPainter(&image).font());
    const auto panelWidth = [&](const Panel &panel) {
        return std::max(panel.path.boundingRect().width() * panel.scale, metrics.horizontalAdvance(panel.label));
    };
    double width = margin, height = 0;
    for (const Panel &panel : panels) {
        width += panelWidth(panel) + margin;
        height = std::max(height, panel.path.boundingRect().height() * panel.scale);
    }
    image = QImage(int(width), int(height) + 2 * margin + labelHeight, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    double x = margin;
    for (const Panel &panel : panels) {
        const QRectF bounds = panel.path.boundingRect();
        painter.setPen(Qt::black);
        painter.drawText(QRectF(x, 4, panelWidth(panel), labelHeight), panel.label);
        painter.save();
        painter.translate(x - bounds.x() * panel.scale, margin + labelHeight - bounds.y() * panel.scale);
        painter.scale(panel.scale, panel.scale);
        painter.setPen(QPen(QColor(20, 60, 160), 1.5 / panel.scale));
        painter.setBrush(QColor(120, 170, 240, 120));
        painter.drawPath(panel.path);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(200, 40, 40));
        for (const QPointF &point : corners(panel.path))
            painter.drawEllipse(point, 2.5 / panel.scale, 2.5 / panel.scale);
        painter.restore();
        x += panelWidth(panel) + margin;
    }
    return image;
}

} // namespace

class RoundedRectTest : public QObject
{
    Q_OBJECT

private slots:
    void tinyMoveChangesNothing()
    {
        VTRoundedRectRegionBuilder builder({0, 0}, 4);
        builder.moveHorizontallyTo(0.09);
        builder.moveVerticallyTo(-0.099);
        QCOMPARE(builder.count(), 1);
        QVERIFY(builder.finalizedBezierPath().isEmpty());
        builder.resetWithOrigin({0, 0}, 4);
        builder.moveHorizontallyTo(0.1);
        QCOMPARE(builder.count(), 2);
        QCOMPARE(builder.lastPoint(), VeltoPoint(0.1, 0));
    }

    void rectangleHasFourArcsOfTheRadius()
    {
        const QPainterPath path = velto::roundedBezierPathWithRect({0, 0, 100, 20}, 5);
        QCOMPARE(shape(path), u"MLCLCLCLC"_s);
        const QList<QPointF> expected = {{5, 0}, {95, 0}, {100, 5}, {100, 15}, {95, 20},
                                         {5, 20}, {0, 15}, {0, 5},   {5, 0}};
        QCOMPARE(corners(path), expected);
        for (const double radius : curveRadii(path))
            QVERIFY2(std::abs(radius - 5) < 0.01, QByteArray::number(radius).constData());
    }

    void radiusShrinksToHalfTheShorterSide()
    {
        const QPainterPath path = velto::roundedBezierPathWithRect({0, 0, 100, 20}, 15);
        // The 20-unit sides are all rounding: their lines have no length and are left out.
        QCOMPARE(shape(path), u"MLCCLCC"_s);
        QCOMPARE(QPointF(path.elementAt(0)), QPointF(10, 0));
        for (const double radius : curveRadii(path))
            QVERIFY(std::abs(radius - 10) < 0.02);
    }

    void smallRoundingGivesThePlainRectangle()
    {
        // Radius min(3, 3) / 2 = 1.5 is not above 2.
        QPainterPath plain;
        plain.setFillRule(Qt::WindingFill);
        plain.addRect(0, 0, 3, 3);
        QCOMPARE(velto::roundedBezierPathWithRect({0, 0, 3, 3}, 5), plain);
        QCOMPARE(shape(velto::roundedBezierPathWithRect({0, 0, 4, 40}, 5)), u"MLLLL"_s);
        QCOMPARE(shape(velto::roundedBezierPathWithRect({0, 0, 4.5, 40}, 5)), u"MCLCCLC"_s); // radius 2.25
    }

    void radiusZeroAndShortSidesKeepCornersSharp()
    {
        QCOMPARE(corners(walkedRect({0, 0, 100, 20}, 0)), (QList<QPointF>{{0, 0}, {100, 0}, {100, 20}, {0, 20}, {0, 0}}));

        const QPainterPath path = steppedRegion();
        // The 3-unit side from (100, 20) to (97, 20) keeps both its corners; its next side then runs to the
        // corner itself, which leaves no room for the rounding at (97, 40) either.
        QCOMPARE(shape(path), u"MLCLLLLLCLC"_s);
        const QList<QPointF> expected = {{5, 0},   {95, 0}, {100, 5}, {100, 15}, {100, 20}, {97, 20},
                                         {97, 40}, {5, 40}, {0, 35},  {0, 5},    {5, 0}};
        QCOMPARE(corners(path), expected);
    }

    void horizontalCloseTakesTheOriginsY()
    {
        VTRoundedRectRegionBuilder builder({10, 30}, 4);
        builder.moveVerticallyTo(60);
        builder.moveHorizontallyTo(70);
        const QPainterPath path = builder.finalizedBezierPath();
        // The closing move went horizontally to x = 30, the origin's y.
        QCOMPARE(builder.lastPoint(), VeltoPoint(30, 60));
        QCOMPARE(QPointF(path.elementAt(0)), QPointF(10, 34));
        QCOMPARE(corners(path).constLast(), corners(path).constFirst()); // closed
        for (const double radius : curveRadii(path))
            QVERIFY2(std::abs(radius - 4) < 0.04, QByteArray::number(radius).constData());
        // Finalizing hands the path over: moves after it build nothing.
        builder.moveVerticallyTo(20);
        QCOMPARE(builder.finalizedBezierPath().elementCount(), 0);
    }

    void severalRectanglesMakeOnePath()
    {
        const QPainterPath path = velto::roundedBezierPathWithRects(selectionLines.constData(), selectionLines.size(), 6);
        QCOMPARE(shape(path), u"MLCLCLCLC"_s.repeated(3));
        QCOMPARE(QPointF(path.elementAt(17)), QPointF(6, 24));
        // Winding fill: where two outlines overlap the region stays filled instead of cancelling out.
        const VeltoRect overlapping[] = {{0, 0, 50, 50}, {25, 25, 50, 50}};
        QVERIFY(velto::roundedBezierPathWithRects(overlapping, 2, 6).contains(QPointF(40, 40)));
        QVERIFY(velto::roundedBezierPathWithRects(nullptr, 0, 6).isEmpty());
    }

    void outlinesDraw()
    {
        VTRoundedRectRegionBuilder quirk({10, 30}, 4);
        quirk.moveVerticallyTo(60);
        quirk.moveHorizontallyTo(70);
        const QList<Panel> rects = {
            {u"100 x 20, radius 5"_s, velto::roundedBezierPathWithRect({0, 0, 100, 20}, 5), 3},
            {u"100 x 20, radius 15 (uses 10)"_s, velto::roundedBezierPathWithRect({0, 0, 100, 20}, 15), 3},
            {u"3 x 3, radius 5 (plain)"_s, velto::roundedBezierPathWithRect({0, 0, 3, 3}, 5), 15},
            {u"60 x 30 walked with radius 0"_s, walkedRect({0, 0, 60, 30}, 0), 2},
        };
        const QList<Panel> regions = {
            {u"three selection lines, radius 6"_s,
             velto::roundedBezierPathWithRects(selectionLines.constData(), selectionLines.size(), 6), 2},
            {u"a 3-unit step, radius 5"_s, steppedRegion(), 3},
            {u"walk closed horizontally to x = origin's y"_s, quirk.finalizedBezierPath(), 4},
        };
        const QImage rectsImage = render(rects);
        const QImage regionsImage = render(regions);

        // The rounded corner leaves the rectangle's corner pixel white while its middle is filled.
        const int top = 24 + 22;
        QCOMPARE(rectsImage.pixelColor(24 + 1, top + 1), QColor(Qt::white));
        QVERIFY(rectsImage.pixelColor(24 + 150, top + 30) != QColor(Qt::white));

        if (qEnvironmentVariableIntValue("VELTO_WRITE_IMAGES") == 1) {
            QVERIFY(QDir().mkpath(QStringLiteral(VELTO_IMAGES_DIR)));
            QVERIFY(rectsImage.save(QStringLiteral(VELTO_IMAGES_DIR "/rounded-rects.png")));
            QVERIFY(regionsImage.save(QStringLiteral(VELTO_IMAGES_DIR "/rounded-regions.png")));
        }
    }
};

QTEST_MAIN(RoundedRectTest)
#include "roundedrecttest.moc"

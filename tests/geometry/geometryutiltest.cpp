// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoGeometryUtil.h"

#include "veltotest.h"
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

QString text(const VeltoRect &r)
{
    return u"(%1, %2, %3, %4)"_s.arg(r.origin.x).arg(r.origin.y).arg(r.size.width).arg(r.size.height);
}

char *toString(const VeltoRect &r)
{
    return QTest::toString(text(r));
}

namespace {

// Area of the common part of two rectangles, zero when they only touch or miss: the plain model.
double overlapArea(const VeltoRect &a, const VeltoRect &b)
{
    const double w = std::min(a.maxX(), b.maxX()) - std::max(a.origin.x, b.origin.x);
    const double h = std::min(a.maxY(), b.maxY()) - std::max(a.origin.y, b.origin.y);
    return w > 0 && h > 0 ? w * h : 0;
}

bool contains(const VeltoRect &outer, const VeltoRect &inner)
{
    return outer.origin.x <= inner.origin.x && outer.origin.y <= inner.origin.y && inner.maxX() <= outer.maxX()
        && inner.maxY() <= outer.maxY();
}

bool strictlyInside(VeltoPoint p, const VeltoRect &r)
{
    return r.origin.x < p.x && p.x < r.maxX() && r.origin.y < p.y && p.y < r.maxY();
}

// Small whole numbers make touching and shared edges common; sizes may be zero.
VeltoRect randomRect(QRandomGenerator &random, bool positive)
{
    const auto coordinate = [&] { return double(random.bounded(-8, 9)); };
    const auto length = [&] { return double(random.bounded(positive ? 1 : 0, 9)); };
    return {coordinate(), coordinate(), length(), length()};
}

struct RectRow
{
    VeltoRect a, b, expected;
};

} // namespace

class GeometryUtilTest : public QObject
{
    Q_OBJECT

private slots:
    void sizesPointsAndOutsets()
    {
        // Too wide; fits (never grown); too wide and too tall, the width first.
        QCOMPARE(QSizeF(VeltoSize_ConstrainProportionally({200, 100}, {100, 100})), QSizeF(100, 50));
        QCOMPARE(QSizeF(VeltoSize_ConstrainProportionally({50, 50}, {100, 100})), QSizeF(50, 50));
        QCOMPARE(QSizeF(VeltoSize_ConstrainProportionally({400, 200}, {200, 50})), QSizeF(100, 50));
        QCOMPARE(VeltoDistanceBetweenPoints({1, 1}, {4, 5}), 5.0);

        const VeltoRect r(10, 20, 30, 40);
        QCOMPARE(VeltoRect_OutsetXY(r, 1, -2), VeltoRect(9, 22, 32, 36));
        QCOMPARE(VeltoRect_OutsetEdges(1, 2, 3, 4, r), VeltoRect(9, 17, 33, 47));
        // Negative x amounts inset; negative y amounts are ignored.
        QCOMPARE(VeltoRect_OutsetEdges(-1, -2, -3, -4, r), VeltoRect(11, 20, 27, 40));
    }

    void enclosingAndClipping()
    {
        QCOMPARE(VeltoRect_RectEnclosingPoints({5, 1}, {2, 7}), VeltoRect(2, 1, 3, 6));
        QCOMPARE(VeltoRect_RectEnclosingRectAndPoint({20, -5}, VeltoRect(0, 0, 10, 10)), VeltoRect(0, -5, 20, 15));
        QCOMPARE(VeltoRect_RectEnclosingRectAndPoint({5, 5}, VeltoRect(0, 0, 10, 10)), VeltoRect(0, 0, 10, 10));

        const VeltoRect r(10, 20, 30, 40);
        QCOMPARE(VeltoRect_ClipStartOfRect(r, 5, 10), VeltoRect(15, 30, 25, 30));
        QCOMPARE(VeltoRect_ClipEndOfRect(r, 5, 10), VeltoRect(10, 20, 25, 30));
        QCOMPARE(VeltoRect_ClipStartOfRect(r, 100, -3), VeltoRect(40, 20, 0, 40));
        QCOMPARE(VeltoRect_ClipEndOfRect(r, 0, 100), VeltoRect(10, 20, 30, 0));
    }

    void intersectTestOnLinesAndPoints()
    {
        // Positive rectangles are compared with the overlap model below; lines and points follow their own rule.
        const VeltoRect square(0, 0, 10, 10);
        QVERIFY(!VeltoRect_IsRectsIntersect({-5, 5, 20, 0}, square)); // crossing, both ends outside
        QVERIFY(VeltoRect_IsRectsIntersect({2, 5, 20, 0}, square));   // starting inside
        QVERIFY(VeltoRect_IsRectsIntersect(square, {2, 5, 20, 0}));   // as the second argument
        QVERIFY(VeltoRect_IsRectsIntersect({-5, 5, 10, 0}, square));  // ending inside
        QVERIFY(VeltoRect_IsRectsIntersect({2, 0, 3, 0}, square));    // on the minimum edge
        QVERIFY(!VeltoRect_IsRectsIntersect({2, 10, 3, 0}, square));  // on the maximum edge
        QVERIFY(VeltoRect_IsRectsIntersect({4, 4, 0, 0}, square));
        QVERIFY(!VeltoRect_IsRectsIntersect({10, 10, 0, 0}, square)); // point at the maximum corner
        QVERIFY(!VeltoRect_IsRectsIntersect({0, 0, 5, 0}, {0, 0, 0, 5}));
    }

    void unionAndIntersectionOfLinesPointsAndNull()
    {
        const VeltoRect square(0, 0, 10, 10);
        const RectRow unions[] = {
            {VeltoNullRect, {1, 1, 2, 2}, {1, 1, 2, 2}},
            {VeltoZeroRect, {5, 5, 1, 1}, {0, 0, 6, 6}}, // the zero rect is a point at the origin
            {{0, 0, 2, 2}, {5, -1, 1, 1}, {0, -1, 6, 3}},
            {{0, 0, 2, 2}, {1, 8, 4, 0}, {0, 0, 5, 8}}, // a line widens
            {{3, VeltoNullRectCoordinate, -1, 0}, {7, 7, -2, 0}, {7, 7, -2, 0}}, // absent a gives b as it is
            {{3, VeltoNullRectCoordinate, -1, 0}, VeltoNullRect, VeltoNullRect}, // both absent: b
            // A positive rect at the null coordinate is present.
            {{VeltoNullRectCoordinate, 0, 1, 1}, VeltoNullRect, {VeltoNullRectCoordinate, 0, 1, 1}},
        };
        for (const RectRow &row : unions)
            QCOMPARE(VeltoRect_UnionRects(row.a, row.b), row.expected);

        const RectRow intersections[] = {
            {square, {10, 0, 5, 5}, VeltoZeroRect},       // positive, touching
            {square, {2, 5, 3, 0}, {2, 5, 3, 0}},         // a line inside gives itself
            {square, {20, 20, 0, 0}, VeltoNullRect},      // point outside
            {square, {-5, 5, 30, 0}, {0, 5, 10, 0}},      // line clipped
            {square, {10, 2, 0, 3}, {10, 2, 0, 3}},       // line touching the maximum edge
            {VeltoNullRect, square, VeltoNullRect},
            {VeltoZeroRect, square, VeltoZeroRect},
        };
        for (const RectRow &row : intersections)
            QCOMPARE(VeltoRect_IntersectionRect(row.a, row.b), row.expected);
    }

    void subtractRects()
    {
        const VeltoRect a(0, 0, 10, 10), z = VeltoZeroRect;
        const QList<std::tuple<VeltoRect, QList<VeltoRect>, bool>> rows = {
            {{2, 2, 3, 3}, {{0, 0, 10, 2}, {5, 2, 5, 3}, {0, 5, 10, 5}, {0, 2, 2, 3}}, true}, // a hole in the middle
            {{2, 2, 3, 0}, {a, z, z, z}, true},                                             // b a line: below is a
            {{-1, -1, 12, 12}, {z, z, z, z}, false},                                        // b covers a
            // Side strips keep b's y and height, reaching beyond a.
            {{4, -5, 2, 20}, {z, {6, -5, 4, 20}, z, {0, -5, 4, 20}}, true},
        };
        for (const auto &[b, belowRightAboveLeft, result] : rows) {
            VeltoRect below(9, 9, 9, 9), right = below, above = below, left = below;
            QCOMPARE(VeltoRect_SubtractRects(&below, &right, &above, &left, a, b), result);
            QCOMPARE((QList<VeltoRect>{below, right, above, left}), belowRightAboveLeft);
            QCOMPARE(VeltoRect_SubtractRects(nullptr, nullptr, nullptr, nullptr, a, b), result);
        }
    }

    void displayEqualityAndPixelSnapping()
    {
        QVERIFY(VeltoIsEqualDisplayPoints({1, 1}, {1.09, 0.91}));
        QVERIFY(!VeltoIsEqualDisplayPoints({1, 1}, {1, 1.125}));
        QVERIFY(VeltoIsEqualDisplaySizes({10, 10}, {10.05, 9.95}));
        QVERIFY(!VeltoIsEqualDisplaySizes({10, 10}, {10, 10.25}));
        // Origin and size share the tolerance of their axis.
        QVERIFY(!VeltoIsEqualDisplayRects({0, 0, 10, 10}, {0.06, 0, 10.06, 10}));
        QVERIFY(!VeltoIsEqualDisplayRects({0, 0, 10, 10}, {0, 0.05, 10, 10.06}));

        QCOMPARE(VeltoIntegralDisplayRect({1.2, 3.7, 10.0, 5.0}), VeltoRect(1.5, 3.5, 9, 5));
        QCOMPARE(VeltoIntegralDisplayRect({-1.25, -0.75, 4, 4}), VeltoRect(-1.5, -0.5, 4, 3));

        // Coordinate, thickness, snapped coordinate.
        const QList<std::tuple<double, double, double>> rows = {
            {2.3, 1.0, 2.5},    // odd: the pixel centre
            {2.995, 1.0, 3.5},  // a fraction above 0.99 goes to the next centre
            {2.5, 2.0, 2.0},    // even: ties to even, down ...
            {3.5, 2.0, 4.0},    // ... and up
            {2.3, 0.0, 2.5},    // zero thickness: the centre
            {7.0, 3.7, 7.5},    // the odd integer part of 3.7
            {2.7, 0.5, 3.0},    // a thin line rounds: integer part 0
            {2.3, -1.0, 2.0},   // a negative odd thickness rounds
            {-2.3, 1.0, -2.1},  // a negative coordinate keeps the formula
        };
        for (const auto &[coordinate, thickness, expected] : rows)
            QCOMPARE(VeltoIntegralDisplayCoordinateForThickness(coordinate, thickness), expected);
    }

    void randomisedUnionIntersectionAndSubtraction()
    {
        VeltoTestRandom random(20240517);
        for (int round = 0; round < 20000; ++round) {
            const VeltoRect a = randomRect(random, round % 2 == 0);
            const VeltoRect b = randomRect(random, round % 3 != 0);

            const VeltoRect united = VeltoRect_UnionRects(a, b);
            QVERIFY2(contains(united, a) && contains(united, b), qPrintable(text(united)));

            if (!a.isPositive() || !b.isPositive())
                continue;
            const VeltoRect common = VeltoRect_IntersectionRect(a, b);
            const double area = overlapArea(a, b);
            QCOMPARE(VeltoRect_IsRectsIntersect(a, b), area > 0);
            QCOMPARE(common.size.width * common.size.height, area);
            if (area > 0)
                QVERIFY(contains(a, common) && contains(b, common));

            VeltoRect strips[4];
            const bool any = VeltoRect_SubtractRects(&strips[0], &strips[1], &strips[2], &strips[3], a, b);
            if (area == 0) {
                QCOMPARE(strips[0], a);
                continue;
            }
            for (const VeltoRect &strip : strips)
                QVERIFY(strip == VeltoZeroRect || (a.origin.x <= strip.origin.x && strip.maxX() <= a.maxX()));
            // Every point of a outside b lies in exactly one strip; points of b in none.
            bool uncovered = false;
            for (double y = a.origin.y + 0.25; y < a.maxY(); y += 0.5) {
                for (double x = a.origin.x + 0.25; x < a.maxX(); x += 0.5) {
                    const int holders = int(std::count_if(std::begin(strips), std::end(strips),
                                                          [&](const VeltoRect &s) { return strictlyInside({x, y}, s); }));
                    QCOMPARE(holders, strictlyInside({x, y}, b) ? 0 : 1);
                    uncovered = uncovered || holders > 0;
                }
            }
            QCOMPARE(any, uncovered);
        }
    }
};

QTEST_APPLESS_MAIN(GeometryUtilTest)
#include "geometryutiltest.moc"

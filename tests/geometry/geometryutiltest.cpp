#include "VeltoGeometryUtil.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <bit>
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

} // namespace

class GeometryUtilTest : public QObject
{
    Q_OBJECT

private slots:
    void valueTypesConvertToAndFromQt();
    void distanceAndProportionalShrinking_data();
    void distanceAndProportionalShrinking();
    void outsetEdgesActsOnXWhenNonZeroButOnYOnlyWhenPositive();
    void enclosingAndClipping();
    void intersectTest_data();
    void intersectTest();
    void unionRects_data();
    void unionRects();
    void intersectionRect_data();
    void intersectionRect();
    void subtractRects_data();
    void subtractRects();
    void displayEquality();
    void integralDisplayRect_data();
    void integralDisplayRect();
    void integralCoordinateForThickness_data();
    void integralCoordinateForThickness();
    void randomisedUnionIntersectionAndSubtraction();
};

void GeometryUtilTest::valueTypesConvertToAndFromQt()
{
    const VeltoRect rect = QRectF(1.5, -2, 3, 4.25);
    QCOMPARE(rect, VeltoRect(1.5, -2, 3, 4.25));
    QCOMPARE(QRectF(rect), QRectF(1.5, -2, 3, 4.25));
    QCOMPARE(QPointF(VeltoPoint(QPointF(7, 8))), QPointF(7, 8));
    QCOMPARE(QSizeF(VeltoSize(QSizeF(9, 10))), QSizeF(9, 10));
    QCOMPARE(VeltoRect(), VeltoZeroRect);
    QCOMPARE(std::bit_cast<quint64>(VeltoNullRect.origin.x), 0x7FEFFFFFFFFFFFFFULL);
    QCOMPARE(VeltoNullRect.origin.y, VeltoNullRect.origin.x);
    QCOMPARE(VeltoNullRect.size, VeltoSize(0, 0));
}

void GeometryUtilTest::distanceAndProportionalShrinking_data()
{
    QTest::addColumn<VeltoSize>("size");
    QTest::addColumn<VeltoSize>("maximum");
    QTest::addColumn<VeltoSize>("expected");

    QTest::newRow("too wide") << VeltoSize(200, 100) << VeltoSize(100, 100) << VeltoSize(100, 50);
    QTest::newRow("too tall") << VeltoSize(100, 400) << VeltoSize(200, 100) << VeltoSize(25, 100);
    QTest::newRow("fits: never grown") << VeltoSize(50, 50) << VeltoSize(100, 100) << VeltoSize(50, 50);
    QTest::newRow("both, width first") << VeltoSize(400, 200) << VeltoSize(200, 50) << VeltoSize(100, 50);
}

void GeometryUtilTest::distanceAndProportionalShrinking()
{
    QFETCH(VeltoSize, size);
    QFETCH(VeltoSize, maximum);
    QFETCH(VeltoSize, expected);
    QCOMPARE(QSizeF(VeltoSize_ConstrainProportionally(size, maximum)), QSizeF(expected));
    QCOMPARE(VeltoDistanceBetweenPoints({1, 1}, {4, 5}), 5.0);
}

void GeometryUtilTest::outsetEdgesActsOnXWhenNonZeroButOnYOnlyWhenPositive()
{
    const VeltoRect r(10, 20, 30, 40);
    QCOMPARE(VeltoRect_OutsetXY(r, 1, -2), VeltoRect(9, 22, 32, 36));
    QCOMPARE(VeltoRect_OutsetEdges(1, 2, 3, 4, r), VeltoRect(9, 17, 33, 47));
    // Negative x amounts inset; negative y amounts are ignored.
    QCOMPARE(VeltoRect_OutsetEdges(-1, -2, -3, -4, r), VeltoRect(11, 20, 27, 40));
    QCOMPARE(VeltoRect_OutsetEdges(0, 0, 0, 0, r), r);
}

void GeometryUtilTest::enclosingAndClipping()
{
    QCOMPARE(VeltoRect_RectEnclosingPoints({5, 1}, {2, 7}), VeltoRect(2, 1, 3, 6));
    QCOMPARE(VeltoRect_RectEnclosingPoints({-1, 3}, {-1, 3}), VeltoRect(-1, 3, 0, 0));
    QCOMPARE(VeltoRect_RectEnclosingRectAndPoint({20, -5}, VeltoRect(0, 0, 10, 10)), VeltoRect(0, -5, 20, 15));
    QCOMPARE(VeltoRect_RectEnclosingRectAndPoint({5, 5}, VeltoRect(0, 0, 10, 10)), VeltoRect(0, 0, 10, 10));

    const VeltoRect r(10, 20, 30, 40);
    QCOMPARE(VeltoRect_ClipStartOfRect(r, 5, 10), VeltoRect(15, 30, 25, 30));
    QCOMPARE(VeltoRect_ClipEndOfRect(r, 5, 10), VeltoRect(10, 20, 25, 30));
    QCOMPARE(VeltoRect_ClipStartOfRect(r, 100, -3), VeltoRect(40, 20, 0, 40));
    QCOMPARE(VeltoRect_ClipEndOfRect(r, 0, 100), VeltoRect(10, 20, 30, 0));
}

void GeometryUtilTest::intersectTest_data()
{
    QTest::addColumn<VeltoRect>("a");
    QTest::addColumn<VeltoRect>("b");
    QTest::addColumn<bool>("expected");

    const VeltoRect square(0, 0, 10, 10);
    QTest::newRow("touching edges do not") << square << VeltoRect(10, 0, 5, 5) << false;
    QTest::newRow("line crossing, both ends outside") << VeltoRect(-5, 5, 20, 0) << square << false;
    QTest::newRow("line starting inside") << VeltoRect(2, 5, 20, 0) << square << true;
    QTest::newRow("line as second argument") << square << VeltoRect(2, 5, 20, 0) << true;
    QTest::newRow("line ending inside") << VeltoRect(-5, 5, 10, 0) << square << true;
    QTest::newRow("vertical line inside") << VeltoRect(3, -5, 0, 8) << square << true;
    QTest::newRow("line on the minimum edge") << VeltoRect(2, 0, 3, 0) << square << true;
    QTest::newRow("line on the maximum edge is outside") << VeltoRect(2, 10, 3, 0) << square << false;
    QTest::newRow("point inside") << VeltoRect(4, 4, 0, 0) << square << true;
    QTest::newRow("point at the maximum corner") << VeltoRect(10, 10, 0, 0) << square << false;
    QTest::newRow("two lines") << VeltoRect(0, 0, 5, 0) << VeltoRect(0, 0, 0, 5) << false;
}

void GeometryUtilTest::intersectTest()
{
    QFETCH(VeltoRect, a);
    QFETCH(VeltoRect, b);
    QFETCH(bool, expected);
    QCOMPARE(VeltoRect_IsRectsIntersect(a, b), expected);
}

void GeometryUtilTest::unionRects_data()
{
    QTest::addColumn<VeltoRect>("a");
    QTest::addColumn<VeltoRect>("b");
    QTest::addColumn<VeltoRect>("expected");

    QTest::newRow("null and a rect") << VeltoNullRect << VeltoRect(1, 1, 2, 2) << VeltoRect(1, 1, 2, 2);
    QTest::newRow("a rect and null") << VeltoRect(1, 1, 2, 2) << VeltoNullRect << VeltoRect(1, 1, 2, 2);
    QTest::newRow("zero rect is a point at the origin")
        << VeltoZeroRect << VeltoRect(5, 5, 1, 1) << VeltoRect(0, 0, 6, 6);
    QTest::newRow("positive rects") << VeltoRect(0, 0, 2, 2) << VeltoRect(5, -1, 1, 1) << VeltoRect(0, -1, 6, 3);
    QTest::newRow("line widens") << VeltoRect(0, 0, 2, 2) << VeltoRect(1, 8, 4, 0) << VeltoRect(0, 0, 5, 8);
    QTest::newRow("absent a gives b as it is") << VeltoRect(3, VeltoNullRectCoordinate, -1, 0)
                                               << VeltoRect(7, 7, -2, 0) << VeltoRect(7, 7, -2, 0);
    QTest::newRow("null and null") << VeltoNullRect << VeltoNullRect << VeltoNullRect;
    QTest::newRow("positive rect at the null coordinate is present")
        << VeltoRect(VeltoNullRectCoordinate, 0, 1, 1) << VeltoNullRect << VeltoRect(VeltoNullRectCoordinate, 0, 1, 1);
}

void GeometryUtilTest::unionRects()
{
    QFETCH(VeltoRect, a);
    QFETCH(VeltoRect, b);
    QFETCH(VeltoRect, expected);
    QCOMPARE(VeltoRect_UnionRects(a, b), expected);
}

void GeometryUtilTest::intersectionRect_data()
{
    QTest::addColumn<VeltoRect>("a");
    QTest::addColumn<VeltoRect>("b");
    QTest::addColumn<VeltoRect>("expected");

    const VeltoRect square(0, 0, 10, 10);
    QTest::newRow("positive, touching") << square << VeltoRect(10, 0, 5, 5) << VeltoZeroRect;
    QTest::newRow("line inside gives itself") << square << VeltoRect(2, 5, 3, 0) << VeltoRect(2, 5, 3, 0);
    QTest::newRow("line, reversed arguments") << VeltoRect(2, 5, 3, 0) << square << VeltoRect(2, 5, 3, 0);
    QTest::newRow("point outside") << square << VeltoRect(20, 20, 0, 0) << VeltoNullRect;
    QTest::newRow("point inside") << square << VeltoRect(3, 4, 0, 0) << VeltoRect(3, 4, 0, 0);
    QTest::newRow("line clipped") << square << VeltoRect(-5, 5, 30, 0) << VeltoRect(0, 5, 10, 0);
    QTest::newRow("line touching the maximum edge") << square << VeltoRect(10, 2, 0, 3) << VeltoRect(10, 2, 0, 3);
    QTest::newRow("line above") << square << VeltoRect(2, 11, 3, 0) << VeltoNullRect;
    QTest::newRow("null") << VeltoNullRect << square << VeltoNullRect;
    QTest::newRow("zero rect meets a rect at the origin") << VeltoZeroRect << square << VeltoZeroRect;
}

void GeometryUtilTest::intersectionRect()
{
    QFETCH(VeltoRect, a);
    QFETCH(VeltoRect, b);
    QFETCH(VeltoRect, expected);
    QCOMPARE(VeltoRect_IntersectionRect(a, b), expected);
}

void GeometryUtilTest::subtractRects_data()
{
    QTest::addColumn<VeltoRect>("a");
    QTest::addColumn<VeltoRect>("b");
    QTest::addColumn<QList<VeltoRect>>("belowRightAboveLeft");
    QTest::addColumn<bool>("result");

    const VeltoRect a(0, 0, 10, 10);
    const VeltoRect z = VeltoZeroRect;
    QTest::newRow("hole in the middle") << a << VeltoRect(2, 2, 3, 3)
                                        << QList<VeltoRect>{{0, 0, 10, 2}, {5, 2, 5, 3}, {0, 5, 10, 5}, {0, 2, 2, 3}}
                                        << true;
    QTest::newRow("apart: below is a") << a << VeltoRect(20, 20, 1, 1) << QList<VeltoRect>{a, z, z, z} << true;
    QTest::newRow("b a line: below is a") << a << VeltoRect(2, 2, 3, 0) << QList<VeltoRect>{a, z, z, z} << true;
    QTest::newRow("b covers a") << a << VeltoRect(-1, -1, 12, 12) << QList<VeltoRect>{z, z, z, z} << false;
    // Side strips keep b's y and height, reaching beyond a.
    QTest::newRow("b taller than a") << a << VeltoRect(4, -5, 2, 20)
                                     << QList<VeltoRect>{z, {6, -5, 4, 20}, z, {0, -5, 4, 20}} << true;
}

void GeometryUtilTest::subtractRects()
{
    QFETCH(VeltoRect, a);
    QFETCH(VeltoRect, b);
    QFETCH(QList<VeltoRect>, belowRightAboveLeft);
    QFETCH(bool, result);

    VeltoRect below(9, 9, 9, 9), right = below, above = below, left = below;
    QCOMPARE(VeltoRect_SubtractRects(&below, &right, &above, &left, a, b), result);
    QCOMPARE((QList<VeltoRect>{below, right, above, left}), belowRightAboveLeft);
    QCOMPARE(VeltoRect_SubtractRects(nullptr, nullptr, nullptr, nullptr, a, b), result);
}

void GeometryUtilTest::displayEquality()
{
    QVERIFY(VeltoIsEqualDisplayPoints({1, 1}, {1.09, 0.91}));
    QVERIFY(!VeltoIsEqualDisplayPoints({1, 1}, {1, 1.125}));
    QVERIFY(!VeltoIsEqualDisplayPoints({0, 0}, {0.125, 0}));
    QVERIFY(VeltoIsEqualDisplaySizes({10, 10}, {10.05, 9.95}));
    QVERIFY(!VeltoIsEqualDisplaySizes({10, 10}, {10, 10.25}));
    // Origin and size share the tolerance of their axis.
    QVERIFY(!VeltoIsEqualDisplayRects({0, 0, 10, 10}, {0.06, 0, 10.06, 10}));
    QVERIFY(VeltoIsEqualDisplayRects({0, 0, 10, 10}, {0.04, 0.04, 10.04, 10.04}));
    QVERIFY(!VeltoIsEqualDisplayRects({0, 0, 10, 10}, {0, 0.05, 10, 10.06}));
}

void GeometryUtilTest::integralDisplayRect_data()
{
    QTest::addColumn<VeltoRect>("rect");
    QTest::addColumn<VeltoRect>("expected");

    QTest::newRow("example") << VeltoRect(1.2, 3.7, 10.0, 5.0) << VeltoRect(1.5, 3.5, 9, 5);
    QTest::newRow("whole numbers") << VeltoRect(2, 3, 4, 5) << VeltoRect(2.5, 3.5, 3, 4);
    QTest::newRow("negative origin") << VeltoRect(-1.25, -0.75, 4, 4) << VeltoRect(-1.5, -0.5, 4, 3);
}

void GeometryUtilTest::integralDisplayRect()
{
    QFETCH(VeltoRect, rect);
    QFETCH(VeltoRect, expected);
    QCOMPARE(VeltoIntegralDisplayRect(rect), expected);
}

void GeometryUtilTest::integralCoordinateForThickness_data()
{
    QTest::addColumn<double>("coordinate");
    QTest::addColumn<double>("thickness");
    QTest::addColumn<double>("expected");

    QTest::newRow("odd: pixel centre") << 2.3 << 1.0 << 2.5;
    QTest::newRow("fraction above 0.99: next centre") << 2.995 << 1.0 << 3.5;
    QTest::newRow("even, tie to even down") << 2.5 << 2.0 << 2.0;
    QTest::newRow("even, tie to even up") << 3.5 << 2.0 << 4.0;
    QTest::newRow("zero thickness: centre") << 2.3 << 0.0 << 2.5;
    QTest::newRow("odd integer part of 3.7") << 7.0 << 3.7 << 7.5;
    QTest::newRow("thin line rounds: integer part 0") << 2.7 << 0.5 << 3.0;
    QTest::newRow("negative odd thickness rounds") << 2.3 << -1.0 << 2.0;
    QTest::newRow("negative coordinate keeps the formula") << -2.3 << 1.0 << -2.1;
    QTest::newRow("negative, fraction above 0.99") << -2.995 << 1.0 << -0.5;
}

void GeometryUtilTest::integralCoordinateForThickness()
{
    QFETCH(double, coordinate);
    QFETCH(double, thickness);
    QFETCH(double, expected);
    QCOMPARE(VeltoIntegralDisplayCoordinateForThickness(coordinate, thickness), expected);
}

void GeometryUtilTest::randomisedUnionIntersectionAndSubtraction()
{
    QRandomGenerator random(20240517);
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
        for (const VeltoRect &strip : strips) {
            QCOMPARE(overlapArea(strip, VeltoRect_IntersectionRect(a, b)), 0.0);
            QVERIFY(strip == VeltoZeroRect || (a.origin.x <= strip.origin.x && strip.maxX() <= a.maxX()));
        }
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

QTEST_APPLESS_MAIN(GeometryUtilTest)
#include "geometryutiltest.moc"

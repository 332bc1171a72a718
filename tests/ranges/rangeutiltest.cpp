// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "rangetestsupport.h"

#include "VeltoRangeArray.h"
#include "VeltoRangeUtil.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};
constexpr VeltoRange TenToFourteen{10, 5};

quint64 minus(quint64 k)
{
    return quint64(0) - k;
}

QSet<quint64> positions(VeltoRange range)
{
    QSet<quint64> set;
    for (quint64 p = range.location; p < range.end(); ++p)
        set.insert(p);
    return set;
}

VeltoRange randomRange(QRandomGenerator &random, bool nonEmpty)
{
    return {random.bounded(40u), random.bounded(nonEmpty ? 1u : 0u, 12u)};
}

} // namespace

class RangeUtilTest : public QObject
{
    Q_OBJECT

private slots:
    void editTable_data()
    {
        QTest::addColumn<VeltoRange>("edit");
        QTest::addColumn<quint64>("delta");
        QTest::addColumn<VeltoRange>("perfectly");
        QTest::addColumn<VeltoRange>("united");

        QTest::newRow("delete 8 to 9") << VeltoRange{8, 0} << minus(2) << VeltoRange{8, 5} << VeltoRange{8, 5};
        QTest::newRow("delete 9 to 10") << VeltoRange{9, 0} << minus(2) << NoRange << VeltoRange{9, 4};
        QTest::newRow("delete 10 to 14") << VeltoRange{10, 0} << minus(5) << VeltoRange{10, 0} << VeltoRange{10, 0};
        QTest::newRow("delete 13 to 15") << VeltoRange{13, 0} << minus(3) << NoRange << VeltoRange{10, 3};
        QTest::newRow("replace 12 to 13 by 2") << VeltoRange{12, 2} << quint64(0) << TenToFourteen << TenToFourteen;
        QTest::newRow("replace 9 to 11 by 4") << VeltoRange{9, 4} << quint64(1) << NoRange << VeltoRange{9, 7};
        // The deliberate asymmetry: an empty range meeting an insertion at its location.
        QTest::newRow("empty range, insertion at it") << VeltoRange{10, 3} << quint64(3) << VeltoRange{10, 0}
                                                      << VeltoRange{13, 0};
    }

    void editTable()
    {
        QFETCH(VeltoRange, edit);
        QFETCH(quint64, delta);
        const VeltoRange r = QByteArray(QTest::currentDataTag()).startsWith("empty") ? VeltoRange{10, 0} : TenToFourteen;
        QTEST(VeltoRange_AdjustedPerfectlyForEdit(r, edit, delta), "perfectly");
        QTEST(VeltoRange_AdjustedUnionForEdit(r, edit, delta), "united");
    }

    void intersectionUnionAndSubtraction_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<VeltoRange>("a");
        QTest::addColumn<VeltoRange>("b");
        QTest::addColumn<QList<VeltoRange>>("expected");

        const auto row = [](const char *name, const QString &operation, VeltoRange a, VeltoRange b, QList<VeltoRange> expected) {
            QTest::newRow(name) << operation << a << b << expected;
        };
        row("equal empties intersect", u"intersect"_s, {7, 0}, {7, 0}, {{7, 0}});
        row("different empties", u"intersect"_s, {7, 0}, {8, 0}, {NoRange});
        row("empty strictly inside", u"intersect"_s, {10, 5}, {12, 0}, {{12, 0}});
        row("empty at first position", u"intersect"_s, {10, 5}, {10, 0}, {NoRange});
        row("empty at end", u"intersect"_s, {10, 5}, {15, 0}, {NoRange});
        row("union touching", u"union"_s, {10, 5}, {15, 3}, {{10, 8}});
        row("union with empty at end", u"union"_s, {10, 5}, {15, 0}, {{10, 5}});
        row("subtract middle", u"subtract"_s, {10, 5}, {12, 1}, {{10, 2}, {13, 2}});
        row("empty at end removed", u"subtract"_s, {15, 0}, {10, 5}, {});
        row("empty after kept", u"subtract"_s, {16, 0}, {10, 5}, {{16, 0}});
        row("empty at start removed", u"subtract"_s, {10, 0}, {10, 5}, {});
        row("both empty, same place", u"subtract"_s, {4, 0}, {4, 0}, {});
    }

    void intersectionUnionAndSubtraction()
    {
        QFETCH(QString, operation);
        QFETCH(VeltoRange, a);
        QFETCH(VeltoRange, b);
        QFETCH(QList<VeltoRange>, expected);
        if (operation == u"intersect") {
            QCOMPARE(VeltoRange_IntersectionRange(a, b), expected.first());
            QCOMPARE(VeltoRange_IntersectionRange(b, a), expected.first());
        } else if (operation == u"union") {
            QCOMPARE(VeltoRange_UnionContiguous(a, b), expected.first());
        } else {
            VeltoRange out[2];
            const quint64 count = VeltoRange_SubtractRange(a, b, out);
            QCOMPARE(QList<VeltoRange>(out, out + count), expected);
            QCOMPARE(rangesOf(*VeltoRange_RangesBySubtractingRange(a, b)), expected);
        }
    }

    void comparisons()
    {
        QCOMPARE(VeltoRange_Compare({3, 9}, {4, 0}), -1);
        QCOMPARE(VeltoRange_CompareByBound({3, 9}, {4, 0}), 1);
        QCOMPARE(VeltoRange_CompareByBound({4, 2}, {4, 3}), -1);
        QCOMPARE(VeltoRange_CompareByBound({2, 4}, {3, 3}), -1); // equal ends: by location
        QCOMPARE(VeltoRange_CompareByBound({4, 3}, {4, 3}), 0);
    }

    void rangesBySubtractingRangeKinds()
    {
        // None left: the shared empty immutable array; pieces: new mutable arrays.
        QCOMPARE(VeltoRange_RangesBySubtractingRange({10, 5}, {0, 20}), VeltoRangeArray::emptyArray());
        const auto two = std::dynamic_pointer_cast<const VeltoMutableRangeArray>(VeltoRange_RangesBySubtractingRange({10, 5}, {12, 1}));
        QVERIFY(two && !dynamic_cast<const VeltoRangeArray *>(two.get()));
        QCOMPARE(two->capacity(), 2u);
    }

    void notFoundDeltaZeroAndWrapAround()
    {
        const VeltoRange lost{VeltoNotFound, 7};
        QCOMPARE(VeltoRange_AdjustForDeletion(lost, {0, 3}), lost);
        QCOMPARE(VeltoRange_AdjustForInsertion(lost, {0, 3}), lost);
        QCOMPARE(VeltoRange_AdjustedPerfectlyForEdit(lost, {0, 3}, 3), lost);
        QCOMPARE(VeltoRange_AdjustedUnionForEdit(lost, {0, 3}, 3), lost);
        // Insertion keeps the asymmetry of the edit rules for an empty range: text inserted at it moves it.
        QCOMPARE(VeltoRange_AdjustForInsertion({10, 0}, {10, 3}), (VeltoRange{13, 0}));
        QCOMPARE(VeltoRange_AdjustForDeletion({10, 5}, {5, 20}), (VeltoRange{5, 0}));

        VeltoTestRandom random(7);
        for (int i = 0; i < 1000; ++i) {
            const VeltoRange r = randomRange(random, false);
            const VeltoRange edit = randomRange(random, false);
            QCOMPARE(VeltoRange_AdjustedPerfectlyForEdit(r, edit, 0), r);
            QCOMPARE(VeltoRange_AdjustedUnionForEdit(r, edit, 0), r);
        }
        // Ends wrap silently; deltas are two's complement.
        QCOMPARE((VeltoRange{~quint64(0) - 1, 4}).end(), 2u);
        QCOMPARE(VeltoRange_AdjustForInsertion({5, 2}, {0, ~quint64(0)}), (VeltoRange{4, 2}));
        QCOMPARE(VeltoRange_AdjustedPerfectlyForEdit({20, 2}, {3, 0}, minus(5)), (VeltoRange{15, 2}));
    }

    void randomisedAgainstPositionSets()
    {
        VeltoTestRandom random(11);
        for (int i = 0; i < 5000; ++i) {
            const VeltoRange a = randomRange(random, true);
            const VeltoRange b = randomRange(random, true);
            const QSet<quint64> common = positions(a) & positions(b);
            const VeltoRange meet = VeltoRange_IntersectionRange(a, b);
            QCOMPARE(meet == NoRange, common.isEmpty());
            if (!common.isEmpty())
                QCOMPARE(positions(meet), common);

            // The union is found exactly when the two cover one unbroken stretch.
            const QSet<quint64> both = positions(a) | positions(b);
            const quint64 low = std::min(a.location, b.location);
            const quint64 high = std::max(a.end(), b.end());
            const VeltoRange joined = VeltoRange_UnionContiguous(a, b);
            QCOMPARE(joined != NoRange, quint64(both.size()) == high - low);
            if (joined != NoRange)
                QCOMPARE(joined, (VeltoRange{low, high - low}));

            VeltoRange out[2];
            const quint64 pieces = VeltoRange_SubtractRange(a, b, out);
            QSet<quint64> left;
            for (quint64 k = 0; k < pieces; ++k) {
                QVERIFY(out[k].length > 0);
                QVERIFY(k == 0 || out[k - 1].end() < out[k].location);
                left |= positions(out[k]);
            }
            QCOMPARE(left, positions(a) - positions(b));
        }
    }

    void randomisedEditIdentities()
    {
        VeltoTestRandom random(13);
        for (int i = 0; i < 5000; ++i) {
            const VeltoRange r = randomRange(random, false);
            const VeltoRange span = randomRange(random, true);
            // An insertion undone by deleting the same text gives the range back.
            QCOMPARE(VeltoRange_AdjustForDeletion(VeltoRange_AdjustForInsertion(r, span), span), r);
            if (r.length == 0)
                continue;
            // For a non-empty range, the edit rules agree with the insertion and deletion rules...
            QCOMPARE(VeltoRange_AdjustedPerfectlyForEdit(r, span, span.length), VeltoRange_AdjustForInsertion(r, span));
            QCOMPARE(VeltoRange_AdjustedUnionForEdit(r, {span.location, 0}, minus(span.length)),
                     VeltoRange_AdjustForDeletion(r, span));
            // ... and the union rule agrees with the perfect one wherever the perfect one keeps the range.
            const VeltoRange replaced{span.location, random.bounded(12u)};
            const quint64 delta = replaced.length - random.bounded(12u); // the replaced text's old length
            const VeltoRange perfect = VeltoRange_AdjustedPerfectlyForEdit(r, replaced, delta);
            if (perfect != NoRange)
                QCOMPARE(VeltoRange_AdjustedUnionForEdit(r, replaced, delta), perfect);
            else
                QVERIFY(VeltoRange_AdjustedUnionForEdit(r, replaced, delta) != NoRange);
        }
    }
};

QTEST_GUILESS_MAIN(RangeUtilTest)
#include "rangeutiltest.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "rangetestsupport.h"

#include "VeltoBoxedRangeArray.h"
#include "VeltoCollection.h"
#include "VeltoIndexSet.h"
#include "VeltoMutableRangeArray.h"

#include <set>

using namespace Qt::StringLiterals;

namespace {

QList<quint64> members(const std::set<quint64> &model)
{
    return QList<quint64>(model.cbegin(), model.cend());
}

} // namespace

class CollectionTest : public QObject
{
    Q_OBJECT

private slots:
    void vocabularyOverListsSetsAndMaps()
    {
        const QVariantList list{1, u"two"_s};
        const QSet<QString> set{u"x"_s};
        const QVariantMap map{{u"only"_s, 5}};
        QCOMPARE(&velto::allObjectsVelto(list), &list);
        QCOMPARE(velto::allObjectsVelto(set), QStringList{u"x"_s});
        QCOMPARE(velto::allObjectsVelto(map), QStringList{u"only"_s});
        QVERIFY(!velto::containsObjectVelto(list, QVariant()));
        QVERIFY(!velto::containsObjectVelto(set, QString()));
        QVERIFY(!velto::containsObjectVelto(map, QString()));
        QVERIFY(velto::containsObjectVelto(map, u"only"_s));
        QCOMPARE(velto::anyObjectVelto(QVariantList{}), std::nullopt);
        QCOMPARE(velto::anyObjectVelto(list), std::optional<QVariant>(1));
        QCOMPARE(velto::anyObjectVelto(map), std::optional<QString>(u"only"_s));
    }

    void buildingWithFilters()
    {
        const QVariantMap map{{u"apple"_s, 1}, {u"banana"_s, 2}, {u"avocado"_s, 3}};
        QCOMPARE(velto::arrayWithVeltoCollection(map), (QStringList{u"apple"_s, u"avocado"_s, u"banana"_s}));
        const auto onlyA = [](const QString &key) { return key.startsWith(u'a') ? key.toUpper() : QString(); };
        QCOMPARE(velto::setWithVeltoCollection(map, onlyA), (QSet<QString>{u"APPLE"_s, u"AVOCADO"_s}));
        // A filter may also answer an optional; an empty one drops the object.
        const auto evenHalved = [](int n) { return n % 2 == 0 ? std::optional<int>(n / 2) : std::nullopt; };
        QCOMPARE(velto::arrayWithVeltoCollection(QList<int>{1, 2, 3, 4}, evenHalved), (QList<int>{1, 2}));

        QVariantList into{0};
        velto::addObjects(QSet<QString>{u"s"_s}, into);
        velto::addObjectIfNotNilVelto(into, QVariant());
        velto::addObjectIfNotNilVelto(into, QVariant(9));
        QCOMPARE(into, (QVariantList{0, u"s"_s, 9}));
        QStringList listed;
        velto::addObjectsFromVeltoCollection(listed, QStringList{u"a"_s, QString(), u"b"_s});
        QCOMPARE(listed, (QStringList{u"a"_s, u"b"_s})); // nil is never a member
    }

    void indexSetConversions()
    {
        QCOMPARE(VeltoIndexSet::indexSetWithNumberArray({3, 5, 3}).indexes(), (QList<quint64>{3, 5}));
        QVERIFY(VeltoIndexSet::indexSetWithNumberArray({}).isEmpty());
        QCOMPARE(VeltoIndexSet::indexSetWithNumberArray({7}), VeltoIndexSet(7));
        VELTO_COMPARE_THROWN((void)VeltoIndexSet::indexSetWithNumberArray({u"seven"_s}), VeltoInvalidArgumentException,
                             u"indexSetWithNumberArray: seven is not an unsigned integer"_s);

        const QList<VeltoRange> ranges{{2, 3}, {4, 2}, {9, 0}, {12, 1}};
        const auto compact = VeltoMutableRangeArray::initWithCapacity(4, ranges.constData(), 4);
        const VeltoIndexSet fromRanges = VeltoIndexSet::indexSetWithRangeArray(*compact);
        QCOMPARE(fromRanges.ranges(), (QList<VeltoRange>{{2, 4}, {12, 1}}));
        QCOMPARE(fromRanges.description(), u"(2-5, 12)"_s);
        QVERIFY(VeltoIndexSet::indexSetWithRangeArray(VeltoBoxedRangeArray()).isEmpty());
        QCOMPARE(VeltoIndexSet::indexSetWithRangeArray(*VeltoMutableRangeArray::initWithRange({4, 3})), VeltoIndexSet(VeltoRange{4, 3}));

        // The run holding an index is cut at it; past the last run there is none.
        const VeltoIndexSet set = VeltoIndexSet::indexSetWithNumberArray({2, 3, 4, 8});
        QCOMPARE(set.indexRangeStartingAtOrAfterIndex(3), (VeltoRange{3, 2}));
        QCOMPARE(set.indexRangeStartingAtOrAfterIndex(5), (VeltoRange{8, 1}));
        QCOMPARE(set.indexRangeStartingAtOrAfterIndex(9).location, VeltoNotFound);
    }

    void indexSetMatchesModel()
    {
        VeltoTestRandom random(31);
        for (int round = 0; round < 200; ++round) {
            VeltoIndexSet set;
            std::set<quint64> model;
            for (int step = 0; step < 40; ++step) {
                const VeltoRange range{random.bounded(80u), random.bounded(8u)};
                switch (random.bounded(5)) {
                case 0:
                case 1:
                    set.addIndexesInRange(range);
                    for (quint64 i = range.location; i < range.end(); ++i)
                        model.insert(i);
                    break;
                case 2:
                    set.removeIndexesInRange(range);
                    for (quint64 i = range.location; i < range.end(); ++i)
                        model.erase(i);
                    break;
                case 3: {
                    const qint64 delta = qint64(random.bounded(11)) - 5;
                    set.shiftIndexesStartingAtIndex(range.location, delta);
                    std::set<quint64> shifted;
                    for (quint64 i : model) {
                        if (i < range.location) {
                            if (delta >= 0 || i < range.location - std::min<quint64>(quint64(-delta), range.location))
                                shifted.insert(i);
                        } else {
                            shifted.insert(quint64(qint64(i) + std::max(delta, -qint64(range.location))));
                        }
                    }
                    model = shifted;
                    break;
                }
                default:
                    set.addIndex(range.location);
                    model.insert(range.location);
                }
                QCOMPARE(set.indexes(), members(model));
                QCOMPARE(set.count(), quint64(model.size()));
                // The runs are maximal: sorted, none empty, none touching the next.
                const QList<VeltoRange> runs = set.ranges();
                for (qsizetype i = 0; i < runs.size(); ++i)
                    QVERIFY(runs[i].length > 0 && (i == 0 || runs[i - 1].end() < runs[i].location));
                const quint64 probe = random.bounded(90u);
                const auto atOrAbove = model.lower_bound(probe);
                const auto above = model.upper_bound(probe);
                QCOMPARE(set.containsIndex(probe), model.count(probe) == 1);
                QCOMPARE(set.indexGreaterThanOrEqualToIndex(probe), atOrAbove == model.end() ? VeltoNotFound : *atOrAbove);
                QCOMPARE(set.indexGreaterThanIndex(probe), above == model.end() ? VeltoNotFound : *above);
                QCOMPARE(set.indexLessThanOrEqualToIndex(probe), above == model.begin() ? VeltoNotFound : *std::prev(above));
                QCOMPARE(set.indexLessThanIndex(probe), atOrAbove == model.begin() ? VeltoNotFound : *std::prev(atOrAbove));
                quint64 inRange = 0;
                for (quint64 i = probe; i < probe + range.length; ++i)
                    inRange += model.count(i);
                QCOMPARE(set.countOfIndexesInRange({probe, range.length}), inRange);
                QCOMPARE(set.containsIndexesInRange({probe, range.length}), range.length > 0 && inRange == range.length);
                QCOMPARE(set.intersectsIndexesInRange({probe, range.length}), inRange > 0);
                QCOMPARE(set.firstIndex(), model.empty() ? VeltoNotFound : *model.begin());
                QCOMPARE(set.lastIndex(), model.empty() ? VeltoNotFound : *model.rbegin());
            }
            VeltoIndexSet copy = set;
            copy.addIndexes(VeltoIndexSet(VeltoRange{100, 3}));
            QVERIFY(copy.containsIndexes(set));
            QVERIFY(!set.containsIndexes(copy)); // the copy changed alone
            copy.removeIndexes(set);
            QCOMPARE(copy, VeltoIndexSet(VeltoRange{100, 3}));
        }
    }

    void indexSetLimits()
    {
        VeltoIndexSet set(VeltoRange{5, 2});
        VELTO_COMPARE_THROWN(set.addIndex(VeltoNotFound), VeltoRangeException,
                             u"VeltoIndexSet indexes must be below VeltoNotFound; 9223372036854775807 is not"_s);
        VELTO_COMPARE_THROWN(set.shiftIndexesStartingAtIndex(0, qint64(VeltoNotFound)), VeltoRangeException,
                             u"VeltoIndexSet indexes must be below VeltoNotFound; 9223372036854775813 is not"_s);
        QCOMPARE(set.indexes(), (QList<quint64>{5, 6}));
        set.addIndex(VeltoNotFound - 1);
        QCOMPARE(set.indexGreaterThanIndex(VeltoNotFound - 1), VeltoNotFound);
        set.removeIndexesInRange({0, ~quint64(0)});
        QVERIFY(set.isEmpty());
        QCOMPARE(set.description(), u"()"_s);
    }

    void bitFlags_data()
    {
        QTest::addColumn<quint64>("flags");
        QTest::addColumn<QList<quint64>>("positions");
        QTest::newRow("0b1011") << quint64(0b1011) << QList<quint64>{0, 1, 3};
        QTest::newRow("bit 30") << (quint64(1) << 30) << QList<quint64>{30};
        QTest::newRow("bit 32") << (quint64(1) << 32) << QList<quint64>{31, 63};
        QTest::newRow("bit 31") << (quint64(1) << 31) << QList<quint64>{31, 63};
        QTest::newRow("bits 31 to 63") << quint64(0xFFFFFFFF80000000) << QList<quint64>{31};
    }

    void bitFlags()
    {
        QFETCH(quint64, flags);
        QTEST(VeltoIndexesForBitFlags(flags)->indexes(), "positions");
        QVERIFY(!VeltoIndexesForBitFlags(0));
    }
};

QTEST_GUILESS_MAIN(CollectionTest)
#include "collectiontest.moc"

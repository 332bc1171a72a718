// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VariantMap+VeltoAdditions.h"
#include "VeltoException.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QVariantMap AB{{u"a"_s, 1}, {u"b"_s, 2}};
const QVariantMap A1{{u"a"_s, 1}};

} // namespace

class DictionaryTest : public QObject
{
    Q_OBJECT

private slots:
    void buildingAnswersTheReceiverWhenNothingChanges();
    void buildingCopies();
    void tests_data();
    void tests();
    void containsKeyAnswersTheMapsOwnKey();
    void containsKeyInSetAgreesWithAModelInBothWalkingOrders();
    void typedReaders_data();
    void typedReaders();
    void typedReadersRefuseOtherKinds();
};

void DictionaryTest::buildingAnswersTheReceiverWhenNothingChanges()
{
    const QVariantMap map = AB;
    QVERIFY(velto::dictionarySettingObject(map, QVariant(), u"a"_s).isSharedWith(map)); // an invalid value does not remove
    QVERIFY(velto::dictionarySettingObject(map, 5, QString()).isSharedWith(map));
    QVERIFY(velto::dictionaryRemovingObjectForKey(map, u"z"_s).isSharedWith(map));
    QVERIFY(velto::dictionaryRemovingObjectForKey(QVariantMap(), u"z"_s).isEmpty());
    QVERIFY(velto::dictionaryRemovingObjectsForKeys(map, {}).isSharedWith(map));
    QVERIFY(velto::dictionaryRemovingObjectsForKeys(map, {u"x"_s, u"y"_s}).isSharedWith(map));
    QVERIFY(velto::dictionaryByAddingEntriesFromDictionary(map, {}).isSharedWith(map));
    QVERIFY(velto::dictionaryByAddingEntriesFromDictionary(map, map).isSharedWith(map));
    // The only entry removed: the shared empty map.
    const QVariantMap only = velto::dictionaryRemovingObjectForKey(A1, u"a"_s);
    QVERIFY(only.isEmpty());
    QVERIFY(only.isSharedWith(QVariantMap()));
}

void DictionaryTest::buildingCopies()
{
    QVariantMap map = AB;
    const QVariantMap set = velto::dictionarySettingObject(map, 3, u"c"_s);
    QCOMPARE(set, (QVariantMap{{u"a"_s, 1}, {u"b"_s, 2}, {u"c"_s, 3}}));
    QCOMPARE(map, AB);
    QCOMPARE(velto::dictionaryRemovingObjectForKey(map, u"a"_s), (QVariantMap{{u"b"_s, 2}}));
    QCOMPARE(velto::dictionaryRemovingObjectsForKeys(map, {u"z"_s, u"a"_s, u"b"_s}), QVariantMap());
    QCOMPARE(velto::dictionaryByAddingEntriesFromDictionary(map, {{u"b"_s, 20}, {u"c"_s, 30}}),
             (QVariantMap{{u"a"_s, 1}, {u"b"_s, 20}, {u"c"_s, 30}}));
    QCOMPARE(velto::dictionaryWithObjectSetForAllVeltoKeys(u"x"_s, {u"p"_s, u"q"_s}),
             (QVariantMap{{u"p"_s, u"x"_s}, {u"q"_s, u"x"_s}}));
    QCOMPARE(velto::subdictionaryWithKeys(map, {}), QVariantMap());
    QCOMPARE(velto::subdictionaryWithKeys(map, {u"b"_s}), (QVariantMap{{u"b"_s, 2}}));
    QCOMPARE(velto::subdictionaryWithKeys(map, {u"z"_s}), QVariantMap());
    QCOMPARE(velto::subdictionaryWithKeys(map, {u"a"_s, u"z"_s, u"b"_s}), AB);
    QCOMPARE(map, AB); // the receiver never changes
}

void DictionaryTest::tests_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<QVariantMap>("other");
    QTest::addColumn<bool>("subdictionary");    // map isSubdictionaryOf other
    QTest::addColumn<bool>("equalForAB");       // isEqualToDictionaryForKeys(…, {a, b})
    QTest::addColumn<bool>("equalIgnoringB");   // isEqualToDictionaryIgnoringKeys(…, {b})
    QTest::addColumn<bool>("containsOtherKey"); // containsKeyInDictionary
    QTest::newRow("{a,b} of {a}: contained, the reverse of the name") << AB << A1 << true << false << true << true;
    QTest::newRow("{a} of {a,b}") << A1 << AB << false << false << true << true;
    QTest::newRow("same") << AB << AB << true << true << true << true;
    QTest::newRow("different value") << AB << QVariantMap{{u"a"_s, 1}, {u"b"_s, 3}} << false << false << true << true;
    QTest::newRow("a value on one side only") << QVariantMap{{u"a"_s, 1}, {u"c"_s, 3}} << AB << false << false << false << true;
    QTest::newRow("numbers of two types compare by value") << A1 << QVariantMap{{u"a"_s, 1.0}} << true << true << true << true;
    QTest::newRow("empty other") << AB << QVariantMap() << true << false << false << false;
    QTest::newRow("both missing a and b") << QVariantMap{{u"c"_s, 1}} << QVariantMap{{u"d"_s, 1}} << false << true << false << false;
}

void DictionaryTest::tests()
{
    QFETCH(QVariantMap, map);
    QFETCH(QVariantMap, other);
    QFETCH(bool, subdictionary);
    QFETCH(bool, equalForAB);
    QFETCH(bool, equalIgnoringB);
    QFETCH(bool, containsOtherKey);
    QCOMPARE(velto::isSubdictionaryOf(map, other), subdictionary);
    QCOMPARE(velto::isEqualToDictionaryForKeys(map, other, {u"a"_s, u"b"_s}), equalForAB);
    QCOMPARE(velto::isEqualToDictionaryIgnoringKeys(map, other, {u"b"_s}), equalIgnoringB);
    QCOMPARE(velto::containsKeyInDictionary(map, other), containsOtherKey);
    // {a: 1} against {a: 1, b: 2} with nothing ignored: equal, since only the receiver's keys count.
    QVERIFY(velto::isEqualToDictionaryIgnoringKeys(A1, AB, {}));
    QVERIFY(!velto::isEqualToDictionaryIgnoringKeys(AB, A1, {}));
}

void DictionaryTest::containsKeyAnswersTheMapsOwnKey()
{
    const QVariantMap map{{u"Alpha"_s, 1}, {u"beta"_s, 2}, {u"BETA"_s, 3}};
    const velto::KeyComparison ignoringCase = [](const QString &key, const QString &mapKey) {
        return qint64(key.compare(mapKey, Qt::CaseInsensitive));
    };
    QCOMPARE(velto::containsKey(map, u"ALPHA"_s, ignoringCase), u"Alpha"_s);
    QCOMPARE(velto::containsKey(map, u"Beta"_s, ignoringCase), u"BETA"_s); // the first in the map's order
    QVERIFY(velto::containsKey(map, u"gamma"_s, ignoringCase).isNull());
    QVERIFY(velto::containsKey(QVariantMap(), u"a"_s, ignoringCase).isNull());
}

// containsKeyInSet walks the map's keys or the set, whichever is smaller: both walks must give the
// model's answer, so the sizes are drawn to reach both.
void DictionaryTest::containsKeyInSetAgreesWithAModelInBothWalkingOrders()
{
    const quint32 seed = 515;
    QRandomGenerator random(seed);
    int walkedMap = 0;
    int walkedSet = 0;
    for (int round = 0; round < 2000; ++round) {
        QVariantMap map;
        for (int i = random.bounded(12); i > 0; --i)
            map.insert(QString::number(random.bounded(40)), i);
        QSet<QString> keys;
        for (int i = random.bounded(12); i > 0; --i)
            keys.insert(QString::number(random.bounded(40)));
        const QStringList mapKeys = map.keys();
        const bool expected = std::any_of(mapKeys.begin(), mapKeys.end(), [&](const QString &k) { return keys.contains(k); });
        QVERIFY2(velto::containsKeyInSet(map, keys) == expected, qPrintable(u"seed %1, round %2"_s.arg(seed).arg(round)));
        (keys.size() >= map.size() ? walkedMap : walkedSet) += 1;
    }
    QVERIFY(walkedMap > 500 && walkedSet > 500);
}

void DictionaryTest::typedReaders_data()
{
    QTest::addColumn<QVariant>("value"); // invalid: the key is missing
    QTest::addColumn<bool>("boolean");
    QTest::addColumn<qint64>("integer");
    QTest::addColumn<double>("floating");
    QTest::addColumn<double>("real");
    QTest::newRow("missing gives the defaults") << QVariant() << true << qint64(-7) << 9.5 << 9.75;
    QTest::newRow("a stored zero is not the default") << QVariant(0) << false << qint64(0) << 0.0 << 0.0;
    QTest::newRow("true") << QVariant(true) << true << qint64(1) << 1.0 << 1.0;
    QTest::newRow("real truncates to an integer") << QVariant(-2.75) << true << qint64(-2) << -2.75 << -2.75;
    QTest::newRow("float precision") << QVariant(0.1) << true << qint64(0) << double(0.1f) << 0.1;
    QTest::newRow("text") << QVariant(u" 42 "_s) << true << qint64(42) << 42.0 << 42.0;
    QTest::newRow("text with a fraction") << QVariant(u"2.5"_s) << true << qint64(2) << 2.5 << 2.5;
    QTest::newRow("text that is no number") << QVariant(u"YES"_s) << true << qint64(0) << 0.0 << 0.0;
    QTest::newRow("saturating") << QVariant(1e30) << true << std::numeric_limits<qint64>::max() << double(float(1e30)) << 1e30;
}

void DictionaryTest::typedReaders()
{
    QFETCH(QVariant, value);
    QFETCH(bool, boolean);
    QFETCH(qint64, integer);
    QFETCH(double, floating);
    QFETCH(double, real);
    QVariantMap map{{u"other"_s, 1}};
    if (value.isValid())
        map.insert(u"k"_s, value);
    QCOMPARE(velto::boolForKey(map, u"k"_s, true), boolean);
    QCOMPARE(velto::intForKey(map, u"k"_s, -7), integer);
    QCOMPARE(velto::floatForKey(map, u"k"_s, 9.5), floating);
    QCOMPARE(velto::doubleForKey(map, u"k"_s, 9.75), real);
    if (!value.isValid()) { // the short forms' defaults
        QCOMPARE(velto::boolForKey(map, u"k"_s), false);
        QCOMPARE(velto::intForKey(map, u"k"_s), 0);
        QCOMPARE(velto::floatForKey(map, u"k"_s), 0.0);
        QCOMPARE(velto::doubleForKey(map, u"k"_s), 0.0);
    }
}

void DictionaryTest::typedReadersRefuseOtherKinds()
{
    const QVariantMap map{{u"list"_s, QVariantList{1}}, {u"data"_s, QByteArray("1")}};
    try {
        (void)velto::intForKey(map, u"list"_s);
        QFAIL("no exception");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.name(), QString(VeltoInvalidArgumentException));
        QVERIFY2(exception.reason().startsWith(u"-[QVariantList integerValue]: unrecognized selector sent to instance 0x"_s),
                 qPrintable(exception.reason()));
    }
    QVERIFY_THROWS_EXCEPTION(VeltoException, (void)velto::boolForKey(map, u"data"_s));
    QVERIFY_THROWS_EXCEPTION(VeltoException, (void)velto::floatForKey(map, u"data"_s));
    QVERIFY_THROWS_EXCEPTION(VeltoException, (void)velto::doubleForKey(map, u"list"_s));
}

QTEST_GUILESS_MAIN(DictionaryTest)
#include "dictionarytest.moc"

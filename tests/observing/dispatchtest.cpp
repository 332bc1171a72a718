// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ByteArray+VeltoEnsuredGrowth.h"
#include "Object+VeltoAssociatedObjects.h"
#include "Object+VeltoDispatch.h"
#include "VTUniqueObject_p.h"
#include "VeltoPatchableRoutine.h"
#include "VariantMap+VeltoObjectAdditions.h"

#include <QHash>
#include <QPointer>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class Receiver : public QObject
{
    Q_OBJECT

public:
    QStringList calls;

public slots:
    void ping() { calls << u"ping"_s; }
    void take(QObject *a, const QVariant &b, const QString &c)
    {
        calls << u"take %1 %2 %3"_s.arg(a ? a->objectName() : u"null"_s, b.toString(), c);
    }
    QObject *self() { return this; }
    QVariant echo(const QVariant &value) { return value; }
    int twoFiftySix() { return 256; }
    int one() { return 1; }
    qint64 word(qint64 value) { return value * 2; }
    int narrow(qint64 value) { return int(value); }
    void nothing(qint64) {}
    double half(double value) { return value / 2; }
    bool negate(bool value) { return !value; }
    // Methods of the same name: the one with the most parameters is the one called.
    void pair(QObject *) { calls << u"pair/1"_s; }
    void pair(QObject *, QObject *) { calls << u"pair/2"_s; }
};

class DerivedReceiver : public Receiver
{
    Q_OBJECT

public slots:
    void ping() { calls << u"derived ping"_s; }
};

namespace {

QString originalRoutine(const QString &name) { return u"released "_s + name; }
VeltoPatchableRoutine<QString(const QString &)> releaseRoutine{&originalRoutine};
VeltoPatchableRoutine<QString(const QString &)>::Function replacedRoutine = nullptr;
QString patchedRoutine(const QString &name) { return u"kept "_s + name + u", then "_s + replacedRoutine(name); }

} // namespace

class DispatchTest : public QObject
{
    Q_OBJECT

private slots:
    void respondsOnlyToCallableMethods()
    {
        Receiver receiver;
        QVERIFY(velto::respondsToSelectorVelto(&receiver, "ping"));
        QVERIFY(!velto::respondsToSelectorVelto(&receiver, "pong"));
        QVERIFY(!velto::respondsToSelectorVelto(&receiver, "destroyed")); // a signal is not a method to call
        QVERIFY(!velto::respondsToSelectorVelto(nullptr, "ping"));
        QCOMPARE(velto::parameterCountForSelectorVelto(&receiver, "take"), 3);
        QCOMPARE(velto::parameterCountForSelectorVelto(&receiver, "pong"), -1);
        QVERIFY(!velto::performSelectorIfResponds(&receiver, "pong").isValid());
        QVERIFY(receiver.calls.isEmpty());
    }

    void objectCallsPassArgumentsAndResults()
    {
        Receiver receiver;
        QObject named;
        named.setObjectName(u"named"_s);
        velto::performSelectorIfResponds(&receiver, "take", QVariant::fromValue(&named), 42, u"text"_s);
        velto::performSelectorIfResponds(&receiver, "take"); // missing arguments arrive as null/empty
        velto::performSelectorIfResponds(&receiver, "ping", 1, 2, 3); // extra arguments are dropped
        QCOMPARE(receiver.calls, QStringList({u"take named 42 text"_s, u"take null  "_s, u"ping"_s}));
        const QVariant result = velto::performSelectorIfResponds(&receiver, "self");
        QCOMPARE(result.value<QObject *>(), &receiver);
        QVERIFY(!velto::performSelectorIfResponds(&receiver, "ping").isValid()); // void gives no result
        QCOMPARE(velto::performSelectorIfResponds(&receiver, "echo", 7), QVariant(7)); // not wrapped in another
        QVERIFY(velto::instancesRespondToSelectorVelto(&DerivedReceiver::staticMetaObject, "echo"));
        QVERIFY(!velto::instancesRespondToSelectorVelto(&QObject::staticMetaObject, "echo"));
    }

    void scalarResultRules_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("selector");
        QTest::addColumn<double>("expected");
        QTest::newRow("bool reads the low byte: 256 is false") << "bool"_ba << "twoFiftySix"_ba << 0.0;
        QTest::newRow("bool of 1") << "bool"_ba << "one"_ba << 1.0;
        QTest::newRow("bool of missing method") << "bool"_ba << "pong"_ba << 0.0;
        QTest::newRow("float of int result") << "float"_ba << "twoFiftySix"_ba << 256.0;
        QTest::newRow("int of object result") << "int"_ba << "self"_ba << 0.0;
        QTest::newRow("withInt: 8-byte result") << "withInt"_ba << "word"_ba << 42.0;
        QTest::newRow("withInt: 4-byte result gives 0") << "withInt"_ba << "narrow"_ba << 0.0;
        QTest::newRow("withInt: void result gives 0") << "withInt"_ba << "nothing"_ba << 0.0;
        QTest::newRow("withFloat: double result as raw word") << "withFloat"_ba << "half"_ba << 0.5;
        QTest::newRow("withBool: 1-byte result gives 0") << "withBool"_ba << "negate"_ba << 0.0;
    }

    void scalarResultRules()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, selector);
        Receiver receiver;
        const char *name = selector.constData();
        double actual = -1;
        if (kind == "bool")
            actual = velto::boolForPerformSelector(&receiver, name) ? 1 : 0;
        else if (kind == "float")
            actual = velto::floatForPerformSelector(&receiver, name);
        else if (kind == "int")
            actual = double(velto::intForPerformSelector(&receiver, name));
        else if (kind == "withInt")
            actual = double(velto::performSelectorWithInt(&receiver, name, 21));
        else if (kind == "withBool")
            actual = double(velto::performSelectorWithBool(&receiver, name, false));
        else if (kind == "withFloat") {
            const qint64 bits = velto::performSelectorWithFloat(&receiver, name, 1.0);
            std::memcpy(&actual, &bits, sizeof actual);
        }
        QTEST(actual, "expected");
    }

    void derivedClassMethodWins()
    {
        DerivedReceiver derived;
        Receiver plain;
        velto::performSelectorIfResponds(&derived, "ping");
        velto::performSelectorIfResponds(&plain, "ping"); // the per-class cache keeps the classes apart
        velto::performSelectorIfResponds(&plain, "pair", QVariant::fromValue(&plain));
        QCOMPARE(derived.calls, QStringList{u"derived ping"_s});
        QCOMPARE(plain.calls, QStringList({u"ping"_s, u"pair/2"_s}));
    }

    void uniqueObjectIsFoundOnlyByItself()
    {
        const VTUniqueObject marker;
        QHash<VTUniqueObject, int> table;
        table.insert(marker, 1);
        const VTUniqueObject copy = table.keys().constFirst();
        QVERIFY(copy == marker);
        QCOMPARE(table.value(copy), 1);
        QVERIFY(!table.contains(VTUniqueObject()));
    }

    void associatedObjectsGoWithTheirOwner()
    {
        static const char ownedKey = 0, weakKey = 0;
        auto owner = std::make_unique<QObject>();
        QPointer<QObject> owned = new QObject;
        QPointer<QObject> replaced = new QObject;
        QObject notOwned;
        velto::setAssociatedObject(owner.get(), &ownedKey, replaced);
        velto::setAssociatedObject(owner.get(), &ownedKey, owned);
        QVERIFY(replaced.isNull()); // replacing releases the former object
        velto::setAssociatedObjectWeakly(owner.get(), &weakKey, &notOwned);
        QCOMPARE(velto::associatedObjectForKey(owner.get(), &ownedKey), owned.data());
        QCOMPARE(velto::associatedObjectForKey(owner.get(), &weakKey), &notOwned);
        QCOMPARE(velto::associatedObjectForKey(&notOwned, &weakKey), nullptr);
        owner.reset();
        QVERIFY(owned.isNull());
        QCOMPARE(notOwned.objectName(), QString()); // still alive and usable
    }

    void dictionaryAdditions()
    {
        QVariantMap map{{u"a"_s, 1}, {u"b"_s, 2}, {u"c"_s, 3}, {u"dd"_s, 4}};
        velto::setObjectVeltoOrRemoveNil(map, QVariant(), u"a"_s);
        velto::setFloat(map, 0.5f, u"f"_s);
        QCOMPARE(map.value(u"f"_s).metaType(), QMetaType::fromType<double>());
        velto::removeObjectsForKeysInSetVelto(map, {u"b"_s, u"missing"_s});
        velto::removeObjectsForKeysPassingTestVelto(map, [&](const QString &key) {
            return key.size() == 2 && map.contains(u"c"_s); // the map is whole while the test runs
        });
        QCOMPARE(map, (QVariantMap{{u"c"_s, 3}, {u"f"_s, 0.5}}));
    }

    void addObjectsFromDictionaryWalksEitherWaySameResult_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("fewer keys than entries: walks the keys") << QStringList{u"a"_s, u"x"_s};
        QTest::newRow("more keys than entries: walks the dictionary") << QStringList{u"a"_s, u"x"_s, u"y"_s, u"z"_s, u"w"_s};
    }

    void addObjectsFromDictionaryWalksEitherWaySameResult()
    {
        QFETCH(QStringList, keys);
        const QVariantMap source{{u"a"_s, 1}, {u"b"_s, 2}, {u"c"_s, 3}};
        QVariantMap target{{u"a"_s, 0}, {u"keep"_s, 9}};
        velto::addObjectsFromDictionary(target, source, QSet<QString>(keys.begin(), keys.end()));
        QCOMPARE(target, (QVariantMap{{u"a"_s, 1}, {u"keep"_s, 9}}));
    }

    void ensuredGrowthLeavesDataOnFailure()
    {
        QByteArray data("abc");
        QVERIFY(velto::ensureCanIncreaseLengthBy(data, 1000));
        QCOMPARE(data, "abc"_ba);
        QVERIFY(velto::appendDataEnsured(data, data));
        QCOMPARE(data, "abcabc"_ba);
        // More than any allocation can give: refused, and the bytes stay exactly as they were.
        const qsizetype tooMuch = std::numeric_limits<qsizetype>::max() - 64;
        QVERIFY(!velto::ensureCanIncreaseLengthBy(data, tooMuch));
        QVERIFY(!velto::appendBytesEnsured(data, "x", tooMuch));
        QVERIFY(!velto::appendBytesEnsured(data, "x", -1));
        QCOMPARE(data, "abcabc"_ba);
    }

    void patchedRoutineCallsTheOneItReplaced()
    {
        QCOMPARE(releaseRoutine(u"a"_s), u"released a"_s);
        replacedRoutine = releaseRoutine.replace(&patchedRoutine);
        QVERIFY(replacedRoutine == &originalRoutine);
        QVERIFY(releaseRoutine.replace(nullptr) == &patchedRoutine); // null changes nothing
        QCOMPARE(releaseRoutine(u"a"_s), u"kept a, then released a"_s);
        releaseRoutine.replace(replacedRoutine);
        QCOMPARE(releaseRoutine(u"a"_s), u"released a"_s);
    }
};

QTEST_GUILESS_MAIN(DispatchTest)
#include "dispatchtest.moc"

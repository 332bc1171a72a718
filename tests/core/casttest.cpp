// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoCoreCast.h"
#include "Variant+VeltoCore.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class CastTest : public QObject
{
    Q_OBJECT

private slots:
    void objectsOfTheClassAndValuesOfExactlyTheType()
    {
        QTimer timer;
        QObject plain;
        QObject *asObject = &timer;
        QCOMPARE(velto::conditionalCastVelto<QObject>(asObject), asObject); // an instance of a subclass
        QCOMPARE(velto::conditionalCastVelto<QTimer>(&plain), nullptr);
        QCOMPARE(velto::conditionalCastVelto<QTimer>(static_cast<QObject *>(nullptr)), nullptr);
        const QObject *constObject = &timer;
        QCOMPARE(velto::conditionalCastVelto<QTimer>(constObject), &timer);

        QCOMPARE(velto::conditionalCastVelto<QString>(QVariant(u"name"_s)), std::optional<QString>(u"name"_s));
        QVERIFY(!velto::conditionalCastVelto<int>(QVariant(u"12"_s))); // no conversion
        QVERIFY(!velto::conditionalCastVelto<QString>(QVariant()));
        QCOMPARE(velto::conditionalCastVelto<QVariantList>(QVariant(QVariantList{1})).value().size(), 1);
    }

    void boolValues_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("null") << QVariant() << false;
        QTest::newRow("int 1") << QVariant(1) << true;
        QTest::newRow("int 0") << QVariant(0) << false;
        QTest::newRow("real 0") << QVariant(0.0) << false;
        QTest::newRow("YES") << QVariant(u"YES"_s) << true;
        QTest::newRow("true string") << QVariant(u"true"_s) << true;
        QTest::newRow("NO") << QVariant(u"NO"_s) << false;
        QTest::newRow("1") << QVariant(u"1"_s) << true;
        QTest::newRow("0") << QVariant(u"0"_s) << false;
        QTest::newRow("spaced +02") << QVariant(u"  +02"_s) << true;
        QTest::newRow("trailing text ignored") << QVariant(u"9 lives"_s) << true;
        QTest::newRow("0.5 string is false") << QVariant(u"0.5"_s) << false;
        QTest::newRow("spaces only") << QVariant(u"   "_s) << false;
        QTest::newRow("bytes YES") << QVariant(QByteArray("YES")) << true;
        QTest::newRow("list") << QVariant(QVariantList{true}) << false;
    }

    void boolValues()
    {
        QFETCH(QVariant, value);
        QTEST(velto::boolValueVelto(value), "expected");
    }
};

QTEST_GUILESS_MAIN(CastTest)
#include "casttest.moc"

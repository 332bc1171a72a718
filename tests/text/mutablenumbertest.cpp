// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoMutableNumber.h"

#include <QBuffer>
#include <QTest>

#include <cstring>
#include <limits>

using namespace Qt::StringLiterals;

class MutableNumberTest : public QObject
{
    Q_OBJECT

private slots:
    void kindsCodesAndDescriptions()
    {
        const std::unique_ptr<VeltoMutableNumber> base = VeltoMutableNumber::create();
        QVERIFY(dynamic_cast<VeltoMutableIntegerNumber *>(base.get()));
        QCOMPARE(base->objCType(), "q");
        QCOMPARE(base->description(), u"VeltoMutableIntegerNumber=0"_s);

        const auto real = VeltoMutableDoubleNumber::numberWithDouble(-2.75);
        QCOMPARE(real->objCType(), "d");
        QCOMPARE(real->description(), u"VeltoMutableDoubleNumber=-2"_s);

        qint64 whole = 0;
        VeltoMutableIntegerNumber::numberWithInteger(-5)->getValue(&whole);
        QCOMPARE(whole, qint64(-5));
        double d = 0;
        real->getValue(&d);
        QCOMPARE(d, -2.75);
    }

    void initializersConvertToTheKind()
    {
        QCOMPARE(VeltoMutableIntegerNumber::numberWithBool(true)->integerValue(), 1);
        QCOMPARE(VeltoMutableIntegerNumber::numberWithUnsignedInt(4000000000u)->integerValue(), 4000000000);
        QCOMPARE(VeltoMutableIntegerNumber::numberWithUnsignedInteger(std::numeric_limits<quint64>::max())->integerValue(),
                 -1);
        QCOMPARE(VeltoMutableIntegerNumber(static_cast<signed char>(-5)).integerValue(), -5);
        QCOMPARE(VeltoMutableIntegerNumber(-2.9).integerValue(), -2);
        QCOMPARE(VeltoMutableIntegerNumber(2.9f).integerValue(), 2);
        QCOMPARE(VeltoMutableIntegerNumber(1e300).integerValue(), std::numeric_limits<qint64>::max());
        QCOMPARE(VeltoMutableIntegerNumber(qQNaN()).integerValue(), 0);
        QCOMPARE(VeltoMutableDoubleNumber::numberWithFloat(0.5f)->doubleValue(), 0.5);
        QCOMPARE(VeltoMutableDoubleNumber(Q_INT64_C(7)).doubleValue(), 7.0);
        QCOMPARE(VeltoMutableDoubleNumber(true).doubleValue(), 1.0);
    }

    void gettersConvertTheStoredValue()
    {
        const VeltoMutableIntegerNumber n(300);
        QCOMPARE(n.intValue(), 300);
        QCOMPARE(n.charValue(), char(44)); // the low byte
        QCOMPARE(n.unsignedCharValue(), uchar(44));
        QCOMPARE(n.doubleValue(), 300.0);
        QVERIFY(n.boolValue());
        QCOMPARE(VeltoMutableIntegerNumber(-1).unsignedIntegerValue(), std::numeric_limits<quint64>::max());

        // 2^63 + 2048 is a double; it is beyond qint64 but converts exactly as unsigned.
        const VeltoMutableDoubleNumber big(9223372036854777856.0);
        QCOMPARE(big.unsignedIntegerValue(), Q_UINT64_C(9223372036854777856));
        QCOMPARE(big.integerValue(), std::numeric_limits<qint64>::max());
        const VeltoMutableDoubleNumber fraction(-0.25);
        QCOMPARE(fraction.integerValue(), 0);
        QVERIFY(fraction.boolValue());
        QCOMPARE(fraction.floatValue(), -0.25f);
    }

    void arithmeticAndSetters()
    {
        VeltoMutableIntegerNumber counter;
        QCOMPARE(counter.decrement(), -1);
        QCOMPARE(counter.increment(), 0);
        QCOMPARE(counter.incrementByNumber(QVariant(2.9)), 2); // the other's integer value
        QCOMPARE(counter.decrementByNumber(VeltoMutableIntegerNumber(5)), -3);
        QCOMPARE(counter.incrementByNumber(QVariant(u"7"_s)), -3); // not a number: 0
        counter.setIntegerValue(std::numeric_limits<qint64>::max());
        QCOMPARE(counter.increment(), std::numeric_limits<qint64>::min()); // wraps
        counter.setDoubleValue(-7.9);
        QCOMPARE(counter.integerValue(), -7);

        VeltoMutableDoubleNumber total(0.5);
        QCOMPARE(total.incrementByNumber(VeltoMutableDoubleNumber(1.75)), 2);
        QCOMPARE(total.doubleValue(), 2.25);
        QCOMPARE(total.decrementByNumber(QVariant(3)), 0); // -0.75 truncated
        QCOMPARE(total.doubleValue(), -0.75);
        QCOMPARE(total.decrement(), -1);
        total.setIntValue(3);
        QCOMPARE(total.doubleValue(), 3.0);
        total.resetToZero();
        QCOMPARE(total.doubleValue(), 0.0);
    }

    void copiesAreIndependent()
    {
        VeltoMutableIntegerNumber whole(4);
        const QVariant frozen = whole.copy();
        std::unique_ptr<VeltoMutableNumber> twin = whole.mutableCopy();
        whole.increment();
        QCOMPARE(frozen.typeId(), int(QMetaType::LongLong));
        QCOMPARE(frozen.toLongLong(), 4);
        QCOMPARE(twin->integerValue(), 4);
        QVERIFY(dynamic_cast<VeltoMutableIntegerNumber *>(twin.get()));

        const VeltoMutableDoubleNumber real(1.5);
        QCOMPARE(real.copy(), QVariant(1.5));
        QCOMPARE(real.copy().typeId(), int(QMetaType::Double));
        QVERIFY(dynamic_cast<VeltoMutableDoubleNumber *>(real.mutableCopy().get()));
    }

    void archiving()
    {
        QByteArray bytes;
        {
            QDataStream out(&bytes, QIODevice::WriteOnly);
            VeltoMutableIntegerNumber(-42).encodeWithCoder(out);
            VeltoMutableDoubleNumber(2.5).encodeWithCoder(out);
        }
        QCOMPARE(bytes.at(0), 'q');
        QCOMPARE(bytes.at(9), 'd');
        QDataStream in(bytes);
        const std::unique_ptr<VeltoMutableNumber> whole = VeltoMutableNumber::initWithCoder(in);
        const std::unique_ptr<VeltoMutableNumber> real = VeltoMutableNumber::initWithCoder(in);
        QVERIFY(whole && real);
        QCOMPARE(whole->objCType(), "q");
        QCOMPARE(whole->integerValue(), -42);
        QCOMPARE(real->objCType(), "d");
        QCOMPARE(real->doubleValue(), 2.5);

        QDataStream unknown(QByteArray("x12345678"));
        QVERIFY(!VeltoMutableNumber::initWithCoder(unknown));
        QCOMPARE(unknown.status(), QDataStream::ReadCorruptData);
        QDataStream shortRead(bytes.first(5));
        QVERIFY(!VeltoMutableNumber::initWithCoder(shortRead));
    }
};

QTEST_GUILESS_MAIN(MutableNumberTest)
#include "mutablenumbertest.moc"

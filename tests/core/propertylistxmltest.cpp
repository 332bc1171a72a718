// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTPropertyListXml_p.h"
#include "VeltoPropertyList.h"

#include <QDateTime>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QByteArray document(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>";
}

} // namespace

class PropertyListXmlTest : public QObject
{
    Q_OBJECT

private slots:
    void readsEveryTypeAfterADoctype();
    void rejectsMalformedInput_data();
    void rejectsMalformedInput();
    void deepNestingIsBounded();
    void roundTripsSpecialReals();
};

void PropertyListXmlTest::readsEveryTypeAfterADoctype()
{
    const auto value = VTPropertyListXml::read(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist SYSTEM "plist.dtd">
<plist version="1.0">
    <dict>
        <key>t</key><true/> <key>f</key><false/>
        <key>i</key><integer>-9223372036854775808</integer>
        <key>u</key><integer>18446744073709551615</integer>
        <key>r</key><real>1e-3</real>
        <key>s</key><string>a &lt; b</string>
        <key>d</key><data>AAEC
            /w==</data>
        <key>date</key><date>2026-11-22T10:00:00Z</date>
        <key>a</key><array><string/><array/><dict/></array>
    </dict>
</plist>
)");
    QVERIFY(value);
    const QVariantMap expected{{u"t"_s, true}, {u"f"_s, false}, {u"i"_s, std::numeric_limits<qint64>::min()},
                               {u"u"_s, std::numeric_limits<quint64>::max()}, {u"r"_s, 0.001}, {u"s"_s, u"a < b"_s},
                               {u"d"_s, QByteArray("\0\1\2\xff", 4)},
                               {u"date"_s, QDateTime(QDate(2026, 11, 22), QTime(10, 0), Qt::UTC)},
                               {u"a"_s, QVariantList{u""_s, QVariantList(), QVariantMap()}}};
    QCOMPARE(value->toMap(), expected);
}

void PropertyListXmlTest::rejectsMalformedInput_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("message");
    QTest::newRow("empty") << QByteArray() << u""_s;
    QTest::newRow("other root") << QByteArray("<html/>") << u"not a property list"_s;
    QTest::newRow("empty plist") << document("") << u"holds no value"_s;
    QTest::newRow("unknown element") << document("<float>1</float>") << u"unknown element <float>"_s;
    QTest::newRow("integer overflow") << document("<integer>18446744073709551616</integer>") << u"invalid <integer>"_s;
    QTest::newRow("bad date") << document("<date>yesterday</date>") << u"invalid <date>"_s;
    QTest::newRow("bad base64") << document("<data>*not base64*</data>") << u"invalid <data>"_s;
    QTest::newRow("boolean with content") << document("<true>yes</true>") << u"has content"_s;
    QTest::newRow("duplicate key") << document("<dict><key>k</key><true/><key>k</key><false/></dict>")
                                   << u"the key \"k\" appears twice"_s;
    QTest::newRow("date in the year 10000") << document("<date>10000-01-01T00:00:00Z</date>") << u"invalid <date>"_s;
    QTest::newRow("dict value without key") << document("<dict><string>a</string></dict>") << u"without <key>"_s;
    QTest::newRow("unclosed") << QByteArray("<plist><array><true/>") << u""_s;
    QTest::newRow("undeclared entity") << document("<string>&boom;</string>") << u""_s;
}

void PropertyListXmlTest::rejectsMalformedInput()
{
    QFETCH(QByteArray, input);
    QFETCH(QString, message);
    QString error;
    QVERIFY(!VTPropertyListXml::read(input, &error));
    QVERIFY(!error.isEmpty());
    QVERIFY2(error.contains(message), qPrintable(error));
}

void PropertyListXmlTest::deepNestingIsBounded()
{
    const int limit = VeltoPropertyList::MaximumDepth;
    auto nested = [](int depth) { return document(QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth)); };
    QVERIFY(VTPropertyListXml::read(nested(limit)));
    QString error;
    QVERIFY(!VTPropertyListXml::read(nested(limit + 2), &error));
    QVERIFY2(error.contains(u"nesting deeper"_s), qPrintable(error));
    QVERIFY(!VTPropertyListXml::read(nested(100000))); // no stack overflow
}

void PropertyListXmlTest::roundTripsSpecialReals()
{
    const QVariantList reals{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             0.1, -0.0, 1e308, std::numeric_limits<double>::denorm_min()};
    const auto back = VTPropertyListXml::read(VTPropertyListXml::write(reals));
    QVERIFY(back);
    QCOMPARE(back->toList(), reals);
    const auto nan = VTPropertyListXml::read(VTPropertyListXml::write(QVariantList{std::nan("")}));
    QVERIFY(nan && std::isnan(nan->toList().value(0).toDouble()));
}

QTEST_GUILESS_MAIN(PropertyListXmlTest)
#include "propertylistxmltest.moc"

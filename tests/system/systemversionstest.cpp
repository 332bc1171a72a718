#include "VeltoSystemVersions.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

#include <sys/utsname.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(VeltoSystemVersion)

namespace {

constexpr qint64 int64Max = std::numeric_limits<qint64>::max();

VeltoSystemVersion currentVersion()
{
    VeltoSystemVersion version{-7, -7, -7};
    VeltoSystemVersion_Get(&version);
    return version;
}

} // namespace

class SystemVersionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void getFromString_data();
    void getFromString();
    void nullRecords();
    void compare_data();
    void compare();
    void toString_data();
    void toString();
    void currentVersionIsTheKernelRelease();
    void compareToCurrent();
    void appKitVersionIsTheRunningQt();
};

void SystemVersionsTest::getFromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("major");
    QTest::addColumn<qint64>("minor");
    QTest::addColumn<qint64>("patch");

    QTest::newRow("three fields") << u"10.15.7"_s << 10LL << 15LL << 7LL;
    QTest::newRow("letter stops quietly") << u"10.15b3"_s << 10LL << 15LL << 0LL;
    QTest::newRow("null") << QString() << 0LL << 0LL << 0LL;
    QTest::newRow("empty middle field") << u"10..5"_s << 10LL << 0LL << 5LL;
    QTest::newRow("leading dot") << u".5"_s << 0LL << 5LL << 0LL;
    QTest::newRow("fourth field ignored") << u"10.15.7.3"_s << 10LL << 15LL << 7LL;
    QTest::newRow("kernel release") << u"6.1.0-18-amd64"_s << 6LL << 1LL << 0LL;
    QTest::newRow("leading letter") << u"v10.15"_s << 0LL << 0LL << 0LL;
    QTest::newRow("largest signed word") << u"9223372036854775807.1"_s << int64Max << 1LL << 0LL;
    QTest::newRow("one above saturates") << u"9223372036854775808.1"_s << int64Max << 1LL << 0LL;
    QTest::newRow("arabic-indic digits") << u"\u0661\u0660.\u0665"_s << 0LL << 0LL << 0LL;
}

void SystemVersionsTest::getFromString()
{
    QFETCH(QString, text);
    QFETCH(qint64, major);
    QFETCH(qint64, minor);
    QFETCH(qint64, patch);

    // Every field is written, also those the text does not reach.
    VeltoSystemVersion version{99, 99, 99};
    QVERIFY(VeltoSystemVersion_GetFromString(&version, text));
    QCOMPARE(version.major, major);
    QCOMPARE(version.minor, minor);
    QCOMPARE(version.patch, patch);
}

void SystemVersionsTest::nullRecords()
{
    QVERIFY(!VeltoSystemVersion_GetFromString(nullptr, u"10.15.7"_s));
    const VeltoSystemVersion version{10, 15, 7};
    QCOMPARE(VeltoSystemVersion_Compare(&version, nullptr), 0);
    QCOMPARE(VeltoSystemVersion_Compare(nullptr, &version), 0);
    QCOMPARE(VeltoSystemVersion_ToString(nullptr), u"[NULL]"_s);
    VeltoSystemVersion_Get(nullptr); // must simply do nothing
}

void SystemVersionsTest::compare_data()
{
    QTest::addColumn<VeltoSystemVersion>("a");
    QTest::addColumn<VeltoSystemVersion>("b");
    QTest::addColumn<int>("expected");

    QTest::newRow("equal") << VeltoSystemVersion{10, 15, 7} << VeltoSystemVersion{10, 15, 7} << 0;
    QTest::newRow("patch decides") << VeltoSystemVersion{10, 15, 6} << VeltoSystemVersion{10, 15, 7} << -1;
    QTest::newRow("minor decides") << VeltoSystemVersion{10, 16, 0} << VeltoSystemVersion{10, 15, 9} << 1;
    QTest::newRow("major before minor") << VeltoSystemVersion{10, 0, 0} << VeltoSystemVersion{9, 99, 99} << 1;
    // Fields compare unsigned: -1 is the largest value.
    QTest::newRow("negative major is high") << VeltoSystemVersion{-1, 0, 0} << VeltoSystemVersion{1, 0, 0} << 1;
    QTest::newRow("negative patch is high") << VeltoSystemVersion{1, 1, -5} << VeltoSystemVersion{1, 1, int64Max}
                                            << 1;
    QTest::newRow("bits above 32 count") << VeltoSystemVersion{0x100000000LL, 0, 0} << VeltoSystemVersion{1, 0, 0}
                                         << 1;
}

void SystemVersionsTest::compare()
{
    QFETCH(VeltoSystemVersion, a);
    QFETCH(VeltoSystemVersion, b);
    QFETCH(int, expected);

    QCOMPARE(VeltoSystemVersion_Compare(&a, &b), expected);
    QCOMPARE(VeltoSystemVersion_Compare(&b, &a), -expected);
}

void SystemVersionsTest::toString_data()
{
    QTest::addColumn<VeltoSystemVersion>("version");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << VeltoSystemVersion{10, 15, 7} << u"10.15.7"_s;
    QTest::newRow("bits above 32 dropped") << VeltoSystemVersion{0x100000005LL, 0x200000000LL, 0x7FFFFFFF00000001LL}
                                           << u"5.0.1"_s;
    QTest::newRow("low 32 bits are signed") << VeltoSystemVersion{0xFFFFFFFFLL, 0x80000000LL, 0x7FFFFFFFLL}
                                            << u"-1.-2147483648.2147483647"_s;
}

void SystemVersionsTest::toString()
{
    QFETCH(VeltoSystemVersion, version);
    QFETCH(QString, expected);

    QCOMPARE(VeltoSystemVersion_ToString(&version), expected);
}

void SystemVersionsTest::currentVersionIsTheKernelRelease()
{
    struct utsname names;
    QCOMPARE(uname(&names), 0);
    const QString release = QString::fromLatin1(names.release);

    // Read the numbers out of the release independently of the library's parser.
    static const QRegularExpression leadingNumbers(u"^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?"_s);
    const QRegularExpressionMatch match = leadingNumbers.match(release);
    QVERIFY2(match.hasMatch(), qPrintable(release));

    const VeltoSystemVersion current = currentVersion();
    QCOMPARE(current.major, match.captured(1).toLongLong());
    QCOMPARE(current.minor, match.captured(2).toLongLong());
    QCOMPARE(current.patch, match.captured(3).toLongLong());
    QCOMPARE(VeltoSystemVersion_PrettyString(), u"%1.%2.%3"_s.arg(current.major).arg(current.minor).arg(current.patch));
}

void SystemVersionsTest::compareToCurrent()
{
    const VeltoSystemVersion c = currentVersion();
    const quint64 major = quint64(c.major), minor = quint64(c.minor), patch = quint64(c.patch), top = ~quint64(0);
    QVERIFY(major >= 2); // the checks below step below the current version

    // Each row: a version and how it compares to the running one.
    for (const auto &[ma, mi, pa, expected] :
         {std::tuple{major, minor, patch, 0}, std::tuple{major, minor, patch + 1, 1},
          std::tuple{major, minor + 1, quint64(0), 1}, std::tuple{top, quint64(0), quint64(0), 1},
          std::tuple{major - 1, top, top, -1}, std::tuple{quint64(1), quint64(99), quint64(99), -1}}) {
        QCOMPARE(VeltoSystem_CompareToCurrent(ma, mi, pa), expected);
        QCOMPARE(VeltoSystem_IsSystemVersionAtLeast(ma, mi, pa), expected <= 0);
        QCOMPARE(VeltoSystem_IsSystemVersionLessThan(ma, mi, pa), expected > 0);
    }
}

void SystemVersionsTest::appKitVersionIsTheRunningQt()
{
    const QString text = VeltoSystem_AppKitVersionString();
    static const QRegularExpression format(u"^\\d+\\.000000$"_s);
    QVERIFY2(format.match(text).hasMatch(), qPrintable(text));

    const QStringList parts = QString::fromLatin1(qVersion()).split(u'.');
    QCOMPARE(parts.size(), 3);
    const qint64 number = text.section(u'.', 0, 0).toLongLong();
    QCOMPARE(number / 10000, parts.at(0).toLongLong());
    QCOMPARE(number / 100 % 100, parts.at(1).toLongLong());
    QCOMPARE(number % 100, parts.at(2).toLongLong());
}

QTEST_GUILESS_MAIN(SystemVersionsTest)
#include "systemversionstest.moc"

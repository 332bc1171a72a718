// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSystemVersions.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <limits>

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
    void getFromString_data()
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

    void getFromString()
    {
        // Every field is written, also those the text does not reach.
        QFETCH(QString, text);
        VeltoSystemVersion version{99, 99, 99};
        QVERIFY(VeltoSystemVersion_GetFromString(&version, text));
        QTEST(version.major, "major");
        QTEST(version.minor, "minor");
        QTEST(version.patch, "patch");
    }

    void nullRecords()
    {
        QVERIFY(!VeltoSystemVersion_GetFromString(nullptr, u"10.15.7"_s));
        const VeltoSystemVersion version{10, 15, 7};
        QCOMPARE(VeltoSystemVersion_Compare(&version, nullptr), 0);
        QCOMPARE(VeltoSystemVersion_Compare(nullptr, &version), 0);
        QCOMPARE(VeltoSystemVersion_ToString(nullptr), u"[NULL]"_s);
        VeltoSystemVersion_Get(nullptr); // must simply do nothing
    }

    void compare_data()
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

    void compare()
    {
        QFETCH(VeltoSystemVersion, a);
        QFETCH(VeltoSystemVersion, b);
        QFETCH(int, expected);
        QCOMPARE(VeltoSystemVersion_Compare(&a, &b), expected);
        QCOMPARE(VeltoSystemVersion_Compare(&b, &a), -expected);
    }

    void toString_data()
    {
        QTest::addColumn<VeltoSystemVersion>("version");
        QTest::addColumn<QString>("expected");

        QTest::newRow("plain") << VeltoSystemVersion{10, 15, 7} << u"10.15.7"_s;
        QTest::newRow("bits above 32 dropped") << VeltoSystemVersion{0x100000005LL, 0x200000000LL, 0x7FFFFFFF00000001LL}
                                               << u"5.0.1"_s;
        QTest::newRow("low 32 bits are signed") << VeltoSystemVersion{0xFFFFFFFFLL, 0x80000000LL, 0x7FFFFFFFLL}
                                                << u"-1.-2147483648.2147483647"_s;
    }

    void toString()
    {
        QFETCH(VeltoSystemVersion, version);
        QTEST(VeltoSystemVersion_ToString(&version), "expected");
    }

    void currentVersionIsTheKernelRelease()
    {
        // The kernel's release as /proc gives it, read with a pattern of the test's own.
        QFile file(u"/proc/sys/kernel/osrelease"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString release = QString::fromLatin1(file.readAll());
        const QRegularExpressionMatch match = QRegularExpression(u"^(\\d+)\\.(\\d+)(?:\\.(\\d+))?"_s).match(release);
        QVERIFY2(match.hasMatch(), qPrintable(release));
        const VeltoSystemVersion current = currentVersion();
        QCOMPARE(VeltoSystemVersion_ToString(&current), u"%1.%2.%3"_s.arg(match.captured(1), match.captured(2))
                                                             .arg(match.captured(3).isEmpty() ? u"0"_s : match.captured(3)));
        QCOMPARE(VeltoSystemVersion_PrettyString(), VeltoSystemVersion_ToString(&current));
    }

    void compareToCurrent()
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

    void appKitVersionIsTheRunningQt()
    {
        QCOMPARE(VeltoSystem_AppKitVersionString(),
                 u"%1.000000"_s.arg(QT_VERSION_MAJOR * 10000 + QT_VERSION_MINOR * 100 + QT_VERSION_PATCH));
    }
};

QTEST_GUILESS_MAIN(SystemVersionsTest)
#include "systemversionstest.moc"

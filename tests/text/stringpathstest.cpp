// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoPaths.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class StringPathsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The expansion must not follow HOME, so HOME points elsewhere before the first expansion.
        QVERIFY(m_fakeHome.isValid());
        qputenv("HOME", QFile::encodeName(m_fakeHome.path()));
        const passwd *entry = getpwuid(getuid());
        if (!entry)
            QSKIP("no password entry for this user");
        m_home = QFile::decodeName(entry->pw_dir);
        QVERIFY(!m_home.isEmpty() && m_home != m_fakeHome.path());
    }

    void pathExtension_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<bool>("has");
        QTest::addColumn<QString>("changed");

        QTest::newRow("case ignored") << u"dir/notes.TXT"_s << u"txt"_s << true << u"dir/notes.txt"_s;
        QTest::newRow("last dot only") << u"a.tar.gz"_s << u"tar.gz"_s << false << u"a.tar.tar.gz"_s;
        QTest::newRow("no extension") << u"dir.d/file"_s << u"d"_s << false << u"dir.d/file.d"_s;
        QTest::newRow("hidden file has none") << u".profile"_s << QString() << true << u".profile"_s;
        QTest::newRow("trailing slash ignored") << u"/x/file.txt/"_s << u"txt"_s << true << u"/x/file.txt"_s;
        QTest::newRow("removing") << u"a/b.txt"_s << QString() << false << u"a/b"_s;
        QTest::newRow("root unchanged") << u"/"_s << u"md"_s << false << u"/"_s;
    }

    void pathExtension()
    {
        QFETCH(QString, path);
        QFETCH(QString, extension);
        QFETCH(bool, has);
        QCOMPARE(velto::hasPathExtensionVelto(path, extension), has);
        QTEST(velto::stringByChangingPathExtensionVelto(path, extension), "changed");
    }

    void equivalenceUsesThePasswordDatabaseHome()
    {
        QCOMPARE(velto::stringByPathEquivalence(u"~"_s), m_home);
        QCOMPARE(velto::stringByPathEquivalence(u"~/a/./b/../c/"_s), m_home + u"/a/c"_s);
        QCOMPARE(velto::stringByPathEquivalence(u"~other/x"_s), u"~other/x"_s);
        QCOMPARE(velto::stringByPathEquivalence(u"//a//b/"_s), u"/a/b"_s);
        QCOMPARE(velto::stringByPathEquivalence(u"../a"_s), u"../a"_s);
        QCOMPARE(velto::stringByPathEquivalence(QString()), QString());
    }

    void pathRelations_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<bool>("equivalent");
        QTest::addColumn<bool>("inFolder");
        QTest::addColumn<bool>("descendant");

        QTest::newRow("child, folder in other case") << u"/a/b/c"_s << u"/a/B/"_s << false << true << false;
        QTest::newRow("grandchild") << u"/a/b/c"_s << u"/a"_s << false << false << true;
        QTest::newRow("sibling extending the name (kept)") << u"/a/bc"_s << u"/a/b"_s << false << false << true;
        QTest::newRow("itself, other spelling") << u"/a/./b/"_s << u"/A/b"_s << true << false << false;
        QTest::newRow("in the home folder") << u"~/f"_s << u"~"_s << false << true << true;
        QTest::newRow("in the root") << u"/x"_s << u"/"_s << false << true << true;
        QTest::newRow("the root is in no folder") << u"/"_s << u"/"_s << true << false << true;
        QTest::newRow("null path") << QString() << u"/"_s << false << false << false;
    }

    void pathRelations()
    {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        QTEST(velto::isPathEquivalent(path, folder), "equivalent");
        QTEST(velto::isPathInFolder(path, folder), "inFolder");
        QTEST(velto::isPathDescendantOf(path, folder), "descendant");
    }

    void setOfComponents()
    {
        using Set = QSet<QString>;
        QCOMPARE(velto::setWithComponentsSeparatedByString(u"a,b,a"_s, u","_s), (Set{u"a"_s, u"b"_s}));
        QCOMPARE(velto::setWithComponentsSeparatedByString(u",a,,b,"_s, u","_s), (Set{QString(), u"a"_s, u"b"_s}));
        QCOMPARE(velto::setWithComponentsSeparatedByString(u"a,b,"_s, u","_s), (Set{u"a"_s, u"b"_s}));
        QCOMPARE(velto::setWithComponentsSeparatedByString(QString(), u","_s), Set());
        QCOMPARE(velto::setWithComponentsSeparatedByString(u"a,b"_s, QString()), Set{u"a,b"_s});
        QCOMPARE(velto::setWithComponentsSeparatedByString(u"aaa"_s, u"aa"_s), (Set{QString(), u"a"_s}));
    }

    void ownExtension()
    {
        QCOMPARE(velto::pathExtensionVelto(u"a.tar.gz"_s), u"gz"_s);
        QCOMPARE(velto::pathExtensionVelto(u"/x/report.TXT/"_s), u"TXT"_s);
        QCOMPARE(velto::pathExtensionVelto(u".profile"_s), QString());
        QCOMPARE(velto::pathExtensionVelto(u"name."_s), QString());
        QCOMPARE(velto::pathExtensionVelto(u"dir.d/file"_s), QString());
    }

    void appendingComponents_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("component");
        QTest::addColumn<QString>("joined");

        QTest::newRow("plain") << u"/home/u"_s << u"Documents"_s << u"/home/u/Documents"_s;
        QTest::newRow("slashes on both sides") << u"/a/"_s << u"/b//c/"_s << u"/a/b/c"_s;
        QTest::newRow("root") << u"/"_s << u"etc"_s << u"/etc"_s;
        QTest::newRow("empty component") << u"/a//b/"_s << QString() << u"/a/b"_s;
        QTest::newRow("empty path") << QString() << u"b//c"_s << u"b/c"_s;
        QTest::newRow("dots stay") << u"/a"_s << u"../b/./c"_s << u"/a/../b/./c"_s;
        QTest::newRow("only slashes") << u"/"_s << u"/"_s << u"/"_s;
    }

    void appendingComponents()
    {
        QFETCH(QString, path);
        QFETCH(QString, component);
        QTEST(velto::stringByAppendingPathComponentVelto(path, component), "joined");
    }

private:
    QTemporaryDir m_fakeHome;
    QString m_home;
};

QTEST_GUILESS_MAIN(StringPathsTest)
#include "stringpathstest.moc"

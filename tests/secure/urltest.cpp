// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoURLAdditions.h"
#include "Url+VeltoAdditions.h"
#include "VTURLRules_p.h"
#include "VeltoApplication.h"
#include "VeltoFileManager.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class UrlTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void percentEncoding_data();
    void percentEncoding();
    void percentDecoding_data();
    void percentDecoding();
    void percentRoundTrip();
    void looseText_data();
    void looseText();
    void tildePaths_data();
    void tildePaths();
    void displayForms();
    void filePaths_data();
    void filePaths();
    void pathComparisons_data();
    void pathComparisons();
    void subpaths_data();
    void subpaths();
    void fileNodes();
    void linksAndContainers();
    void resourceValues();
    void queryStrings();

private:
    QTemporaryDir m_fakeHome;
    QString m_home;
    QTemporaryDir m_files;
};

void UrlTest::initTestCase()
{
    // "~" must mean the real home folder, not HOME: HOME points elsewhere before anything reads it.
    QVERIFY(m_fakeHome.isValid() && m_files.isValid());
    qputenv("HOME", QFile::encodeName(m_fakeHome.path()));
    const passwd *entry = getpwuid(getuid());
    if (!entry)
        QSKIP("no password entry for this user");
    m_home = QFile::decodeName(entry->pw_dir);
    QCOMPARE(VeltoFileManager::userHomeFolderURL(), QUrl::fromLocalFile(m_home + u'/'));
}

void UrlTest::percentEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    QTest::newRow("printable ASCII")
        << u" !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"_s
        << u"%20!%22#$%&'()*+,-./0123456789:;%3C=%3E?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[%5C]%5E_%60abcdefghijklmnopqrstuvwxyz%7B%7C%7D~"_s;
    QTest::newRow("control characters") << u"a\tb\nc\u007f"_s << u"a%09b%0Ac%7F"_s;
    QTest::newRow("beyond ASCII") << u"ü€"_s << u"%C3%BC%E2%82%AC"_s;
    QTest::newRow("surrogate pair") << u"😀"_s << u"%F0%9F%98%80"_s;
    QTest::newRow("already encoded stays") << u"a%20b"_s << u"a%20b"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("unpaired surrogate") << QString(QChar(0xD800)) << QString();
}

void UrlTest::percentEncoding()
{
    QFETCH(QString, text);
    QFETCH(QString, encoded);
    const QString result = velto::stringByAddingVeltoPercentEncoding(text);
    QCOMPARE(result, encoded);
    QCOMPARE(result.isNull(), encoded.isNull());
}

void UrlTest::percentDecoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decoded");

    QTest::newRow("space") << u"a%20b"_s << u"a b"_s;
    QTest::newRow("UTF-8, either case") << u"%C3%bc%e2%82%AC"_s << u"ü€"_s;
    QTest::newRow("no escapes") << u"plain/text?x=1"_s << u"plain/text?x=1"_s;
    QTest::newRow("literal beyond ASCII") << u"ü%21"_s << u"ü!"_s;
    QTest::newRow("byte-order mark kept") << u"%EF%BB%BFa"_s << u"\uFEFFa"_s;
    QTest::newRow("zero byte") << u"a%00b"_s << QStringView(u"a\0b", 3).toString();
    QTest::newRow("percent at the end") << u"100%"_s << QString();
    QTest::newRow("one digit") << u"%2"_s << QString();
    QTest::newRow("not hexadecimal") << u"%zz"_s << QString();
    QTest::newRow("half a character") << u"%C3"_s << QString();
    QTest::newRow("overlong form") << u"%C0%AF"_s << QString();
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("unpaired surrogate") << QString(QChar(0xDC00)) << QString();
}

void UrlTest::percentDecoding()
{
    QFETCH(QString, text);
    QFETCH(QString, decoded);
    const QString result = velto::stringByRemovingVeltoPercentEncoding(text);
    QCOMPARE(result, decoded);
    QCOMPARE(result.isNull(), decoded.isNull());
}

void UrlTest::percentRoundTrip()
{
    // Any text without "%" comes back from encoding and decoding; the encoded form has only allowed characters.
    const quint32 seed = 7411;
    QRandomGenerator random(seed);
    const VeltoCharacterSet &allowed = velto::allowedPercentEncodedCharacterSetVelto();
    for (int round = 0; round < 2000; ++round) {
        QString text;
        const int length = random.bounded(12);
        for (int index = 0; index < length; ++index) {
            char32_t codePoint = char32_t(random.bounded(3) == 0 ? random.bounded(0x110000) : random.bounded(0x80));
            if (codePoint == U'%' || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
                codePoint = U'x';
            text += QString::fromUcs4(&codePoint, 1);
        }
        const QString encoded = velto::stringByAddingVeltoPercentEncoding(text);
        for (QChar unit : encoded)
            QVERIFY2(allowed.contains(unit.unicode()), qPrintable(u"seed %1, round %2"_s.arg(seed).arg(round)));
        QVERIFY2(velto::stringByRemovingVeltoPercentEncoding(encoded) == text,
                 qPrintable(u"seed %1, round %2: %3"_s.arg(seed).arg(round).arg(encoded)));
    }
}

void UrlTest::looseText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("url"); // empty: no URL

    QTest::newRow("with a scheme") << u"https://example.com/a?b=c#d"_s << u"https://example.com/a?b=c#d"_s;
    QTest::newRow("mail with a scheme") << u"mailto:a@example.org"_s << u"mailto:a@example.org"_s;
    QTest::newRow("host and port read as a scheme") << u"localhost:8080/x"_s << u"localhost:8080/x"_s;
    QTest::newRow("fragment") << u"#section-2"_s << u"#section-2"_s;
    QTest::newRow("absolute path") << u"/usr/share/doc"_s << u"file:///usr/share/doc"_s;
    QTest::newRow("home path") << u"~/Documents/a.txt"_s << u"file:~/Documents/a.txt"_s;
    QTest::newRow("mail address") << u"someone@example.com"_s << u"mailto:someone@example.com"_s;
    QTest::newRow("host-like name with a page") << u"www.example.com/page"_s << u"http://www.example.com/page"_s;
    QTest::newRow("host-like name") << u"example.com"_s << u"http://example.com"_s;
    QTest::newRow("international name") << u"bücher.de/x"_s << u"http://xn--bcher-kva.de/x"_s;
    QTest::newRow("space in the host") << u"example com/page"_s << QString();
    QTest::newRow("no dot before the slash") << u"docs/readme.txt"_s << QString();
    QTest::newRow("one word") << u"readme"_s << QString();
    QTest::newRow("tab inside") << u"exa\tmple.com"_s << QString();
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("600 units") << u"http://example.com/"_s + QString(581, u'a') << u"http://example.com/"_s + QString(581, u'a');
    QTest::newRow("601 units") << u"http://example.com/"_s + QString(582, u'a') << QString();
    QTest::newRow("thousands of units") << QString(5000, u'a') + u".com"_s << QString();
    QTest::newRow("line break inside a URL") << u"https://example.com/long\npath"_s << u"https://example.com/longpath"_s;
    QTest::newRow("second line spoils the join") << u"example.com\r\nsee the page above"_s << u"http://example.com"_s;
    QTest::newRow("joined lines make the host") << u"line\u2028example.com/x"_s << u"http://lineexample.com/x"_s;
    QTest::newRow("only line breaks") << u"\n\r\n"_s << QString();
    QTest::newRow("line break then nothing usable") << u"a b\nc d"_s << QString();
}

void UrlTest::looseText()
{
    QFETCH(QString, text);
    QFETCH(QString, url);
    QCOMPARE(velto::URLWithVeltoValidatedString(text).toString(QUrl::FullyEncoded), url);
    if (!text.contains(u'\n') && !text.contains(u'\r') && !text.contains(u'\u2028'))
        QCOMPARE(VTURLFromString(text).toString(QUrl::FullyEncoded), url);
}

void UrlTest::tildePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("inHome"); // relative to the real home; null: not a tilde path
    QTest::addColumn<QString>("file");   // the file URL's path; "." for "the current folder joined with path"

    QTest::newRow("documents") << u"~/Documents/a.txt"_s << u"Documents/a.txt"_s << QString();
    QTest::newRow("home itself") << u"~"_s << u""_s << QString();
    QTest::newRow("home with slash") << u"~/"_s << u""_s << QString();
    QTest::newRow("another user's form") << u"~bob/x"_s << u"bob/x"_s << QString();
    QTest::newRow("escapes and fragment") << u"~/a%20b#frag?x"_s << u"a b"_s << QString();
    QTest::newRow("escape that does not decode") << u"~/a%zz"_s << u"a%zz"_s << QString();
    QTest::newRow("absolute") << u"/etc/hosts"_s << QString() << u"/etc/hosts"_s;
    QTest::newRow("relative") << u"rel/x"_s << QString() << u"."_s;
}

void UrlTest::tildePaths()
{
    QFETCH(QString, path);
    QFETCH(QString, inHome);
    QFETCH(QString, file);
    QUrl url;
    QCOMPARE(velto::hasTildePrefixInVeltoPath(path, &url), !inHome.isNull());
    if (!inHome.isNull()) {
        const QString expected = inHome.isEmpty() ? m_home : m_home + u'/' + inHome;
        QCOMPARE(url.toLocalFile(), expected);
        QCOMPARE(velto::fileURLWithVeltoPath(path).toLocalFile(), expected);
    } else {
        QCOMPARE(velto::fileURLWithVeltoPath(path).toLocalFile(), file == u"." ? QDir::current().filePath(path) : file);
    }
    QVERIFY(velto::fileURLWithVeltoPath(QString()).isEmpty());
    QVERIFY(!velto::hasTildePrefixInVeltoPath(QString()));
}

void UrlTest::displayForms()
{
    const QUrl inHome = QUrl::fromLocalFile(m_home + u"/Documents/a b.txt"_s);
    QCOMPARE(velto::filePathForUserDisplay(inHome), u"~/Documents/a b.txt"_s);
    QCOMPARE(velto::filePathForDebugDisplay(inHome), m_home + u"/Documents/a b.txt"_s);
    QCOMPARE(velto::filePathForUserDisplay(QUrl::fromLocalFile(m_home + u"x/y"_s)), m_home + u"x/y"_s);
    QCOMPARE(velto::filePathForUserDisplay(QUrl::fromLocalFile(m_home)), u"~"_s);
    const QUrl web(u"https://example.com/a%20b?q=%C3%BC"_s);
    QCOMPARE(velto::veltoStringify(web), u"https://example.com/a%20b?q=%C3%BC"_s);
    QCOMPARE(velto::veltoStringifyWithoutPercentEncoding(web), u"https://example.com/a b?q=ü"_s);
    QCOMPARE(velto::filePathForUserDisplay(web), u"https://example.com/a b?q=ü"_s);
    QCOMPARE(velto::filePathForDebugDisplay(web), u"https://example.com/a b?q=ü"_s);
    const QUrl broken(u"https://example.com/%C3"_s);
    QCOMPARE(velto::veltoStringifyWithoutPercentEncoding(broken), u"https://example.com/%C3"_s);
    QVERIFY(velto::hasFilePathExtensionVelto(QUrl(u"https://example.com/a.PDF?x=1"_s), u"pdf"));
    QVERIFY(!velto::hasFilePathExtensionVelto(QUrl::fromLocalFile(u"/a/.profile"_s), u"profile"));
}

void UrlTest::filePaths_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QUrl>("base");
    QTest::addColumn<QString>("path"); // "~" at the start: the real home

    QTest::newRow("home specifier") << QUrl(u"file:~/Documents/x%20y#top"_s) << QUrl() << u"~/Documents/x y"_s;
    QTest::newRow("plain file") << QUrl(u"file:///etc/hosts"_s) << QUrl() << u"/etc/hosts"_s;
    QTest::newRow("not a file") << QUrl(u"https://example.com/a"_s) << QUrl() << QString();
    QTest::newRow("server relative to a base") << QUrl(u"file://server/share/a%20b"_s) << QUrl(u"file:///mnt"_s)
                                               << u"/mnt/server/share/a b"_s;
    QTest::newRow("server without a base") << QUrl(u"file://server/share"_s) << QUrl() << u"/share"_s;
    QTest::newRow("localhost ignores the base") << QUrl(u"file://localhost/etc"_s) << QUrl(u"file:///mnt"_s) << u"/etc"_s;
    QTest::newRow("three slashes ignore the base") << QUrl(u"file:///etc"_s) << QUrl(u"file:///mnt"_s) << u"/etc"_s;
}

void UrlTest::filePaths()
{
    QFETCH(QUrl, url);
    QFETCH(QUrl, base);
    QFETCH(QString, path);
    const QString expected = path.startsWith(u'~') ? m_home + path.sliced(1) : path;
    const QString result = velto::veltoFilePathRelativeToBaseURL(url, base);
    QCOMPARE(result, expected);
    QCOMPARE(result.isNull(), expected.isNull());
    if (base.isEmpty())
        QCOMPARE(velto::veltoFilePath(url), expected);
}

void UrlTest::pathComparisons_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QUrl>("other");
    QTest::addColumn<bool>("equivalent");
    QTest::addColumn<bool>("inFolder");   // url in the folder other
    QTest::addColumn<bool>("descendant"); // url below the folder other

    const auto file = [](const QString &path) { return QUrl::fromLocalFile(path); };
    QTest::newRow("dot components") << file(u"/a/./b"_s) << file(u"/a/b"_s) << true << false << true;
    QTest::newRow("letter case") << file(u"/A/b"_s) << file(u"/a/B"_s) << true << false << false;
    QTest::newRow("tilde") << file(u"~/x"_s) << file(m_home + u"/x"_s) << true << false << true;
    QTest::newRow("child") << file(u"/a/b/c"_s) << file(u"/a/b"_s) << false << true << true;
    QTest::newRow("grandchild") << file(u"/a/b/c/d"_s) << file(u"/a/b/"_s) << false << false << true;
    QTest::newRow("sibling with a longer name") << file(u"/a/bc"_s) << file(u"/a/b"_s) << false << false << true;
    QTest::newRow("web addresses") << QUrl(u"https://x.org/a"_s) << QUrl(u"https://y.org/a"_s) << true << false << false;
    QTest::newRow("no URL") << QUrl() << file(u"/a"_s) << false << false << false;
}

void UrlTest::pathComparisons()
{
    QFETCH(QUrl, url);
    QFETCH(QUrl, other);
    QFETCH(bool, equivalent);
    QFETCH(bool, inFolder);
    QFETCH(bool, descendant);
    QCOMPARE(velto::isFileEquivalentPathAsURL(url, other), equivalent);
    QCOMPARE(velto::isFileEquivalentPathAsURL(other, url), equivalent);
    QCOMPARE(velto::isFileEqualNodeAsURL(url, other), equivalent); // none of these files exist
    QCOMPARE(velto::isFileInFolderAtURL(url, other), inFolder);
    QCOMPARE(velto::isFileInDescendentOfFolderAtURL(url, other), descendant);
}

void UrlTest::subpaths_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("subpath"); // null: not below

    QTest::newRow("other letter case") << u"/users/X/docs/a/b"_s << u"/Users/x/Docs"_s << u"a/b"_s;
    QTest::newRow("the folder itself") << u"/Users/x/Docs"_s << u"/Users/x/Docs/"_s << u""_s;
    QTest::newRow("a sibling folder") << u"/Users/x/Docs2/a"_s << u"/Users/x/Docs"_s << QString();
    QTest::newRow("standardised first") << u"/a/./b/../c/d"_s << u"/a//c"_s << u"d"_s;
    QTest::newRow("shorter than the folder") << u"/a"_s << u"/a/b"_s << QString();
    QTest::newRow("root") << u"/etc/hosts"_s << u"/"_s << u"etc/hosts"_s;
}

void UrlTest::subpaths()
{
    QFETCH(QString, file);
    QFETCH(QString, folder);
    QFETCH(QString, subpath);
    const QString result = velto::fileSubpathDescendingFromEnclosingFolderURL(QUrl::fromLocalFile(file), QUrl::fromLocalFile(folder));
    QCOMPARE(result, subpath);
    QCOMPARE(result.isNull(), subpath.isNull());
}

void UrlTest::fileNodes()
{
    const QDir root(m_files.path());
    QFile original(root.filePath(u"original.txt"_s));
    QVERIFY(original.open(QIODevice::WriteOnly));
    original.close();
    QVERIFY(QFile::link(root.filePath(u"original.txt"_s), root.filePath(u"link.txt"_s)));
    QCOMPARE(::link(QFile::encodeName(root.filePath(u"original.txt"_s)).constData(),
                    QFile::encodeName(root.filePath(u"hard.txt"_s)).constData()), 0);
    QFile other(root.filePath(u"other.txt"_s));
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.close();
    const auto url = [&root](const QString &name) { return QUrl::fromLocalFile(root.filePath(name)); };
    QVERIFY(velto::isFileEqualNodeAsURL(url(u"original.txt"_s), url(u"hard.txt"_s)));
    QVERIFY(velto::isFileEqualNodeAsURL(url(u"link.txt"_s), url(u"original.txt"_s)));
    QVERIFY(!velto::isFileEquivalentPathAsURL(url(u"link.txt"_s), url(u"original.txt"_s)));
    QVERIFY(!velto::isFileEqualNodeAsURL(url(u"original.txt"_s), url(u"other.txt"_s)));
    QVERIFY(!velto::isFileEqualNodeAsURL(url(u"missing-a"_s), url(u"missing-b"_s)));
}

void UrlTest::linksAndContainers()
{
    const QDir root(m_files.path());
    QVERIFY(root.mkpath(u"home/Documents"_s) && root.mkpath(u"container/data/Documents"_s));
    const QString real = root.filePath(u"home/Documents/a.txt"_s);
    QFile file(real);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(QFile::link(real, root.filePath(u"first-link"_s)));
    QVERIFY(QFile::link(root.filePath(u"first-link"_s), root.filePath(u"second-link"_s)));
    QVERIFY(QFile::link(root.filePath(u"nowhere"_s), root.filePath(u"dangling"_s)));
    const auto url = [&root](const QString &name) { return QUrl::fromLocalFile(root.filePath(name)); };
    QCOMPARE(velto::URLByResolvingSymlinkOrAliasFile(url(u"second-link"_s)), QUrl::fromLocalFile(real));
    QCOMPARE(velto::URLByResolvingSymlinkOrAliasFile(url(u"dangling"_s)), url(u"dangling"_s));
    QCOMPARE(velto::URLByResolvingSymlinkOrAliasFile(QUrl::fromLocalFile(real)), QUrl::fromLocalFile(real));
    const QUrl web(u"https://example.com/x"_s);
    QCOMPARE(velto::URLByResolvingSymlinkOrAliasFile(web), web);

    // The container's copy of a real file is a hard link to it; another file of the same name is not.
    const QString inContainer = root.filePath(u"container/data/Documents/a.txt"_s);
    QCOMPARE(::link(QFile::encodeName(real).constData(), QFile::encodeName(inContainer).constData()), 0);
    const QString container = root.filePath(u"container/data"_s);
    const QString home = root.filePath(u"home"_s);
    QCOMPARE(VTRealFileForContainerURL(QUrl::fromLocalFile(inContainer), container, home), QUrl::fromLocalFile(real));
    QFile imposter(root.filePath(u"container/data/Documents/b.txt"_s));
    QVERIFY(imposter.open(QIODevice::WriteOnly));
    imposter.close();
    QFile namesake(root.filePath(u"home/Documents/b.txt"_s));
    QVERIFY(namesake.open(QIODevice::WriteOnly));
    namesake.close();
    const QUrl imposterURL = QUrl::fromLocalFile(imposter.fileName());
    QCOMPARE(VTRealFileForContainerURL(imposterURL, container, home), imposterURL);
    QCOMPARE(VTRealFileForContainerURL(QUrl::fromLocalFile(real), container, home), QUrl::fromLocalFile(real));
    const QUrl sibling = QUrl::fromLocalFile(container + u"2/Documents/a.txt"_s);
    QCOMPARE(VTRealFileForContainerURL(sibling, container, home), sibling);
    // Outside a sandbox nothing is mapped.
    if (!VeltoApplication::isRunningInsideSandbox())
        QCOMPARE(velto::URLByResolvingToRealFileOutsideSandbox(QUrl::fromLocalFile(inContainer)), QUrl::fromLocalFile(inContainer));
}

void UrlTest::resourceValues()
{
    const QDir root(m_files.path());
    QVERIFY(root.mkpath(u"folder"_s));
    QVERIFY(QFile::link(root.filePath(u"folder"_s), root.filePath(u"folder-link"_s)));
    QFile file(root.filePath(u"sized.bin"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(1234, 'x')) == 1234);
    file.close();
    const auto url = [&root](const QString &name) { return QUrl::fromLocalFile(root.filePath(name)); };
    QVERIFY(velto::isFileDirectoryVelto(url(u"folder"_s)));
    QVERIFY(!velto::isFileDirectoryVelto(url(u"folder-link"_s)));
    QVERIFY(velto::boolResourceValueForKey(url(u"folder-link"_s), VeltoURLResourceKey::IsSymbolicLink));
    QVERIFY(velto::boolResourceValueForKey(url(u"sized.bin"_s), VeltoURLResourceKey::IsRegularFile));
    QCOMPARE(velto::resourceValueForKey(url(u"sized.bin"_s), VeltoURLResourceKey::FileSize).toLongLong(), 1234);
    QCOMPARE(velto::resourceValueForKey(url(u"sized.bin"_s), VeltoURLResourceKey::ContentModificationDate).toDateTime(),
             QFileInfo(file).lastModified());
    QCOMPARE(velto::resourceValueForKey(url(u"missing"_s), VeltoURLResourceKey::FileSize, -1).toInt(), -1);
    QVERIFY(!velto::isFileDirectoryVelto(url(u"missing"_s)));
}

void UrlTest::queryStrings()
{
    const QUrl url = velto::URLByPercentEncodingStringVelto(
        u"https://example.com/search results"_s, {{u"q"_s, u"a&b c=d?"_s}, {u"lang"_s, u"de"_s}, {u"empty"_s, u""_s}});
    QCOMPARE(url.toString(QUrl::FullyEncoded), u"https://example.com/search%20results?empty=&lang=de&q=a%26b%20c%3Dd%3F"_s);
    const QMap<QString, QString> expected{{u"q"_s, u"a&b c=d?"_s}, {u"lang"_s, u"de"_s}, {u"empty"_s, u""_s}};
    QCOMPARE(velto::veltoQueryStringDictionary(url), expected);
    QCOMPARE(velto::veltoQueryStringDictionary(QUrl(u"https://x.org/?a=1&a=2&b&bad=%C3"_s)),
             (QMap<QString, QString>{{u"a"_s, u"2"_s}, {u"b"_s, u""_s}}));
    QVERIFY(velto::URLByPercentEncodingStringVelto(u"http://[::1"_s).isEmpty());
}

QTEST_GUILESS_MAIN(UrlTest)
#include "urltest.moc"

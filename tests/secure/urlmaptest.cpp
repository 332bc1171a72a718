// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoException.h"
#include "VeltoURLMap.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QUrl file(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

bool touch(const QString &path)
{
    QFile item(path);
    return item.open(QIODevice::WriteOnly);
}

} // namespace

class UrlMapTest : public QObject
{
    Q_OBJECT

private slots:
    void pathKeys();
    void enumerationStops();
    void identityKeysFollowTheFile();
    void keylessURLsAndKinds();
    void plainMapsAndCopiesComeOutEmpty();
    void invalidValuesAreRefused();
};

void UrlMapTest::pathKeys()
{
    VeltoURLMap map(VeltoURLMapTypePath);
    QCOMPARE(map.mapType(), quint32(VeltoURLMapTypePath));
    QVERIFY(!map.setObjectWithTest(1, file(u"/a/b"_s)));
    QCOMPARE(map.objectForURL(file(u"/a/./b"_s)), QVariant(1));
    QCOMPARE(map.objectForURL(file(u"/a//c/../b/"_s)), QVariant(1));
    QVERIFY(!map.objectForURL(file(u"/A/b"_s)).isValid()); // keys keep their letter case
    QVERIFY(map.setObjectWithTest(2, file(u"/a/x/../b"_s))); // replaced
    QCOMPARE(map.count(), 1u);
    QCOMPARE(map.objectForURL(file(u"/a/b"_s)), QVariant(2));
    map.setObject(3, file(u"/c"_s));
    QCOMPARE(map.mapKeyForURL(file(u"/c/./"_s))->path, u"/c"_s);
    QList<QUrl> urls = map.allURLs();
    std::sort(urls.begin(), urls.end());
    QCOMPARE(urls, (QList<QUrl>{file(u"/a/b"_s), file(u"/c"_s)}));
    map.removeObjectForURL(file(u"/a/./b"_s));
    map.removeObjectForURL(file(u"/never"_s));
    QCOMPARE(map.count(), 1u);
    QVERIFY(map.map() && map.map()->contains(VeltoURLMapKey{u"/c"_s, std::nullopt}));
    map.mutableMap()->insert(VeltoURLMapKey{u"/direct"_s, std::nullopt}, 4);
    QCOMPARE(map.objectForURL(file(u"/direct"_s)), QVariant(4));
    map.removeAllObjects();
    QCOMPARE(map.count(), 0u);
    QVERIFY(map.allURLs().isEmpty());
}

void UrlMapTest::enumerationStops()
{
    VeltoURLMap map(VeltoURLMapTypePath);
    for (int index = 0; index < 5; ++index)
        map.setObject(index, file(u"/folder/%1"_s.arg(index)));
    QStringList paths;
    QVERIFY(map.enumeratePaths([&paths](const QString &path, bool *) { paths << path; }));
    paths.sort();
    QCOMPARE(paths, (QStringList{u"/folder/0"_s, u"/folder/1"_s, u"/folder/2"_s, u"/folder/3"_s, u"/folder/4"_s}));
    int visited = 0;
    QVERIFY(!map.enumerateURLs([&visited](const QUrl &, bool *stop) { *stop = ++visited == 2; }));
    QCOMPARE(visited, 2);
    // The block may change the map: it walks a snapshot.
    QVERIFY(map.enumerateURLs([&map](const QUrl &url, bool *) { map.removeObjectForURL(url); }));
    QCOMPARE(map.count(), 0u);
}

void UrlMapTest::identityKeysFollowTheFile()
{
    QTemporaryDir root;
    const QDir folder(root.path());
    QVERIFY(folder.mkpath(u"elsewhere"_s));
    const QString original = folder.filePath(u"report.txt"_s);
    QVERIFY(touch(original));
    VeltoURLMap map(VeltoURLMapTypeFileIdentity);
    map.setObject(u"position 42"_s, file(original));

    // Renamed in its folder: found by its new name, and listed under it.
    const QString renamed = folder.filePath(u"final report.txt"_s);
    QVERIFY(QFile::rename(original, renamed));
    QCOMPARE(map.objectForURL(file(renamed)), QVariant(u"position 42"_s));
    QVERIFY(!map.objectForURL(file(original)).isValid());
    QCOMPARE(map.allURLs(), QList<QUrl>{file(renamed)});

    // A hard link is the same file.
    const QString hardLink = folder.filePath(u"link.txt"_s);
    QCOMPARE(::link(QFile::encodeName(renamed).constData(), QFile::encodeName(hardLink).constData()), 0);
    QVERIFY(map.setObjectWithTest(u"position 43"_s, file(hardLink)));
    QCOMPARE(map.count(), 1u);
    QCOMPARE(map.objectForURL(file(renamed)), QVariant(u"position 43"_s));
    QVERIFY(QFile::remove(hardLink));

    // Moved to another folder: still found; the listing knows the new place once the entry is set there.
    const QString moved = folder.filePath(u"elsewhere/report.txt"_s);
    QVERIFY(QFile::rename(renamed, moved));
    QCOMPARE(map.objectForURL(file(moved)), QVariant(u"position 43"_s));
    map.setObject(u"position 44"_s, file(moved));
    QCOMPARE(map.allURLs(), QList<QUrl>{file(moved)});
    QStringList paths;
    map.enumeratePaths([&paths](const QString &path, bool *) { paths << path; });
    QCOMPARE(paths, QStringList{moved});

    // Another file of the old name is another key.
    QVERIFY(touch(original));
    QVERIFY(!map.objectForURL(file(original)).isValid());
    map.removeObjectForURL(file(moved));
    QCOMPARE(map.count(), 0u);
}

void UrlMapTest::keylessURLsAndKinds()
{
    VeltoURLMap identities(VeltoURLMapTypeFileIdentity);
    QVERIFY(!identities.mapKeyForURL(file(u"/no/such/file"_s)));
    identities.setObject(1, file(u"/no/such/file"_s));
    QCOMPARE(identities.count(), 0u);
    VeltoURLMap paths(VeltoURLMapTypePath);
    paths.setObject(1, QUrl(u"https://example.com/a"_s)); // only local files have keys
    QCOMPARE(paths.count(), 0u);
    VeltoURLMap other(7);
    other.setObject(1, file(u"/a"_s));
    QCOMPARE(other.count(), 0u);
    QVERIFY(!other.objectForURL(file(u"/a"_s)).isValid());
    // The kind decides how keys are made from then on.
    other.setMapType(VeltoURLMapTypePath);
    other.setObject(1, file(u"/a"_s));
    QCOMPARE(other.objectForURL(file(u"/a/."_s)), QVariant(1));
}

void UrlMapTest::plainMapsAndCopiesComeOutEmpty()
{
    VeltoURLMap plain;
    QCOMPARE(plain.mapType(), quint32(VeltoURLMapTypePath));
    plain.setObject(1, file(u"/a"_s));
    QCOMPARE(plain.count(), 0u);
    QVERIFY(!plain.map() && !plain.mutableMap());

    QTemporaryDir root;
    QVERIFY(touch(root.filePath(u"a"_s)));
    VeltoURLMap full(VeltoURLMapTypeFileIdentity);
    full.setObject(1, file(root.filePath(u"a"_s)));
    for (const auto &copied : {full.copy(), full.mutableCopy()}) {
        QCOMPARE(copied->count(), 0u);
        QCOMPARE(copied->mapType(), quint32(VeltoURLMapTypePath));
        QVERIFY(!copied->map());
    }
    QCOMPARE(full.count(), 1u); // the original keeps its entry
}

void UrlMapTest::invalidValuesAreRefused()
{
    VeltoURLMap map(VeltoURLMapTypePath);
    map.setObject(1, file(u"/a"_s));
    try {
        map.setObject(QVariant(), file(u"/a"_s));
        QFAIL("no exception");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.name(), VeltoInvalidArgumentException);
    }
    QCOMPARE(map.objectForURL(file(u"/a"_s)), QVariant(1));
}

QTEST_GUILESS_MAIN(UrlMapTest)
#include "urlmaptest.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ByteArray+VeltoAdditions.h"
#include "FileManager+VeltoCoreArchives.h"
#include "veltotest.h"

#include <QDirIterator>
#include <QScopeGuard>

#include <archive.h>
#include <archive_entry.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// One entry of an archive the tests write with libarchive, hostile ones included.
struct Entry
{
    QByteArray name;
    mode_t type = AE_IFREG;
    QByteArray data;
    QByteArray link;      // a symbolic link's target
    qint64 zeros = 0;     // written instead of data
    mode_t mode = 0644;
    la_int64_t inode = 0; // two entries with one inode are one file under two names
};

enum class Kind { Zip, GzipCpio, Tar };

la_ssize_t appendTo(archive *, void *bytes, const void *buffer, size_t length)
{
    static_cast<QByteArray *>(bytes)->append(static_cast<const char *>(buffer), qsizetype(length));
    return la_ssize_t(length);
}

QByteArray makeArchive(Kind kind, const QList<Entry> &entries)
{
    QByteArray bytes;
    archive *writer = archive_write_new();
    if (kind == Kind::Zip) {
        archive_write_set_format_zip(writer);
    } else if (kind == Kind::Tar) {
        archive_write_set_format_pax_restricted(writer);
    } else {
        archive_write_set_format_cpio_newc(writer);
        archive_write_add_filter_gzip(writer);
        archive_write_set_options(writer, "gzip:compression-level=1");
    }
    archive_write_open(writer, &bytes, nullptr, appendTo, nullptr);
    const QByteArray zeros(1 << 20, '\0');
    for (const Entry &e : entries) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, e.name.constData());
        archive_entry_set_filetype(entry, e.type);
        archive_entry_set_perm(entry, e.mode);
        archive_entry_set_mtime(entry, 1700000000, 0);
        if (e.type == AE_IFLNK)
            archive_entry_set_symlink(entry, e.link.constData());
        if (e.inode) {
            archive_entry_set_ino(entry, e.inode);
            archive_entry_set_nlink(entry, 2);
        }
        archive_entry_set_size(entry, e.type == AE_IFREG ? (e.zeros ? e.zeros : e.data.size()) : 0);
        archive_write_header(writer, entry);
        archive_write_data(writer, e.data.constData(), size_t(e.data.size()));
        for (qint64 left = e.zeros; left > 0; left -= zeros.size())
            archive_write_data(writer, zeros.constData(), size_t(std::min<qint64>(left, zeros.size())));
        archive_entry_free(entry);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    return bytes;
}

// Everything below \a folder: relative name, kind, size or link target, and permission bits.
QStringList listing(const QString &folder)
{
    QStringList items;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        struct stat status {};
        ::lstat(QFile::encodeName(info.filePath()).constData(), &status);
        const QString what = info.isSymLink() ? u"-> "_s + info.symLinkTarget().section(u'/', -1)
            : info.isDir() ? u"/"_s : QString::number(info.size());
        items << u"%1 %2 %3"_s.arg(QDir(folder).relativeFilePath(info.filePath()), what).arg(status.st_mode & 07777, 0, 8);
    }
    items.sort();
    return items;
}

bool writeFile(const QString &path, const QByteArray &bytes, QFile::Permissions permissions = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
        && (!permissions || file.setPermissions(permissions));
}

QUrl local(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

} // namespace

class ArchiveTest : public QObject
{
    Q_OBJECT

private slots:
    void archiveAndUnpackAgain();
    void archiveErrors();
    void hostileArchives_data();
    void hostileArchives();

private:
    QTemporaryDir scratch;
};

void ArchiveTest::archiveAndUnpackAgain()
{
    VeltoTestRandom random(5);
    QByteArray noise(100000, Qt::Uninitialized);
    for (char &byte : noise)
        byte = char(random.bounded(256));
    const QString tree = scratch.filePath(u"tree"_s);
    QVERIFY(writeFile(tree + u"/a.txt"_s, "alpha"));
    QVERIFY(writeFile(tree + u"/sub/noise.bin"_s, noise));
    QVERIFY(writeFile(tree + u"/sub/tool.sh"_s, "#!/bin/sh\n", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup));
    QVERIFY(QDir().mkpath(tree + u"/sub/empty"_s));
    QVERIFY(QFile::link(u"a.txt"_s, tree + u"/link"_s));

    // A folder is stored as its contents, as gzip-compressed cpio even when the name says zip.
    VeltoError error;
    const QUrl archive = velto::archiveFilePaths({tree}, local(scratch.filePath(u"tree.zip"_s)), &error);
    QCOMPARE(archive, local(scratch.filePath(u"tree.zip"_s)));
    QFile file(archive.toLocalFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(velto::dataByDecompressingGZip(file.readAll()).startsWith("070707")); // portable cpio
    QVERIFY2(velto::unarchiveFileAtURL(archive, local(scratch.filePath(u"out"_s)), {}, &error), qPrintable(error.description()));
    QCOMPARE(listing(scratch.filePath(u"out"_s)), listing(tree));
    QFile unpacked(scratch.filePath(u"out/sub/noise.bin"_s));
    QVERIFY(unpacked.open(QIODevice::ReadOnly));
    QCOMPARE(unpacked.readAll(), noise);

    // Several items: each under its own name made unique; the staging folder is gone afterwards.
    QVERIFY(writeFile(scratch.filePath(u"other/a.txt"_s), "another alpha"));
    const QUrl several = velto::archiveFilePaths({tree + u"/a.txt"_s, scratch.filePath(u"other/a.txt"_s), tree + u"/sub"_s},
                                                 local(scratch.filePath(u"several.cpio"_s)), &error);
    QVERIFY(!QFileInfo::exists(scratch.filePath(u"several"_s)));
    QVERIFY(velto::unarchiveFileAtURL(several, local(scratch.filePath(u"out2"_s))));
    QCOMPARE(QDir(scratch.filePath(u"out2"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({u"a (2).txt"_s, u"a.txt"_s, u"sub"_s}));
    QCOMPARE(listing(scratch.filePath(u"out2/sub"_s)), listing(tree + u"/sub"_s));

    const QUrl temporary = velto::archiveToTempFileForFileAtPath(tree + u"/a.txt"_s);
    const auto removeTemporary = qScopeGuard([&] { QFile::remove(temporary.toLocalFile()); });
    QVERIFY(temporary.toLocalFile().endsWith(u".cpio"_s));
    QVERIFY(velto::unarchiveFileAtURL(temporary, local(scratch.filePath(u"out3"_s))));
    QCOMPARE(listing(scratch.filePath(u"out3"_s)), listing(tree).mid(0, 1)); // "a.txt 5 644"
}

void ArchiveTest::archiveErrors()
{
    VeltoError error;
    QVERIFY(velto::archiveFilePaths({}, local(scratch.filePath(u"none.cpio"_s)), &error).isEmpty());
    QCOMPARE(error.code(), 4);
    QCOMPARE(error.descriptionForUserVelto(), u"no files given to zip"_s);

    QVERIFY(velto::archiveFilePaths({scratch.filePath(u"missing"_s)}, local(scratch.filePath(u"missing.cpio"_s)), &error).isEmpty());
    QCOMPARE(error.code(), 4);
    QCOMPARE(error.descriptionForUserVelto(), u"ditto archive was not created (task status: 1)"_s);
    QVERIFY(error.userInfo().value(VeltoUnderlyingErrorKey).value<VeltoError>().localizedDescription().contains(u"missing"_s));
    QVERIFY(!QFileInfo::exists(scratch.filePath(u"missing.cpio"_s)));

    QVERIFY(!velto::unarchiveFileAtURL(local(scratch.filePath(u"missing.cpio"_s)), local(scratch.filePath(u"x"_s)), {}, &error));
    QCOMPARE(error.code(), 260);
    QVERIFY(writeFile(scratch.filePath(u"out.cpio"_s), makeArchive(Kind::GzipCpio, {{.name = "ok"}, {.name = "../out"}})));
    QVERIFY(!velto::unarchiveFileAtURL(local(scratch.filePath(u"out.cpio"_s)), local(scratch.filePath(u"x/y/z"_s)), {}, &error));
    QCOMPARE(error.code(), 259); // and the folders made for it are gone again
    QVERIFY(!velto::unarchiveFileAtURL(QUrl(u"https://example.com/a.zip"_s), local(scratch.path()), {}, &error));
    QCOMPARE(error.code(), 262);
    QVERIFY(!QFileInfo::exists(scratch.filePath(u"x"_s)));

    // The extension becomes "cpio" unless it is "zip" or "cpio", letter case counting.
    for (const auto &[name, made] : QList<std::pair<QString, QString>>{
             {u"x.txt"_s, u"x.cpio"_s}, {u"x.zip"_s, u"x.zip"_s}, {u"x.cpio"_s, u"x.cpio"_s}, {u"x"_s, u"x.cpio"_s}, {u"x.ZIP"_s, u"x.cpio"_s}}) {
        QTemporaryDir folder;
        QVERIFY(writeFile(folder.filePath(u"item"_s), "item"));
        QCOMPARE(velto::archiveFilePaths({folder.filePath(u"item"_s)}, local(folder.filePath(name))), local(folder.filePath(made)));
        QVERIFY(QFileInfo(folder.filePath(made)).size() > 0);
    }
}

void ArchiveTest::hostileArchives_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::addColumn<quint64>("maximumEntries");
    QTest::addColumn<quint64>("maximumSize");
    QTest::addColumn<qint64>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("added"); // what appears in the target folder beside keep.txt

    const quint64 entries = VeltoUnarchiveOptions::DefaultMaximumEntryCount;
    const quint64 size = VeltoUnarchiveOptions::DefaultMaximumTotalSize;
    const QString out = u"its name leads out of the target folder"_s;
    const QString linkOut = u"it is a symbolic link that leads out of the target folder"_s;
    const Kind cpio = Kind::GzipCpio;
    QTest::newRow("../ entry") << makeArchive(cpio, {{.name = "fine.txt", .data = "fine"}, {.name = "../escape.txt", .data = "bad"}})
                               << entries << size << qint64(259) << u"entry 2 “../escape.txt”: "_s + out << QStringList();
    QTest::newRow("../ inside a name") << makeArchive(Kind::Zip, {{.name = "sub/../../escape.txt", .data = "bad"}})
                                       << entries << size << qint64(259) << out << QStringList();
    QTest::newRow("absolute path") << makeArchive(Kind::Zip, {{.name = QFile::encodeName(scratch.filePath(u"escape.txt"_s)), .data = "bad"}})
                                   << entries << size << qint64(259) << out << QStringList();
    QTest::newRow("link out, then a file through it")
        << makeArchive(cpio, {{.name = "up", .type = AE_IFLNK, .link = ".."}, {.name = "up/escape.txt", .data = "bad"}})
        << entries << size << qint64(259) << u"entry 1 “up”: "_s + linkOut << QStringList();
    QTest::newRow("link to an absolute path") << makeArchive(Kind::Zip, {{.name = "etc", .type = AE_IFLNK, .link = "/etc"}})
                                              << entries << size << qint64(259) << linkOut << QStringList();
    QTest::newRow("link with .. after a name") << makeArchive(Kind::Zip, {{.name = "s", .type = AE_IFLNK, .link = "sub/../.."}})
                                               << entries << size << qint64(259) << linkOut << QStringList();
    QTest::newRow("file through a link inside")
        << makeArchive(Kind::Zip, {{.name = "sub", .type = AE_IFDIR, .mode = 0755}, {.name = "in", .type = AE_IFLNK, .link = "sub"}, {.name = "in/x.txt", .data = "x"}})
        << entries << size << qint64(259) << u"entry 3 “in/x.txt”: it cannot be written"_s << QStringList();
    QTest::newRow("link, then a file of the same name")
        << makeArchive(cpio, {{.name = "a", .type = AE_IFLNK, .link = "b"}, {.name = "a", .data = "through"}})
        << entries << size << qint64(259) << u"entry 2 “a”: the archive holds this name twice"_s << QStringList();
    QTest::newRow("hard link to a name outside")
        << makeArchive(cpio, {{.name = "../../victim.txt", .type = AE_IFCHR, .inode = 9}, {.name = "h.txt", .data = "overwrite", .inode = 9}})
        << entries << size << qint64(259) << u"entry 2 “h.txt”: it is a hard link to a name outside the target folder"_s << QStringList();
    QTest::newRow("devices skipped, set-user-id dropped")
        << makeArchive(cpio, {{.name = "null", .type = AE_IFCHR}, {.name = "pipe", .type = AE_IFIFO}, {.name = "run.sh", .data = "#!/bin/sh\n", .mode = 04755},
                              {.name = "sub/up", .type = AE_IFLNK, .link = "../run.sh"}})
        << entries << size << qint64(0) << QString()
        << QStringList({u"run.sh 10 755"_s, u"sub / 755"_s, u"sub/up -> run.sh 777"_s});
    QTest::newRow("a name that is not UTF-8") << makeArchive(cpio, {{.name = "caf\xe9.txt", .data = "data"}})
                                              << entries << size << qint64(0) << QString() << QStringList(u"caf\ufffd.txt 4 644"_s);
    QTest::newRow("1 GB of zeros") << makeArchive(cpio, {{.name = "zeros", .zeros = 1000000000}})
                                   << entries << size << qint64(263)
                                   << u"entry 1 “zeros”: the files would hold more than 536870912 bytes together"_s << QStringList();
    QTest::newRow("size cap over two files") << makeArchive(cpio, {{.name = "a", .data = QByteArray(600, 'a')}, {.name = "b", .data = QByteArray(600, 'b')}})
                                             << entries << quint64(1000) << qint64(263) << u"entry 2 “b”"_s << QStringList();
    QList<Entry> many;
    QStringList manyNames;
    for (int i = 0; i < 10000; ++i) {
        many.append({.name = QByteArray::number(i).rightJustified(5, '0')});
        manyNames << QString::fromLatin1(many.last().name) + u" 0 644"_s;
    }
    const QByteArray tenThousand = makeArchive(Kind::Zip, many);
    QTest::newRow("ten thousand empty entries, cap 1,000") << tenThousand << quint64(1000) << size << qint64(263)
                                                           << u"entry 1001 “01000”: the archive has more entries than the 1000 allowed"_s << QStringList();
    QTest::newRow("ten thousand empty entries") << tenThousand << entries << size << qint64(0) << QString() << manyNames;
    VeltoTestRandom random(13);
    QByteArray noise(50000, Qt::Uninitialized);
    for (char &byte : noise)
        byte = char(random.bounded(256));
    const QByteArray sound = makeArchive(Kind::Zip, {{.name = "keep.txt", .data = "replaced?"}, {.name = "noise", .data = noise}});
    const QByteArray gzipped = makeArchive(cpio, {{.name = "a.txt", .data = "alpha"}, {.name = "noise", .data = noise}});
    QByteArray flipped = sound;
    flipped[sound.size() / 2] = char(flipped.at(sound.size() / 2) ^ 0x10);
    QTest::newRow("truncated") << gzipped.left(gzipped.size() / 2) << entries << size << qint64(259) << u"damaged"_s << QStringList();
    QTest::newRow("bit flipped") << flipped << entries << size << qint64(259) << u"damaged"_s << QStringList();
    QTest::newRow("tar is not accepted") << makeArchive(Kind::Tar, {{.name = "a.txt", .data = "alpha"}}) << entries << size
                                         << qint64(259) << u"Could not unpack “hostile”: the archive is damaged or is no zip or cpio archive"_s
                                         << QStringList();
    QTest::newRow("an item of that name is there") << sound << entries << size << qint64(516)
                                                   << u"an item named “keep.txt” is already in the target folder"_s << QStringList();
}

// Each hostile archive is refused or capped, nothing outside the target folder changes, and a failed
// unpack leaves the target folder as it was.
void ArchiveTest::hostileArchives()
{
    QFETCH(QByteArray, archive);
    QFETCH(quint64, maximumEntries);
    QFETCH(quint64, maximumSize);
    QFETCH(qint64, code);
    QFETCH(QString, text);
    QFETCH(QStringList, added);
    const QString parent = scratch.filePath(u"parent"_s);
    const QString target = parent + u"/target"_s;
    QDir(parent).removeRecursively();
    QVERIFY(writeFile(parent + u"/hostile"_s, archive) && writeFile(parent + u"/victim.txt"_s, "victim")
            && writeFile(target + u"/keep.txt"_s, "kept"));
    const QStringList before = listing(parent);

    VeltoError error;
    const VeltoUnarchiveOptions options{maximumSize, maximumEntries, {}};
    QCOMPARE(velto::unarchiveFileAtURL(local(parent + u"/hostile"_s), local(target), options, &error), code == 0);
    QCOMPARE(error.code(), code);
    QVERIFY2(error.descriptionForUserVelto().contains(text), qPrintable(error.descriptionForUserVelto()));
    QStringList expected = before;
    for (const QString &item : added)
        expected << u"target/"_s + item;
    expected.sort();
    QCOMPARE(listing(parent), expected);
    QFile kept(target + u"/keep.txt"_s);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("kept"));
}

QTEST_GUILESS_MAIN(ArchiveTest)
#include "archivetest.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileManager.h"
#include "fileaccess.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/xattr.h>

using namespace Qt::StringLiterals;

namespace {

// What is on disk, read with the system calls directly: the bytes and every attribute with its value.
QMap<QByteArray, QByteArray> snapshot(const QString &path)
{
    const QByteArray native = QFile::encodeName(path);
    QMap<QByteArray, QByteArray> state;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        state.insert("<contents>", file.readAll());
    QByteArray names(65536, '\0');
    const ssize_t size = ::llistxattr(native.constData(), names.data(), size_t(names.size()));
    for (const QByteArray &name : names.first(std::max<ssize_t>(size, 0)).split('\0')) {
        if (name.isEmpty())
            continue;
        QByteArray value(65536, '\0');
        const ssize_t length = ::lgetxattr(native.constData(), name.constData(), value.data(), size_t(value.size()));
        state.insert(name, value.first(std::max<ssize_t>(length, 0)));
    }
    return state;
}

bool setRaw(const QString &path, const QByteArray &name, const QByteArray &value)
{
    return ::lsetxattr(QFile::encodeName(path).constData(), name.constData(), value.constData(), size_t(value.size()), 0) == 0;
}

} // namespace

class ExtendedAttributesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void readingAndWriting();
    void namesAndNamespaces();
    void strings();
    void failures_data();
    void failures();
    void permissionDenied();
    void quarantineRemoval();

private:
    QString path(const QString &name) const { return QDir(m_folder.path()).filePath(name); }
    QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    QTemporaryDir m_folder;
};

void ExtendedAttributesTest::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QFile probe(path(u"probe"_s));
    QVERIFY(probe.open(QIODevice::WriteOnly));
    probe.close();
    if (!setRaw(probe.fileName(), "user.probe", "1") && errno == ENOTSUP)
        QSKIP("the temporary folder's file system keeps no user attributes (TMPDIR)");
}

void ExtendedAttributesTest::init()
{
    // A fresh file with one attribute, "user.com.velto.kept" = "kept", before every test.
    QFile file(path(u"file.txt"_s));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write("contents") == 8);
    file.close();
    const QByteArray native = QFile::encodeName(file.fileName());
    QByteArray names(4096, '\0');
    const ssize_t size = ::llistxattr(native.constData(), names.data(), size_t(names.size()));
    for (const QByteArray &name : names.first(std::max<ssize_t>(size, 0)).split('\0')) {
        if (!name.isEmpty())
            QCOMPARE(::lremovexattr(native.constData(), name.constData()), 0);
    }
    QVERIFY(setRaw(file.fileName(), "user.com.velto.kept", "kept"));
}

void ExtendedAttributesTest::readingAndWriting()
{
    VeltoError error;
    QVERIFY(VeltoFileManager::writeExtendedAttribute(u"com.velto.note"_s, "draft\0two"_ba, url(u"file.txt"_s), &error));
    QCOMPARE(snapshot(path(u"file.txt"_s)).value("user.com.velto.note"), "draft\0two"_ba);
    qint64 size = -1;
    QByteArray data;
    QVERIFY(VeltoFileManager::readExtendedAttribute(u"com.velto.note"_s, &size, &data, url(u"file.txt"_s), &error));
    QCOMPARE(size, 9);
    QCOMPARE(data, "draft\0two"_ba);
    // The size alone.
    size = -1;
    QVERIFY(VeltoFileManager::readExtendedAttribute(u"com.velto.note"_s, &size, nullptr, url(u"file.txt"_s)));
    QCOMPARE(size, 9);

    // An attribute that is not there: success, no data, no error.
    error = VeltoError();
    QVERIFY(VeltoFileManager::readExtendedAttribute(u"com.velto.absent"_s, &size, &data, url(u"file.txt"_s), &error));
    QVERIFY(data.isNull());
    QCOMPARE(size, 0);
    QVERIFY(error.isNull());
    // An empty attribute: success with empty data.
    QVERIFY(VeltoFileManager::writeExtendedAttribute(u"com.velto.empty"_s, QByteArray(), url(u"file.txt"_s)));
    QVERIFY(VeltoFileManager::readExtendedAttribute(u"com.velto.empty"_s, &size, &data, url(u"file.txt"_s)));
    QVERIFY(!data.isNull() && data.isEmpty());
    QCOMPARE(size, 0);

    // Replacing and removing.
    QVERIFY(VeltoFileManager::writeExtendedAttribute(u"com.velto.note"_s, "final", url(u"file.txt"_s)));
    QCOMPARE(snapshot(path(u"file.txt"_s)).value("user.com.velto.note"), "final"_ba);
    QVERIFY(VeltoFileManager::removeExtendedAttribute("com.velto.note", url(u"file.txt"_s), &error));
    QVERIFY(!snapshot(path(u"file.txt"_s)).contains("user.com.velto.note"));
    QCOMPARE(snapshot(path(u"file.txt"_s)).value("<contents>"), "contents"_ba);
}

void ExtendedAttributesTest::namesAndNamespaces()
{
    QVERIFY(setRaw(path(u"file.txt"_s), "user.second", "2"));
    QVERIFY(setRaw(path(u"file.txt"_s), "user.caf\xc3\xa9", "3"));
    QVERIFY(setRaw(path(u"file.txt"_s), "user.bad\xff", "4")); // not UTF-8: no string names it
    VeltoError error;
    const auto names = VeltoFileManager::readExtendedAttributeNamesForFileAtURL(url(u"file.txt"_s), &error);
    QVERIFY(names);
    QCOMPARE(*names, (QSet<QString>{u"com.velto.kept"_s, u"second"_s, u"café"_s}));
    // A name that names its namespace is taken as it is.
    QCOMPARE(VeltoFileManager::readStringExtendedAttribute(u"user.second"_s, url(u"file.txt"_s)), u"2"_s);
    QVERIFY(VeltoFileManager::writeExtendedAttribute(u"user.third"_s, "3", url(u"file.txt"_s)));
    QVERIFY(snapshot(path(u"file.txt"_s)).contains("user.third"));
    // A file without attributes lists none.
    QFile bare(path(u"bare.txt"_s));
    QVERIFY(bare.open(QIODevice::WriteOnly));
    bare.close();
    QCOMPARE(VeltoFileManager::readExtendedAttributeNamesForFileAtURL(url(u"bare.txt"_s)), std::optional(QSet<QString>()));
}

void ExtendedAttributesTest::strings()
{
    QVERIFY(setRaw(path(u"file.txt"_s), "user.text", "h\xc3\xa9llo"));
    QVERIFY(setRaw(path(u"file.txt"_s), "user.latin", "h\xe9llo"));
    QVERIFY(setRaw(path(u"file.txt"_s), "user.empty", ""));
    VeltoError error;
    QCOMPARE(VeltoFileManager::readStringExtendedAttribute(u"text"_s, url(u"file.txt"_s), &error), u"héllo"_s);
    QVERIFY(error.isNull());
    QVERIFY(VeltoFileManager::readStringExtendedAttribute(u"empty"_s, url(u"file.txt"_s), &error).isNull());
    QVERIFY(error.isNull());
    QVERIFY(VeltoFileManager::readStringExtendedAttribute(u"absent"_s, url(u"file.txt"_s), &error).isNull());
    QVERIFY(error.isNull());
    QVERIFY(VeltoFileManager::readStringExtendedAttribute(u"latin"_s, url(u"file.txt"_s), &error).isNull());
    QCOMPARE(error.domain(), VeltoCoreErrorDomain);
    QCOMPARE(error.code(), 1);
    QCOMPARE(error.descriptionForUserVelto(), u"could not convert xattr data to string"_s);
}

void ExtendedAttributesTest::failures_data()
{
    QTest::addColumn<QString>("operation"); // read, write, remove, list
    QTest::addColumn<QString>("item");      // in the temporary folder, or an absolute path
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("code");          // in the POSIX domain
    QTest::addColumn<QString>("text");      // %1: the item's path

    const QString readText = u"Could not read extended file attribute."_s;
    const QString writeText = u"Could not set attribute for file: %1"_s;
    const QString tooLong = QString(300, u'n');
    QTest::newRow("read, empty name") << u"read"_s << u"file.txt"_s << QString() << QByteArray() << EINVAL << u"setxattr invalid key"_s;
    QTest::newRow("write, zero in the name") << u"write"_s << u"file.txt"_s << u"a\0b"_s << "x"_ba << EINVAL << u"setxattr invalid key"_s;
    QTest::newRow("write, unpaired surrogate") << u"write"_s << u"file.txt"_s << QString(QChar(0xD800)) << "x"_ba << EINVAL
                                               << u"setxattr invalid key"_s;
    QTest::newRow("remove, empty name") << u"remove"_s << u"file.txt"_s << QString() << QByteArray() << EINVAL
                                        << u"setxattr invalid key"_s;
    QTest::newRow("read, name too long") << u"read"_s << u"file.txt"_s << tooLong << QByteArray() << ERANGE << readText;
    QTest::newRow("write, name too long") << u"write"_s << u"file.txt"_s << tooLong << "x"_ba << ERANGE << writeText;
    QTest::newRow("write, value too large") << u"write"_s << u"file.txt"_s << u"com.velto.kept"_s << QByteArray(70000, 'v') << E2BIG
                                            << writeText;
    QTest::newRow("remove, absent") << u"remove"_s << u"file.txt"_s << u"com.velto.absent"_s << QByteArray() << ENODATA << writeText;
    QTest::newRow("read, missing file") << u"read"_s << u"missing.txt"_s << u"a"_s << QByteArray() << ENOENT << readText;
    QTest::newRow("write, missing file") << u"write"_s << u"missing.txt"_s << u"a"_s << "x"_ba << ENOENT << writeText;
    QTest::newRow("list, missing file") << u"list"_s << u"missing.txt"_s << QString() << QByteArray() << ENOENT << readText;
    QTest::newRow("read, no attributes here") << u"read"_s << u"/proc/self/status"_s << u"a"_s << QByteArray() << EOPNOTSUPP << readText;
    QTest::newRow("write, no attributes here") << u"write"_s << u"/proc/self/status"_s << u"a"_s << "x"_ba << EOPNOTSUPP << writeText;
    QTest::newRow("write, a symbolic link") << u"write"_s << u"link"_s << u"a"_s << "x"_ba << EPERM << writeText;
}

void ExtendedAttributesTest::failures()
{
    QFETCH(QString, operation);
    QFETCH(QString, item);
    QFETCH(QString, name);
    QFETCH(QByteArray, value);
    QFETCH(int, code);
    QFETCH(QString, text);
    if (!QFileInfo::exists(path(u"link"_s)))
        QVERIFY(QFile::link(path(u"file.txt"_s), path(u"link"_s)));
    const QString itemPath = item.startsWith(u'/') ? item : path(item);
    const QUrl itemURL = QUrl::fromLocalFile(itemPath);
    const auto fileBefore = snapshot(path(u"file.txt"_s));
    VeltoError error;
    bool done = true;
    if (operation == u"read") {
        QByteArray data = "stale";
        qint64 size = -1;
        done = VeltoFileManager::readExtendedAttribute(name, &size, &data, itemURL, &error);
        QVERIFY(data.isNull());
        QCOMPARE(size, 0);
    } else if (operation == u"write") {
        done = VeltoFileManager::writeExtendedAttribute(name, value, itemURL, &error);
    } else if (operation == u"remove") {
        done = VeltoFileManager::removeExtendedAttribute(name.toUtf8(), itemURL, &error);
    } else {
        done = VeltoFileManager::readExtendedAttributeNamesForFileAtURL(itemURL, &error).has_value();
    }
    QVERIFY(!done);
    QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
    QCOMPARE(error.code(), code);
    QCOMPARE(error.localizedDescription(), text.replace(u"%1"_s, itemPath));
    QCOMPARE(snapshot(path(u"file.txt"_s)), fileBefore); // a failed call changes nothing
}

void ExtendedAttributesTest::permissionDenied()
{
    const QString shared = path(u"shared"_s);
    QVERIFY(QDir().mkpath(shared));
    QVERIFY(QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
    QVERIFY(QFile::setPermissions(shared, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
    const QString readOnly = shared + u"/read-only.txt"_s;
    const QString closed = shared + u"/closed.txt"_s;
    for (const QString &file : {readOnly, closed}) {
        QFile item(file);
        QVERIFY(item.open(QIODevice::WriteOnly) && item.write("secret") == 6);
        item.close();
        QVERIFY(setRaw(file, "user.owner", "root"));
    }
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    QVERIFY(QFile::setPermissions(closed, QFileDevice::Permissions()));
    const QString helper = QStringLiteral(VELTO_FILE_ACCESS_HELPER);
    if (runFileAccessHelper(helper, {u"readable"_s, shared}) != u"true")
        QSKIP("the helper's user cannot reach the temporary folder (TMPDIR)");
    const auto before = snapshot(readOnly);
    QCOMPARE(runFileAccessHelper(helper, {u"write-xattr"_s, readOnly, u"owner"_s, u"intruder"_s}),
             u"false NSPOSIXErrorDomain 13 Could not set attribute for file: %1 [NSPOSIXErrorDomain code 13]"_s.arg(readOnly));
    QCOMPARE(snapshot(readOnly), before);
    QCOMPARE(runFileAccessHelper(helper, {u"read-xattr"_s, readOnly, u"owner"_s}), u"true root"_s);
    QCOMPARE(runFileAccessHelper(helper, {u"read-xattr"_s, closed, u"owner"_s}),
             u"false NSPOSIXErrorDomain 13 Could not read extended file attribute. [NSPOSIXErrorDomain code 13]"_s);
}

void ExtendedAttributesTest::quarantineRemoval()
{
    const QDir folder(path(u"download"_s));
    QVERIFY(folder.mkpath(u"inner"_s));
    QFile file(folder.filePath(u"inner/a.bin"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(QFile::link(folder.filePath(u"inner/a.bin"_s), folder.filePath(u"link"_s)));
    for (const QString &item : {folder.path(), folder.filePath(u"inner"_s), file.fileName()})
        QVERIFY(setRaw(item, "user.xdg.origin.url", "https://example.com/a.bin"));
    VeltoError error;
    QVERIFY(VeltoFileManager::removeQuarantineFromItemAtURL(QUrl::fromLocalFile(folder.path()), &error));
    for (const QString &item : {folder.path(), folder.filePath(u"inner"_s), file.fileName()})
        QVERIFY2(!snapshot(item).contains("user.xdg.origin.url"), qPrintable(item));

    // The answer is the folder's own: without the mark it fails, while what lies below is still cleared.
    QVERIFY(setRaw(file.fileName(), "user.xdg.origin.url", "https://example.com/a.bin"));
    QVERIFY(!VeltoFileManager::removeQuarantineFromItemAtURL(QUrl::fromLocalFile(folder.path()), &error));
    QCOMPARE(error.code(), ENODATA);
    QVERIFY(!snapshot(file.fileName()).contains("user.xdg.origin.url"));
}

QTEST_GUILESS_MAIN(ExtendedAttributesTest)
#include "extendedattributestest.moc"

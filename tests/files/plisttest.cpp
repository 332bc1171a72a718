// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFileAccess_p.h"
#include "VariantMap+VeltoCorePlist.h"
#include "VeltoMutationState.h"
#include "VeltoPropertyList.h"
#include <QFileInfo>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QVariantMap Plist{
    {u"name"_s, u"Report"_s},
    {u"count"_s, qint64(3)},
    {u"ratio"_s, 0.5},
    {u"flag"_s, true},
    {u"yes"_s, u"YES"_s},
    {u"when"_s, QDateTime(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC)},
    {u"blob"_s, QByteArray("\x01\x02")},
    {u"names"_s, QStringList{u"a"_s, u"b"_s}},
    {u"mixed"_s, QVariantList{u"a"_s, qint64(1), u"c"_s}},
    {u"inner"_s, QVariantMap{{u"k"_s, 1}}},
};

QMetaType typeNamed(const QString &name)
{
    return QMetaType::fromName(name.toLatin1());
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

} // namespace

class PlistTest : public QObject
{
    Q_OBJECT

private slots:
    void typedReads_data();
    void typedReads();
    void arraysAndDictionaries_data();
    void arraysAndDictionaries();
    void booleanReading_data();
    void booleanReading();
    void loadingFiles_data();
    void loadingFiles();
    void writingKeepsTheOldFileOnFailure();
    void mutationStateCopiesOnWrite();
};

// plistObjectVeltoForKey and its not-nil form: value, placeholder or the code-4 error, key named first.
void PlistTest::typedReads_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("notNil");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<QString>("message");
    QTest::newRow("string") << u"name"_s << u"QString"_s << false << QVariant(u"Report"_s) << QString();
    QTest::newRow("any number answers for a number") << u"flag"_s << u"qlonglong"_s << false << QVariant(true) << QString();
    QTest::newRow("string list answers for a list") << u"names"_s << u"QVariantList"_s << false
                                                    << QVariant(QStringList{u"a"_s, u"b"_s}) << QString();
    QTest::newRow("missing gives the placeholder") << u"none"_s << u"QString"_s << false << QVariant(u"-"_s) << QString();
    QTest::newRow("wrong class") << u"count"_s << u"QString"_s << false << QVariant()
                                 << u"Expected value with class count for plist key \"QString\", found qlonglong."_s;
    QTest::newRow("date asked as data") << u"when"_s << u"QByteArray"_s << false << QVariant()
                                        << u"Expected value with class when for plist key \"QByteArray\", found QDateTime."_s;
    QTest::newRow("not nil, present") << u"blob"_s << u"QByteArray"_s << true << QVariant(QByteArray("\x01\x02")) << QString();
    QTest::newRow("not nil, missing") << u"none"_s << u"QString"_s << true << QVariant()
                                      << u"Expected value with class none for plist key \"QString\", found (null)."_s;
}

void PlistTest::typedReads()
{
    QFETCH(QString, key);
    QFETCH(QString, type);
    QFETCH(bool, notNil);
    QFETCH(QVariant, expected);
    QFETCH(QString, message);
    VeltoError error;
    const QVariant value = notNil ? velto::plistObjectVeltoForKeyAssumingNotNilClass(Plist, key, typeNamed(type), &error)
                                  : velto::plistObjectVeltoForKey(Plist, key, typeNamed(type), u"-"_s, &error);
    QCOMPARE(value, expected);
    if (message.isEmpty()) {
        QVERIFY(error.isNull());
    } else {
        QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorPlistType));
        QCOMPARE(error.descriptionForUserVelto(), message);
    }
    // Without an error pointer the same call fails silently, and the plain form has no placeholder.
    QCOMPARE(velto::plistObjectVeltoForKey(Plist, key, typeNamed(type)).isValid(), expected.isValid() && Plist.contains(key));
}

void PlistTest::arraysAndDictionaries_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("elementType");
    QTest::addColumn<QVariant>("expected"); // invalid: nothing
    QTest::addColumn<QString>("message");
    QTest::newRow("missing array is empty") << u"none"_s << QString() << QVariant(QVariantList()) << QString();
    QTest::newRow("string list as a list") << u"names"_s << QString() << QVariant(QVariantList{u"a"_s, u"b"_s}) << QString();
    QTest::newRow("not an array") << u"inner"_s << QString() << QVariant()
                                  << u"Expected value with class inner for plist key \"QVariantList\", found QVariantMap."_s;
    QTest::newRow("all strings") << u"names"_s << u"QString"_s << QVariant(QVariantList{u"a"_s, u"b"_s}) << QString();
    QTest::newRow("a number among strings") << u"mixed"_s << u"QString"_s << QVariant()
                                            << u"Expected class mixed for all values in plist array with key \"QString\", found qlonglong."_s;
    QTest::newRow("missing array passes any element check") << u"none"_s << u"QString"_s << QVariant(QVariantList()) << QString();
}

void PlistTest::arraysAndDictionaries()
{
    QFETCH(QString, key);
    QFETCH(QString, elementType);
    QFETCH(QVariant, expected);
    QFETCH(QString, message);
    VeltoError error;
    const std::optional<QVariantList> list = elementType.isEmpty()
        ? velto::plistArrayVeltoForKey(Plist, key, &error)
        : velto::plistArrayVeltoForKeyAssumingValueClass(Plist, key, typeNamed(elementType), &error);
    QCOMPARE(list.has_value(), expected.isValid());
    if (list)
        QCOMPARE(*list, expected.toList());
    QCOMPARE(error.descriptionForUserVelto(), message.isEmpty() ? VeltoError().descriptionForUserVelto() : message);

    // Dictionaries: missing gives the empty map, the wrong kind nothing.
    QCOMPARE(velto::plistDictionaryVeltoForKey(Plist, u"inner"_s), (QVariantMap{{u"k"_s, 1}}));
    QCOMPARE(velto::plistDictionaryVeltoForKey(Plist, u"none"_s), QVariantMap());
    QVERIFY(!velto::plistDictionaryVeltoForKey(Plist, u"names"_s));
    QCOMPARE(velto::plistStringVeltoForKey(Plist, u"name"_s), u"Report"_s);
    QVERIFY(velto::plistStringVeltoForKey(Plist, u"count"_s).isNull());
    QVERIFY(velto::plistStringVeltoForKey(Plist, u"none"_s).isNull());
}

// The Boolean reading: numbers are true when not zero; a string is true when, after leading white
// space, it begins with Y, y, T or t, or with a decimal number other than zero (sign and leading zeros
// skipped, the rest ignored); other kinds give the default.
void PlistTest::booleanReading_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("expected"); // with the default false; the default true is checked alongside
    const QList<std::pair<QString, bool>> texts{
        {u"YES"_s, true}, {u"yes"_s, true}, {u"true"_s, true}, {u"T"_s, true}, {u"  y"_s, true},
        {u"1"_s, true}, {u"+02"_s, true}, {u"-3"_s, true}, {u"007abc"_s, true}, {u"9"_s, true},
        {u"NO"_s, false}, {u"false"_s, false}, {u"0"_s, false}, {u"-0"_s, false}, {u"000"_s, false},
        {u""_s, false}, {u"   "_s, false}, {u"x1"_s, false}, {u"+-1"_s, false}, {u"0.9"_s, false},
    };
    for (const auto &[text, expected] : texts)
        QTest::addRow("string \"%s\"", qPrintable(text)) << QVariant(text) << expected;
    QTest::newRow("integer 2") << QVariant(qint64(2)) << true;
    QTest::newRow("integer 0") << QVariant(qint64(0)) << false;
    QTest::newRow("real 0.5") << QVariant(0.5) << true;
    QTest::newRow("unsigned above the signed range") << QVariant(std::numeric_limits<quint64>::max()) << true;
    QTest::newRow("bool false") << QVariant(false) << false;
}

void PlistTest::booleanReading()
{
    QFETCH(QVariant, value);
    QFETCH(bool, expected);
    const QVariantMap map{{u"k"_s, value}};
    QCOMPARE(velto::plistBoolVeltoForKey(map, u"k"_s, false), expected);
    QCOMPARE(velto::plistBoolVeltoForKey(map, u"k"_s, true), expected);
    // Kinds that have no Boolean reading give the default, whichever it is.
    for (const QVariant &other : {QVariant(QDateTime::currentDateTimeUtc()), QVariant(QByteArray("YES")),
                                  QVariant(QVariantList{1}), QVariant()}) {
        const QVariantMap withOther{{u"k"_s, other}};
        QCOMPARE(velto::plistBoolVeltoForKey(withOther, u"k"_s, expected), expected);
    }
}

void PlistTest::loadingFiles_data()
{
    QTest::addColumn<QByteArray>("bytes"); // "(none)": no file
    QTest::addColumn<QString>("domain");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    const QVariantMap root{{u"a"_s, 1}};
    QTest::newRow("binary") << VeltoPropertyList::write(root, VeltoPropertyListBinaryFormat) << QString() << 0 << QString();
    QTest::newRow("XML") << VeltoPropertyList::write(root, VeltoPropertyListXMLFormat) << QString() << 0 << QString();
    QTest::newRow("array root") << VeltoPropertyList::write(QVariantList{1}, VeltoPropertyListBinaryFormat)
                                << QString(VeltoCocoaErrorDomain) << 259 << u"Expected dictionary in plist file at "_s;
    QTest::newRow("no property list") << QByteArray("hello") << QString(VeltoCocoaErrorDomain) << 3840
                                      << u"The property list cannot be read: the data is neither"_s;
    QTest::newRow("missing file") << QByteArray("(none)") << QString(VeltoCocoaErrorDomain) << 260
                                  << u"could not be read: No such file or directory."_s;
}

void PlistTest::loadingFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, domain);
    QFETCH(int, code);
    QFETCH(QString, message);
    QTemporaryDir folder;
    const QString path = folder.filePath(u"settings.plist"_s);
    if (bytes != "(none)")
        QVERIFY(writeBytes(path, bytes));
    VeltoError error;
    const std::optional<QVariantMap> map = velto::dictionaryWithPlistLoadedFromURL(QUrl::fromLocalFile(path), &error);
    QCOMPARE(map.has_value(), domain.isEmpty());
    if (map) {
        QCOMPARE(*map, (QVariantMap{{u"a"_s, 1}}));
        return;
    }
    QVERIFY2(error.isErrorDomainVelto(domain, code), qPrintable(error.description()));
    QVERIFY2(error.localizedDescription().contains(message), qPrintable(error.localizedDescription()));
    if (code == 259)
        QVERIFY(error.localizedDescription().startsWith(u"Expected dictionary in plist file at "_s)
                && error.localizedDescription().endsWith(u'/' + QFileInfo(path).fileName()));
}

void PlistTest::writingKeepsTheOldFileOnFailure()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"doc.plist"_s);
    const QUrl url = QUrl::fromLocalFile(path);
    const QVariantMap first{{u"version"_s, 1}, {u"title"_s, u"Ünïcode"_s}};
    VeltoError error;
    QVERIFY2(velto::writePlistToURL(first, url, VeltoDataWritingAtomic, &error), qPrintable(error.description()));
    QCOMPARE(VeltoPropertyList::formatOfData(contents(path)), VeltoPropertyListBinaryFormat);
    QCOMPARE(velto::dictionaryWithPlistLoadedFromURL(url), first);
    const QByteArray stored = contents(path);

    // A value the format cannot store: nothing is written, the old file stays.
    QVERIFY(!velto::writePlistToURL({{u"bad"_s, QVariant::fromValue(QUrl(u"x:"_s))}}, url, {}, &error));
    QCOMPARE(error.code(), VeltoCocoaErrorPropertyListWriteInvalid);
    QCOMPARE(contents(path), stored);
    // Without overwriting: refused, old file kept.
    QVERIFY(!velto::writePlistToURL({{u"version"_s, 2}}, url, VeltoDataWritingWithoutOverwriting, &error));
    QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteFileExists));
    QCOMPARE(contents(path), stored);
    // A folder that may not be written: no permission (root may write anywhere, so only when not root).
    if (::geteuid() != 0) {
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(!velto::writePlistToURL({{u"version"_s, 3}}, url, {}, &error));
        QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteNoPermission));
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(contents(path), stored);
    }
    // A path under a regular file cannot be written.
    QVERIFY(!velto::writePlistToURL(first, QUrl::fromLocalFile(path + u"/inner.plist"_s), {}, &error));
    QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileNoSuchFile));
    // Replacing keeps the file's permissions and leaves no temporary file behind.
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    QVERIFY(velto::writePlistToURL({{u"version"_s, 4}}, url, {}, &error));
    QCOMPARE(velto::dictionaryWithPlistLoadedFromURL(url), (QVariantMap{{u"version"_s, 4}}));
    QCOMPARE(QFile::permissions(path) & 0x7077, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"doc.plist"_s});
    QVERIFY(!velto::writePlistToURL(first, QUrl(u"https://example.invalid/a.plist"_s), {}, &error));
    QCOMPARE(error.code(), VeltoCocoaErrorFileWriteUnsupportedScheme);
}

void PlistTest::mutationStateCopiesOnWrite()
{
    const QVariantMap source{{u"width"_s, 640}};
    VeltoMutationState<QVariantMap> state;
    state.sourceObject = source;
    state.creator = VeltoCreateMutableDictionary;
    QVariantMap *working = VeltoMutationState_AllocAndSetMutableObject(state);
    QVERIFY(working && working == &*state.mutableObject);
    QVERIFY(working->isSharedWith(source)); // no copy until the first change
    working->insert(u"height"_s, 480);
    QCOMPARE(source, (QVariantMap{{u"width"_s, 640}}));
    QCOMPARE(state.sourceObject, source);

    VeltoMutationState<QVariantList> fresh;
    fresh.creator = VeltoCreateMutableArray;
    QCOMPARE(*VeltoMutationState_AllocAndSetMutableObject(fresh), QVariantList());
    VeltoMutationState<QSet<QString>> nothing;
    QVERIFY(!VeltoMutationState_AllocAndSetMutableObject(nothing));
    QVERIFY(!nothing.mutableObject);
    QSet<QString> *set = VeltoMutationState_SetMutableObject(nothing, QSet<QString>{u"a"_s});
    QCOMPARE(*set, QSet<QString>{u"a"_s});
    QCOMPARE(VeltoCreateMutableSet(), QSet<QString>());
}

QTEST_GUILESS_MAIN(PlistTest)
#include "plisttest.moc"

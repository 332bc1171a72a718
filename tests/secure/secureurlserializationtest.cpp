// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The stored form of secure URLs (plain bookmark bytes, or "VeltoData" and a property list), the Linux
// bookmark record inside it, and what damaged or hostile stored bytes give.

#include "veltotest.h"

#include "VTBookmarkRecord_p.h"
#include "VeltoPropertyList.h"
#include "VeltoSecureURL.h"
#include "VeltoSecureURLSerialization.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

QByteArray tagged(const QVariant &list, VeltoPropertyListFormat format = VeltoPropertyListXMLFormat)
{
    return "VeltoData" + VeltoPropertyList::write(list, format);
}

QString randomText(VeltoTestRandom &random)
{
    static const QStringList pieces{u"a"_s, u"/"_s, u"é"_s, u" "_s, u"\U0001F600"_s, u"."_s};
    QString text;
    for (int length = random.bounded(6); length > 0; --length)
        text += pieces.at(random.bounded(int(pieces.size())));
    return text;
}

} // namespace

class SecureURLSerializationTest : public QObject
{
    Q_OBJECT

private slots:
    void recordsReadBackWhatWasStored()
    {
        VeltoTestRandom random(12);
        for (int round = 0; round < 500; ++round) {
            VeltoSecureURLSerialization record;
            QByteArray bookmark = "VTBK"; // bookmarks never start with the tag, which would make them read as tagged
            for (int length = random.bounded(40); length > 0; --length)
                bookmark += char(random.bounded(256));
            record.setAppleBookmarkData(bookmark);
            record.setCaptureFlags(random.bounded(2) ? 0 : qint32(random.generate()));
            record.setSubpathFragment(random.bounded(2) ? QString() : randomText(random));
            const QByteArray stored = record.generatedSerializationData();
            const bool plain = record.captureFlags() == 0 && record.subpathFragment().isNull();
            QCOMPARE(stored == bookmark, plain);
            QCOMPARE(stored.startsWith("VeltoDatabplist00"), !plain);
            const auto back = VeltoSecureURLSerialization::initWithSerializationData(stored);
            QCOMPARE(back->appleBookmarkData(), bookmark);
            QCOMPARE(back->captureFlags(), record.captureFlags());
            QCOMPARE(back->subpathFragment(), record.subpathFragment());
            QCOMPARE(back->subpathFragment().isNull(), record.subpathFragment().isNull()); // "" is a subpath
        }
    }

    void readingRules_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<qint64>("errorCode"); // 0: read
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QByteArray>("bookmark");
        QTest::addColumn<qint32>("flags");
        QTest::addColumn<QString>("subpath");
        QTest::newRow("nil") << QByteArray() << qint64(1) << u"Security-scoped serialization data is nil."_s << QByteArray() << 0 << QString();
        QTest::newRow("no bytes") << QByteArray("") << qint64(0) << QString() << QByteArray("") << 0 << QString();
        QTest::newRow("the tag alone is a bookmark") << QByteArray("VeltoData") << qint64(0) << QString() << QByteArray("VeltoData")
                                                      << 0 << QString();
        QTest::newRow("XML, no flags, no subpath") << tagged(QVariantMap{{u"data"_s, QByteArray("bm")}}) << qint64(0) << QString()
                                                   << QByteArray("bm") << 0 << QString();
        QTest::newRow("values of other kinds count as missing")
            << tagged(QVariantMap{{u"data"_s, u"bm"_s}, {u"flags"_s, u"7"_s}, {u"subpath"_s, 5}}) << qint64(0) << QString()
            << QByteArray() << 7 << QString();
        QTest::newRow("not a dictionary") << tagged(QVariantList{1}) << qint64(1)
                                          << u"Security-scoped serialization data is not a dictionary."_s << QByteArray() << 0 << QString();
        QTest::newRow("not a property list") << QByteArray("VeltoData<plist>") << qint64(3840) << QString() << QByteArray() << 0
                                             << QString();
    }

    void readingRules()
    {
        QFETCH(QByteArray, data);
        QFETCH(qint64, errorCode);
        QFETCH(QString, errorText);
        VeltoSecureURLSerialization record;
        record.setSubpathFragment(u"kept"_s);
        VeltoError error;
        QCOMPARE(record.setPropertiesFromSerializationData(data, &error), errorCode == 0);
        QCOMPARE(error.code(), errorCode);
        if (!errorText.isNull())
            QCOMPARE(error.localizedDescription(), errorText);
        if (errorCode != 0) {
            QCOMPARE(record.subpathFragment(), u"kept"_s); // a failed read changes nothing
            QCOMPARE(VeltoSecureURL::initWithSerializedData(data)->resolvedURLWithFlags({}, &error), QUrl());
            QCOMPARE(error.code(), errorCode); // the object keeps the reading error
            return;
        }
        QTEST(record.appleBookmarkData(), "bookmark");
        QTEST(record.captureFlags(), "flags");
        QTEST(record.subpathFragment(), "subpath");
    }

    void writingFallsBackOrRefuses()
    {
        VeltoSecureURLSerialization record;
        record.setAppleBookmarkData("VTBK bookmark");
        record.setCaptureFlags(1);
        record.setSubpathFragment(QString(QChar(0xD800))); // a property list cannot hold it: the bookmark alone
        QCOMPARE(record.generatedSerializationData(), QByteArray("VTBK bookmark"));
        record.setAppleBookmarkData(QByteArray());
        VELTO_COMPARE_THROWN((void)record.generatedSerializationData(), VeltoInvalidArgumentException,
                             u"VeltoSecureURLSerialization::generatedSerializationData: a record with flags 1 or a subpath "
                             "needs bookmark data"_s);
    }

    void bookmarkRecordsRefuseWhatTheyDoNotKnow_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        VTBookmarkRecord record{VeltoBookmarkCreationWithSecurityScope, {7, 42}, u"/home/u/Bücher"_s, u"Bücher"_s, u"../x"_s};
        const QByteArray good = record.encoded();
        QTest::newRow("another format") << QByteArray("bplist00") << u"it is not a bookmark record"_s;
        QTest::newRow("newer version") << QByteArray("VTBK\x02") << u"it was written in version 2, newer than this library reads"_s;
        QTest::newRow("cut short") << good.chopped(1) << u"it is cut short or malformed"_s;
        QTest::newRow("bytes after it") << good + '\0' << u"bytes follow its end"_s;
        QTest::newRow("a bit flipped") << QByteArray(good).replace("/home", "/hoMe") << u"its checksum does not match"_s;
        record.path = u"/home/../etc"_s;
        QTest::newRow("unclean path") << record.encoded() << u"it holds values no bookmark has"_s;
        record.path = u"/x"_s;
        record.documentRelativePath = u"/x"_s;
        QTest::newRow("absolute relative path") << record.encoded() << u"it holds values no bookmark has"_s;
    }

    void bookmarkRecordsRefuseWhatTheyDoNotKnow()
    {
        QFETCH(QByteArray, bytes);
        QString problem;
        QVERIFY(!VTBookmarkRecord::decoded(bytes, &problem));
        QTEST(problem, "problem");
        VeltoError error;
        QVERIFY(VeltoBookmarkPlatform::installed()->resolveBookmarkData(bytes, 0, QUrl(), nullptr, &error).isEmpty());
        QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadCorruptFile));
        QCOMPARE(error.localizedDescription(), u"The bookmark data cannot be read: %1."_s.arg(problem));
        // Options the record does not know are not stored.
        const VTBookmarkRecord all{0xFFFFFFFF, {1, 2}, u"/"_s, u"/"_s, QString()};
        QCOMPARE(VTBookmarkRecord::decoded(all.encoded())->options, VTBookmarkRecord::KnownOptions);
    }

    void damagedBytesGiveTheKeptError()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kept.txt"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray stored = VeltoSecureURL::initCapturingBookmarkForURL(QUrl::fromLocalFile(path), true)->serializationStorableGlobally();
        QVERIFY(stored.startsWith("VeltoDatabplist00"));
        // Truncated: from 10 bytes on the property list cannot be read, and that error is kept; below, the
        // bytes are plain and no bookmark.
        for (qsizetype length = 0; length < stored.size(); ++length) {
            VeltoError kept;
            (void)VeltoSecureURLSerialization::initWithSerializationData(stored.left(length), &kept);
            VeltoError error;
            QVERIFY(VeltoSecureURL::initWithSerializedData(stored.left(length))->resolvedURLWithFlags({}, &error).isEmpty());
            if (length > 9)
                QCOMPARE(error, kept);
            QCOMPARE(error.code(), length > 9 ? qint64(VeltoCocoaErrorPropertyListReadCorrupt) : qint64(VeltoCoreErrorInvalidData));
        }
        // One bit flipped anywhere: the file, or one of the errors for damaged data.
        for (qsizetype bit = 0; bit < stored.size() * 8; ++bit) {
            QByteArray flipped = stored;
            flipped[bit / 8] = char(flipped.at(bit / 8) ^ (1 << (bit % 8)));
            VeltoError error;
            const QUrl resolved = VeltoSecureURL::initWithSerializedData(flipped)->resolvedURLWithFlags({}, &error);
            const bool damaged = error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorPropertyListReadCorrupt)
                                 || error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorInvalidData);
            QVERIFY2(resolved == QUrl::fromLocalFile(path) || (resolved.isEmpty() && damaged),
                     qPrintable(u"bit %1: %2"_s.arg(bit).arg(error.description())));
        }
        // Hostile property lists after the tag (the binary reader's fuzz regressions): the reader's error, kept.
        const QDir corpus(QStringLiteral(VELTO_FUZZ_CORPUS_DIR) + u"/propertylistbinary"_s);
        for (const QString &name : {u"cycle-indirect.bplist"_s, u"regression-million-values.bplist"_s, u"shared-expansion.bplist"_s}) {
            QFile hostile(corpus.filePath(name));
            QVERIFY(hostile.open(QIODevice::ReadOnly));
            VeltoError error;
            QVERIFY(VeltoSecureURL::initWithSerializedData("VeltoData" + hostile.readAll())->resolvedURLWithFlags({}, &error).isEmpty());
            QVERIFY2(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorPropertyListReadCorrupt), qPrintable(name));
        }
    }
};

QTEST_GUILESS_MAIN(SecureURLSerializationTest)
#include "secureurlserializationtest.moc"

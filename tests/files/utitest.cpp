// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTTypeIdentifierTable_p.h"
#include "VeltoUTI.h"

#include <QMimeDatabase>
#include <QTest>

using namespace Qt::StringLiterals;

class UTITest : public QObject
{
    Q_OBJECT

private slots:
    void tableNamesTypesTheDatabaseKnows();
    void conversions_data();
    void conversions();
    void knownIdentifiers_data();
    void knownIdentifiers();
    void listsKeepOrderAndCullOnRequest();
};

// A typo in the checked-in table would silently break a conversion: every MIME type in it must be one
// the shared MIME database knows, apart from the clipboard-only URI list.
void UTITest::tableNamesTypesTheDatabaseKnows()
{
    const QMimeDatabase database;
    QSet<QString> identifiers;
    for (const VTTypeIdentifierRow &row : VTTypeIdentifierTable::rows()) {
        const QString identifier = QString::fromLatin1(row.identifier);
        QVERIFY2(!identifiers.contains(identifier), row.identifier);
        identifiers.insert(identifier);
        const QString type = QString::fromLatin1(row.mimeType).section(u';', 0, 0);
        if (type == u"text/uri-list"_s || type == u"application/x-plist"_s)
            continue;
        QVERIFY2(database.mimeTypeForName(type).isValid(), row.mimeType);
    }
    QVERIFY(identifiers.size() > 50);
}

void UTITest::conversions_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("extension"); // null: none
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("identifierFromExtension");
    QTest::addColumn<QString>("identifierFromMimeType");
    QTest::newRow("png") << u"public.png"_s << u"png"_s << u"image/png"_s << u"public.png"_s << u"public.png"_s;
    QTest::newRow("pdf, case ignored") << u"COM.ADOBE.PDF"_s << u"pdf"_s << u"application/pdf"_s << u"com.adobe.pdf"_s << u"com.adobe.pdf"_s;
    QTest::newRow("EPS") << QString(VeltoUTI_EPS) << u"eps"_s << u"image/x-eps"_s << QString(VeltoUTI_EPS) << QString(VeltoUTI_EPS);
    QTest::newRow("plain text is preferred for text/plain") << u"public.utf8-plain-text"_s << u"txt"_s
        << u"text/plain;charset=utf-8"_s << u"public.plain-text"_s << u"public.utf8-plain-text"_s;
    QTest::newRow("an alias in the database") << u"public.rtf"_s << u"rtf"_s << u"text/rtf"_s << u"public.rtf"_s << u"public.rtf"_s;
    QTest::newRow("property list by the table's extension") << u"com.apple.property-list"_s << u"plist"_s
        << u"application/x-plist"_s << u"com.apple.property-list"_s << u"com.apple.property-list"_s;
    QTest::newRow("URL: a clipboard type, no extension") << u"public.url"_s << QString() << u"text/uri-list"_s
        << QString() << u"public.url"_s;
    QTest::newRow("folder") << u"public.folder"_s << QString() << u"inode/directory"_s << QString() << u"public.folder"_s;
    QTest::newRow("an identifier the table lacks") << u"com.example.unknown"_s << QString() << QString() << QString() << QString();
    QTest::newRow("own space, unknown to the table") << u"com.velto.uti.outline"_s << QString() << QString() << QString() << QString();
}

void UTITest::conversions()
{
    QFETCH(QString, identifier);
    QFETCH(QString, extension);
    QFETCH(QString, mimeType);
    QFETCH(QString, identifierFromExtension);
    QFETCH(QString, identifierFromMimeType);
    QCOMPARE(VeltoUTI::fileExtensionForUTI(identifier), extension);
    QCOMPARE(VeltoUTI::fileExtensionForUTI(identifier).isNull(), extension.isNull());
    QCOMPARE(VeltoUTI::pasteboardTypeForUTI(identifier), mimeType);
    if (!extension.isNull()) {
        QCOMPARE(VeltoUTI::UTIForFileExtension(extension), identifierFromExtension);
        QCOMPARE(VeltoUTI::UTIForFileExtension(extension.toUpper()), identifierFromExtension);
    }
    if (!mimeType.isNull())
        QCOMPARE(VeltoUTI::UTIForPasteboardType(mimeType), identifierFromMimeType);
    // Other spellings of the same MIME type reach the same row.
    QCOMPARE(VeltoUTI::UTIForPasteboardType(u"application/rtf"_s), u"public.rtf"_s);
    QCOMPARE(VeltoUTI::UTIForPasteboardType(u"IMAGE/PNG"_s), u"public.png"_s);
    QCOMPARE(VeltoUTI::UTIForPasteboardType(u"text/plain; charset=us-ascii"_s), u"public.plain-text"_s);
    QVERIFY(VeltoUTI::UTIForPasteboardType(u"application/x-no-such-type"_s).isNull());
    QVERIFY(VeltoUTI::UTIForFileExtension(u"xyzzy"_s).isNull());
    QVERIFY(VeltoUTI::UTIForFileExtension(QString()).isNull());
    QVERIFY(VeltoUTI::UTIForFileExtension(u"tar.gz"_s).isNull()); // the database knows it; the table does not
}

void UTITest::knownIdentifiers_data()
{
    QTest::addColumn<QString>("string");
    QTest::addColumn<bool>("known");
    QTest::newRow("a bare word") << u"url"_s << false;
    QTest::newRow("a bare word the table would know") << u"png"_s << false;
    QTest::newRow("URL name") << u"public.url-name"_s << true;
    QTest::newRow("URL") << u"public.url"_s << true;
    QTest::newRow("promised file URL") << u"com.apple.pasteboard.promised-file-url"_s << true;
    QTest::newRow("own space") << u"com.velto.uti.anything"_s << true;
    QTest::newRow("with an extension") << u"public.jpeg"_s << true;
    QTest::newRow("in the table without an extension") << u"public.folder"_s << false;
    QTest::newRow("unknown") << u"org.example.thing"_s << false;
    QTest::newRow("a MIME type with a dot") << u"application/vnd.ms-excel"_s << false;
}

void UTITest::knownIdentifiers()
{
    QFETCH(QString, string);
    QFETCH(bool, known);
    QCOMPARE(VeltoUTI::isKnownUTI(string), known);
    QCOMPARE(VeltoUTI::knownUTIs().size(), 5);
    QVERIFY(&VeltoUTI::knownUTIs() == &VeltoUTI::knownUTIs()); // made once
}

void UTITest::listsKeepOrderAndCullOnRequest()
{
    const QStringList identifiers{u"public.png"_s, u"org.example.none"_s, u"public.url-name"_s, u"com.adobe.pdf"_s};
    QCOMPARE(VeltoUTI::pasteboardTypesForUTIs(identifiers, VeltoUTICulling::KeepUnknown),
             (QStringList{u"image/png"_s, u"org.example.none"_s, u"public.url-name"_s, u"application/pdf"_s}));
    QCOMPARE(VeltoUTI::pasteboardTypesForUTIs(identifiers, VeltoUTICulling::CullUnknown),
             (QStringList{u"image/png"_s, u"application/pdf"_s}));
    // A type that already is a known identifier comes back unchanged, without conversion.
    const QStringList types{u"text/html"_s, u"public.url"_s, u"x-special/nautilus-clipboard"_s, u"com.velto.uti.doc"_s,
                            u"image/jpeg"_s};
    QCOMPARE(VeltoUTI::UTIsForPasteboardTypes(types, VeltoUTICulling::KeepUnknown),
             (QStringList{u"public.html"_s, u"public.url"_s, u"x-special/nautilus-clipboard"_s, u"com.velto.uti.doc"_s,
                          u"public.jpeg"_s}));
    QCOMPARE(VeltoUTI::UTIsForPasteboardTypes(types, VeltoUTICulling::CullUnknown),
             (QStringList{u"public.html"_s, u"public.url"_s, u"com.velto.uti.doc"_s, u"public.jpeg"_s}));
    QCOMPARE(VeltoUTI::UTIsForPasteboardTypes({}, VeltoUTICulling::KeepUnknown), QStringList());
}

QTEST_GUILESS_MAIN(UTITest)
#include "utitest.moc"

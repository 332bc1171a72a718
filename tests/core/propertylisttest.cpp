// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoPropertyList.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QUrl>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

// A binary document built by hand from the format's description: the objects in order, then the
// offset table and the trailer. References inside the objects must already have refSize bytes.
QByteArray binaryDocument(const QList<QByteArray> &objects, quint64 root = 0, int refSize = 1, int offsetSize = 1)
{
    QByteArray out("bplist00");
    QList<quint64> offsets;
    for (const QByteArray &object : objects) {
        offsets.append(quint64(out.size()));
        out += object;
    }
    const quint64 table = quint64(out.size());
    auto append = [&out](quint64 value, int size) {
        for (int i = size - 1; i >= 0; --i)
            out.append(char(value >> (8 * i)));
    };
    for (quint64 offset : offsets)
        append(offset, offsetSize);
    out.append(6, '\0');
    out.append(char(offsetSize));
    out.append(char(refSize));
    append(quint64(objects.size()), 8);
    append(root, 8);
    append(table, 8);
    return out;
}

// An array object (fewer than 15 elements) referring to \a references.
QByteArray array(const QList<quint64> &references, int refSize)
{
    QByteArray out(1, char(0xA0 | references.size()));
    for (quint64 reference : references)
        out += QByteArray::fromHex(QByteArray::number(reference, 16).rightJustified(2 * refSize, '0'));
    return out;
}

// n arrays, each holding the next (refs of 4 bytes), ending in true: nesting n deep.
QByteArray arrayChain(quint32 n)
{
    QList<QByteArray> objects;
    for (quint32 i = 0; i < n; ++i)
        objects.append(array({i + 1}, 4));
    objects.append("\x09");
    return binaryDocument(objects, 0, 4, 4);
}

QByteArray testFile(const QString &name)
{
    QFile file(QDir(QStringLiteral(VELTO_TEST_DATA_DIR)).filePath(u"propertylists/"_s + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVariant randomValue(QRandomGenerator &random, int depth)
{
    switch (random.bounded(depth > 3 ? 8 : 10)) {
    case 0: return random.bounded(2) == 1;
    case 1: return qint64(random.generate64()) >> random.bounded(64); // every size, both signs
    case 2: return quint64(std::numeric_limits<qint64>::max()) + 1 + (random.generate64() >> 1);
    case 3: return random.generateDouble() * 1e6 - 5e5;
    case 4: {
        static const QList<char32_t> pool{u'a', u'Z', u' ', u'\t', u'\n', u'\r', 0xE9, 0x3042, 0xFFFD, 0x1F600, 0x10FFFF};
        QString text;
        for (int i = random.bounded(20); i > 0; --i) {
            const char32_t c = pool.at(random.bounded(pool.size()));
            text += QString::fromUcs4(&c, 1);
        }
        return text;
    }
    case 5: {
        QByteArray bytes(random.bounded(40), Qt::Uninitialized);
        for (char &c : bytes)
            c = char(random.bounded(256));
        return bytes;
    }
    case 6: // years 1 to 9999, to the millisecond
        return QDateTime::fromMSecsSinceEpoch(qint64(random.bounded(315'000'000'000.0)) * 1000 - 62'135'596'800'000
                                                  + random.bounded(1000), Qt::UTC);
    case 7: return QString(); // the empty string
    case 8: {
        QVariantList list;
        for (int i = random.bounded(6); i > 0; --i)
            list.append(randomValue(random, depth + 1));
        return list;
    }
    default: {
        QVariantMap map;
        for (int i = random.bounded(6); i > 0; --i)
            map.insert(QString::number(random.bounded(100)), randomValue(random, depth + 1));
        return map;
    }
    }
}

} // namespace

class PropertyListTest : public QObject
{
    Q_OBJECT

private slots:
    void readsHandMadeBinaryObjects_data();
    void readsHandMadeBinaryObjects();
    void writesTheFormatAsDescribed();
    void rejectsHostileBinaryDocuments_data();
    void rejectsHostileBinaryDocuments();
    void nestingAndSharingAreBoundedAtTheirLimits();
    void detectsTheFormat_data();
    void detectsTheFormat();
    void refusesToWriteWhatItCannotStore_data();
    void refusesToWriteWhatItCannotStore();
    void randomTreesRoundTripThroughBothFormats();
    void taggedRecordRoundTrips();
};

void PropertyListTest::readsHandMadeBinaryObjects_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("false") << QByteArray("\x08") << QVariant(false);
    QTest::newRow("1-byte integer is unsigned") << QByteArray("\x10\xFF") << QVariant(qint64(255));
    QTest::newRow("2-byte integer") << QByteArray("\x11\x01\x00", 3) << QVariant(qint64(256));
    QTest::newRow("4-byte integer is unsigned") << QByteArray("\x12\xFF\xFF\xFF\xFF") << QVariant(qint64(4294967295));
    QTest::newRow("8-byte integer is signed") << QByteArray(9, '\xFF').replace(0, 1, "\x13") << QVariant(qint64(-1));
    QTest::newRow("16-byte integer above the signed range")
        << QByteArray("\x14") + QByteArray(8, '\0') + QByteArray(8, '\xFF') << QVariant(std::numeric_limits<quint64>::max());
    QTest::newRow("16-byte negative integer")
        << QByteArray("\x14") + QByteArray(15, '\xFF').append('\xFE') << QVariant(qint64(-2));
    QTest::newRow("float") << QByteArray::fromHex("223fc00000") << QVariant(1.5);
    QTest::newRow("double") << QByteArray::fromHex("23400921fb54442d18") << QVariant(3.141592653589793);
    QTest::newRow("date at the reference instant") << QByteArray::fromHex("330000000000000000")
                                                   << QVariant(QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC));
    QTest::newRow("date one and a half seconds before") << QByteArray::fromHex("33bff8000000000000")
                                                        << QVariant(QDateTime(QDate(2000, 12, 31), QTime(23, 59, 58, 500), Qt::UTC));
    QTest::newRow("ASCII string") << QByteArray("\x52hi") << QVariant(u"hi"_s);
    QTest::newRow("UTF-16 string with a pair") << QByteArray::fromHex("6300e9d83dde00") << QVariant(u"é😀"_s);
    QTest::newRow("data with a count that follows")
        << QByteArray("\x4F\x10\x10") + QByteArray(16, 'x') << QVariant(QByteArray(16, 'x'));
    QTest::newRow("empty array") << QByteArray("\xA0") << QVariant(QVariantList());
}

void PropertyListTest::readsHandMadeBinaryObjects()
{
    QFETCH(QByteArray, object);
    QFETCH(QVariant, expected);
    VeltoError error;
    const std::optional<QVariant> value = VeltoPropertyList::read(binaryDocument({object}), nullptr, &error);
    QVERIFY2(value, qPrintable(error.localizedDescription()));
    QCOMPARE(value->typeId(), expected.typeId());
    QCOMPARE(*value, expected);

    // The whole checked-in example (its format is read in detectsTheFormat).
    QCOMPARE(VeltoPropertyList::read(testFile(u"valid.bplist"_s))->toMap(),
             (QVariantMap{{u"a"_s, QVariantList{1, 2, 3}}, {u"s"_s, u"x"_s}}));
}

void PropertyListTest::writesTheFormatAsDescribed()
{
    // Keys first, then values, the dictionary last; one-byte offsets and references.
    const QByteArray expected = QByteArray("bplist00") + QByteArray::fromHex(
        "5464617461" "55666c616773" "4101" "1001" "d200010203"     // "data", "flags", <01>, 1, {…}
        "080d131517"                                              // offsets of the five objects
        "000000000000" "0101" "0000000000000005" "0000000000000004" "000000000000001c");
    const QByteArray written = VeltoPropertyList::write(QVariantMap{{u"data"_s, QByteArray("\x01")}, {u"flags"_s, 1}},
                                                        VeltoPropertyListBinaryFormat);
    QCOMPARE(written.toHex(' '), expected.toHex(' '));
    // Equal strings are stored once, equal containers are not: "s", [s], [s] and the root.
    const QByteArray shared = VeltoPropertyList::write(
        QVariantList{QVariantList{u"s"_s}, QVariantList{u"s"_s}, u"s"_s}, VeltoPropertyListBinaryFormat);
    QCOMPARE(shared.at(shared.size() - 17), '\x04');
}

void PropertyListTest::rejectsHostileBinaryDocuments_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("message");
    const QList<std::pair<const char *, QString>> files{
        {"cycle-self", u"object 0 contains itself (a reference cycle)"_s},
        {"cycle-indirect", u"object 0 contains itself"_s},
        {"cycle-dict", u"object 0 contains itself"_s},
        {"huge-object-count", u"declares 4611686018427387904 objects, but the offset table has room for 1"_s},
        {"object-count-past-end", u"declares 4294967296 objects"_s},
        {"offset-past-end", u"object 0 has offset 1099511627776, outside the objects"_s},
        {"table-past-end", u"the offset table at 1099511627776 lies outside the objects"_s},
        {"offset-into-trailer", u"object 0 has offset 12, outside the objects (8 to 9)"_s},
        {"huge-array-count", u"object 0 declares 1152921504606846976 elements, more than the 0 bytes left"_s},
        {"huge-string-count", u"declares 4611686018427387904 elements"_s},
        {"huge-data-count", u"declares 9223372036854775807 elements"_s},
        {"shared-expansion", u"stands for more than 4096 values"_s},
        {"ref-size-3", u"object reference size 3"_s},
        {"offset-size-0", u"offset size 0"_s},
        {"top-outside", u"the root object 5 is not among the 1 objects"_s},
        {"dict-integer-key", u"dictionary key 1 is not a string"_s},
        {"ascii-high-byte", u"byte 0xff in an ASCII string"_s},
        {"utf16-lone-surrogate", u"unpaired surrogate"_s},
    };
    for (const auto &[name, message] : files)
        QTest::newRow(name) << testFile(QString::fromLatin1(name) + u".bplist"_s) << message;
    QTest::newRow("nested 100,000 deep") << arrayChain(100'000) << u"nesting deeper than 256 levels"_s;
    QTest::newRow("duplicate key") << binaryDocument({"\xD2\x01\x01\x02\x02", "\x51k", "\x09"}) << u"the key \"k\" appears twice"_s;
    QTest::newRow("null") << binaryDocument({QByteArray(1, '\0')}) << u"marker 0x00 (null or fill)"_s;
    QTest::newRow("set") << binaryDocument({"\xC0"}) << u"sets are not property-list values"_s;
    QTest::newRow("UID") << binaryDocument({QByteArray("\x80\x01", 2)}) << u"UID objects"_s;
    QTest::newRow("16-byte integer too big") << binaryDocument({QByteArray("\x14") + QByteArray(16, '\x01')})
                                             << u"does not fit in 64 bits"_s;
    QTest::newRow("date in the year 10000") << binaryDocument({QByteArray::fromHex("33425176592e000000")})
                                            << u"years 1 to 9999"_s;
    QTest::newRow("reference past the objects") << binaryDocument({"\xA1\x07"}) << u"refers to object 7 of 1"_s;
    QTest::newRow("string running into the table") << binaryDocument({"\x55" "ab"}) << u"declares 5 elements"_s;
    QTest::newRow("other version") << QByteArray("bplist15") + QByteArray(40, '\0') << u"\"bplist15\" is not supported"_s;
    QTest::newRow("too short") << QByteArray("bplist00\x08") << u"too short (9 bytes)"_s;
    QTest::newRow("neither format") << QByteArray("{a = 1;}") << u"neither an XML nor a binary"_s;
    QTest::newRow("empty") << QByteArray() << u"the data is empty"_s;
    // Every shortened form of a good document fails cleanly.
    const QByteArray good = testFile(u"valid.bplist"_s);
    for (qsizetype length = 8; length < good.size(); length += 7)
        QTest::addRow("cut to %d bytes", int(length)) << good.left(length) << QString();
}

void PropertyListTest::rejectsHostileBinaryDocuments()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, message);
    VeltoError error;
    QVERIFY(!VeltoPropertyList::read(document, nullptr, &error));
    QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorPropertyListReadCorrupt));
    QVERIFY2(error.localizedDescription().startsWith(u"The property list cannot be read: "_s),
             qPrintable(error.localizedDescription()));
    QVERIFY2(error.localizedDescription().contains(message), qPrintable(error.localizedDescription()));
}

void PropertyListTest::nestingAndSharingAreBoundedAtTheirLimits()
{
    const int limit = VeltoPropertyList::MaximumDepth;
    QVERIFY(VeltoPropertyList::read(arrayChain(quint32(limit))));   // true at depth 256
    QVERIFY(!VeltoPropertyList::read(arrayChain(quint32(limit) + 1)));

    // A chain of 200 arrays reached from the root directly and from 98 levels down: the second path is
    // 299 deep, though the shared chain was first read at a depth where it fitted.
    QList<QByteArray> objects{array({100, 1}, 2)};
    for (quint64 i = 1; i < 98; ++i)
        objects.append(array({i + 1}, 2));
    objects.append(array({100}, 2));
    objects.append(QByteArray("\x09")); // 99, not referenced
    for (quint64 i = 100; i < 300; ++i)
        objects.append(array({i + 1}, 2));
    objects.append("\x09");
    VeltoError error;
    QVERIFY(!VeltoPropertyList::read(binaryDocument(objects, 0, 2, 2), nullptr, &error));
    QVERIFY2(error.localizedDescription().contains(u"nesting deeper than 256"_s), qPrintable(error.localizedDescription()));

    // n arrays each holding the next one twice stand for 2^(n+1) − 1 values: 11 fit the allowance
    // for small documents, 12 do not.
    auto doubling = [](quint64 n) {
        QList<QByteArray> objects;
        for (quint64 i = 0; i < n; ++i)
            objects.append(array({i + 1, i + 1}, 1));
        objects.append("\x09");
        return binaryDocument(objects);
    };
    const auto shared = VeltoPropertyList::read(doubling(11));
    QVERIFY(shared);
    QVERIFY(shared->toList().at(0).toList().isSharedWith(shared->toList().at(1).toList()));
    VeltoError error2;
    QVERIFY(!VeltoPropertyList::read(doubling(12), nullptr, &error2));
    QVERIFY2(error2.localizedDescription().contains(u"stands for more than 4096 values"_s), qPrintable(error2.localizedDescription()));
    // A document as long as the values it stands for is read: 100,000 references to one shared true.
    const QByteArray many = binaryDocument({QByteArray::fromHex("af12000186a0") + QByteArray(100'000, '\x01'), "\x09"}, 0, 1, 4);
    const auto trues = VeltoPropertyList::read(many, nullptr, &error2);
    QVERIFY2(trues, qPrintable(error2.localizedDescription()));
    QCOMPARE(trues->toList().size(), 100'000);
}

void PropertyListTest::detectsTheFormat_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("format");
    const QByteArray xml = VeltoPropertyList::write(QVariantList{u"é"_s}, VeltoPropertyListXMLFormat);
    QTest::newRow("binary") << testFile(u"valid.bplist"_s) << int(VeltoPropertyListBinaryFormat);
    QTest::newRow("XML") << xml << int(VeltoPropertyListXMLFormat);
    QTest::newRow("XML after a byte-order mark") << QByteArray("\xEF\xBB\xBF") + xml << int(VeltoPropertyListXMLFormat);
    QTest::newRow("blank lines before a document without declaration")
        << QByteArray("\n\n  <plist><true/></plist>") << int(VeltoPropertyListXMLFormat);
    const QString text = QString::fromUtf8(xml).replace(u"UTF-8"_s, u"UTF-16"_s);
    QByteArray utf16("\xFF\xFE");
    utf16.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    QTest::newRow("UTF-16 XML") << utf16 << int(VeltoPropertyListXMLFormat);
}

void PropertyListTest::detectsTheFormat()
{
    QFETCH(QByteArray, data);
    QFETCH(int, format);
    QCOMPARE(VeltoPropertyList::formatOfData(data), VeltoPropertyListFormat(format));
    VeltoPropertyListFormat read = VeltoPropertyListFormat(0);
    VeltoError error;
    QVERIFY2(VeltoPropertyList::read(data, &read, &error), qPrintable(error.localizedDescription()));
    QCOMPARE(int(read), format);
}

void PropertyListTest::refusesToWriteWhatItCannotStore_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("message");
    const int binary = VeltoPropertyListBinaryFormat;
    const int xml = VeltoPropertyListXMLFormat;
    QTest::newRow("URL in a dictionary") << QVariant(QVariantMap{{u"u"_s, QUrl(u"file:///a"_s)}}) << binary
                                         << uR"(root["u"] is a QUrl, which is not a property-list value)"_s;
    QTest::newRow("invalid value in a list") << QVariant(QVariantList{1, QVariant()}) << xml
                                             << u"root[1] is an invalid QVariant"_s;
    QTest::newRow("unpaired surrogate") << QVariant(QVariantList{QString(QChar(0xD800))}) << binary
                                        << u"root[0] is a string with the unpaired surrogate U+D800"_s;
    QTest::newRow("control character in XML") << QVariant(u"a\u0001"_s) << xml
                                              << u"root is a string with U+0001, which XML cannot carry"_s;
    QTest::newRow("U+FFFE in an XML key") << QVariant(QVariantMap{{u"k\uFFFE"_s, 1}}) << xml
                                          << u"has a key with U+FFFE, which XML cannot carry"_s;
    QTest::newRow("year 10000") << QVariant(QDateTime(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC)) << binary
                                << u"root is a date outside the years 1 to 9999"_s;
    QVariant deep = true;
    for (int i = 0; i <= VeltoPropertyList::MaximumDepth; ++i)
        deep = QVariantList{deep};
    QTest::newRow("too deep") << deep << binary << u"nests deeper than 256 levels"_s;
    QTest::newRow("too many values") << QVariant(QVariantList(VeltoPropertyList::MaximumValueCount, 0)) << xml
                                     << u"more than 1048576 values"_s;
    QTest::newRow("no such format") << QVariant(1) << 300 << u"format 300 is not a property-list format"_s;
}

void PropertyListTest::refusesToWriteWhatItCannotStore()
{
    QFETCH(QVariant, value);
    QFETCH(int, format);
    QFETCH(QString, message);
    VeltoError error;
    QVERIFY(VeltoPropertyList::write(value, VeltoPropertyListFormat(format), &error).isNull());
    QVERIFY(error.isErrorDomainVelto(VeltoCocoaErrorDomain, VeltoCocoaErrorPropertyListWriteInvalid));
    QVERIFY2(error.localizedDescription().contains(message), qPrintable(error.localizedDescription()));
    // The binary format carries every character XML cannot.
    if (message.contains(u"XML cannot carry"_s))
        QVERIFY(!VeltoPropertyList::write(value, VeltoPropertyListBinaryFormat).isNull());
}

// Random trees of every kind read back equal from both formats, and converting one format into the
// other loses nothing.
void PropertyListTest::randomTreesRoundTripThroughBothFormats()
{
    const quint32 seed = 20261122;
    QRandomGenerator random(seed);
    for (int round = 0; round < 400; ++round) {
        const QVariant tree = randomValue(random, 0);
        const QVariant expected = VeltoPropertyList::normalized(tree);
        const QString where = u"seed %1, round %2"_s.arg(seed).arg(round);
        VeltoError error;
        const QByteArray binary = VeltoPropertyList::write(tree, VeltoPropertyListBinaryFormat, &error);
        const QByteArray xml = VeltoPropertyList::write(tree, VeltoPropertyListXMLFormat, &error);
        QVERIFY2(!binary.isNull() && !xml.isNull(), qPrintable(where + u": "_s + error.localizedDescription()));
        const auto fromBinary = VeltoPropertyList::read(binary, nullptr, &error);
        const auto fromXml = VeltoPropertyList::read(xml, nullptr, &error);
        QVERIFY2(fromBinary && fromXml, qPrintable(where + u": "_s + error.localizedDescription()));
        QVERIFY2(*fromBinary == expected, qPrintable(where + u" (binary)"_s));
        QVERIFY2(*fromXml == expected, qPrintable(where + u" (XML)"_s));
        QVERIFY2(VeltoPropertyList::write(*fromXml, VeltoPropertyListBinaryFormat) == binary, qPrintable(where));
    }
}

// A stored file reference: the tag "VeltoData", then a binary dictionary of data, flags and subpath.
// Whatever format follows the tag is read.
void PropertyListTest::taggedRecordRoundTrips()
{
    const QVariantMap record{{u"data"_s, QByteArray("bookmark\0bytes", 14)}, {u"flags"_s, 1}, {u"subpath"_s, u"a/b é"_s}};
    for (VeltoPropertyListFormat format : {VeltoPropertyListBinaryFormat, VeltoPropertyListXMLFormat}) {
        const QByteArray stored = "VeltoData" + VeltoPropertyList::write(record, format);
        if (format == VeltoPropertyListBinaryFormat)
            QVERIFY(stored.startsWith("VeltoDatabplist00"));
        const auto back = VeltoPropertyList::read(stored.mid(9));
        QVERIFY(back);
        QCOMPARE(back->toMap(), record);
        QCOMPARE(back->toMap().value(u"flags"_s).typeId(), QMetaType::LongLong);
    }
    VeltoError error;
    QVERIFY(!VeltoPropertyList::read(QByteArray("VeltoDatabplist00garbage").mid(9), nullptr, &error));
    QCOMPARE(error.code(), VeltoCocoaErrorPropertyListReadCorrupt);
}

QTEST_GUILESS_MAIN(PropertyListTest)
#include "propertylisttest.moc"

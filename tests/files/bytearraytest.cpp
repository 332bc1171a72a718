// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ByteArray+VeltoAdditions.h"
#include "VeltoZipStream.h"
#include "rangetostring.h"
#include "veltotest.h"

#include <QTemporaryDir>

#include <zlib.h>

using namespace Qt::StringLiterals;

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};

QByteArray text(qsizetype size)
{
    QByteArray words;
    for (int i = 0; words.size() < size; ++i)
        words += "lorem ipsum " + QByteArray::number(i % 977) + (i % 13 ? " " : ".\n");
    return words.left(size);
}

QByteArray randomBytes(VeltoTestRandom &random, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

// What zlib itself makes of \a data in one call: the reference our growing buffers must reproduce.
QByteArray zlibOneShot(const QByteArray &data, int windowBits)
{
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    QByteArray out(qsizetype(deflateBound(&stream, uLong(data.size()))), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    stream.avail_in = uInt(data.size());
    stream.next_out = reinterpret_cast<Bytef *>(out.data());
    stream.avail_out = uInt(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return out;
}

} // namespace

class ByteArrayTest : public QObject
{
    Q_OBJECT

private slots:
    void emptyInputIsTheReceiver();
    void compressionMatchesZlib_data();
    void compressionMatchesZlib();
    void damagedInput_data();
    void damagedInput();
    void boundedGrowthSteps();
    void zipStream();
    void fileReading_data();
    void fileReading();
    void searching_data();
    void searching();
    void repeatingAndCounting();
    void hex_data();
    void hex();
    void hexFastAndSlowAgree();
    void base64_data();
    void base64();
    void base64MatchesQt();
};

void ByteArrayTest::emptyInputIsTheReceiver()
{
    QByteArray empty;
    empty.reserve(32); // a buffer of its own, so that sharing is visible
    for (const auto &call : {velto::dataByCompressingZlib, velto::dataByDecompressingZlib, velto::dataByCompressingGZip,
                             velto::dataByDecompressingGZip})
        QCOMPARE(call(empty).constData(), empty.constData());
    QCOMPARE(velto::dataByDecompressingGZipWithMaximumLength(empty, 1).constData(), empty.constData());
    const QByteArray some("abc");
    QCOMPARE(velto::dataByRepeatingNumberOfTimesVelto(some, 1).constData(), some.constData());
}

void ByteArrayTest::compressionMatchesZlib_data()
{
    QTest::addColumn<QByteArray>("data");
    VeltoTestRandom random(1302);
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("text, 100 KB") << text(100000);
    QTest::newRow("random, 300 KB (output outgrows every first buffer)") << randomBytes(random, 300000);
    QTest::newRow("zeros, 4 MB (decompression grows many times)") << QByteArray(4 << 20, '\0');
}

void ByteArrayTest::compressionMatchesZlib()
{
    QFETCH(QByteArray, data);
    const QByteArray zlib = velto::dataByCompressingZlib(data);
    const QByteArray gzip = velto::dataByCompressingGZip(data);
    QCOMPARE(zlib, zlibOneShot(data, 15));
    QCOMPARE(gzip, zlibOneShot(data, 31));
    QCOMPARE(velto::dataByDecompressingZlib(zlib), data);
    QCOMPARE(velto::dataByDecompressingGZip(gzip), data);
    QCOMPARE(velto::dataByDecompressingGZip(zlib), data); // the header tells the formats apart
    QVERIFY(velto::dataByDecompressingZlib(gzip).isNull());

    VeltoTestRandom random(7);
    auto zip = VeltoZipStream::initWithEstimatedInputDataLength(quint64(data.size()));
    for (qsizetype at = 0; at < data.size();) {
        const qsizetype piece = std::min<qsizetype>(random.bounded(70000), data.size() - at);
        QVERIFY(zip->appendData(QByteArrayView(data).sliced(at, piece)));
        at += piece;
    }
    QCOMPARE(zip->finalizeCompressedData(), gzip);
}

void ByteArrayTest::damagedInput_data()
{
    QTest::addColumn<QByteArray>("gzip");
    QTest::addColumn<QByteArray>("boundedResult"); // what the bounded call returns: the bytes before the damage
    const QByteArray data = text(200000);
    const QByteArray gzip = velto::dataByCompressingGZip(data);
    QByteArray flipped = gzip;
    flipped[flipped.size() - 6] = char(flipped.at(flipped.size() - 6) ^ 1); // in the CRC of the trailer
    QTest::newRow("truncated") << gzip.left(gzip.size() / 2) << QByteArray("prefix");
    QTest::newRow("trailer without its last byte") << gzip.chopped(1) << data;
    QTest::newRow("checksum bit flipped") << flipped << data;
    QTest::newRow("not compressed at all") << QByteArray("plain text, no header") << QByteArray();
    QTest::newRow("gzip magic, nothing else") << QByteArray("\x1f\x8b", 2) << QByteArray();
}

void ByteArrayTest::damagedInput()
{
    QFETCH(QByteArray, gzip);
    QFETCH(QByteArray, boundedResult);
    QVERIFY(velto::dataByDecompressingGZip(gzip).isNull());
    QVERIFY(velto::dataByDecompressingZlib(gzip).isNull());
    const QByteArray bounded = velto::dataByDecompressingGZipWithMaximumLength(gzip, VeltoNotFound);
    if (boundedResult == "prefix") {
        QVERIFY(bounded.size() > 0);
        QVERIFY(text(200000).startsWith(bounded));
    } else {
        QCOMPARE(bounded, boundedResult);
    }
}

// The first buffer holds twice the input; each later step adds the input's length once.
void ByteArrayTest::boundedGrowthSteps()
{
    const QByteArray gzip = velto::dataByCompressingGZip(QByteArray(1 << 20, 'z'));
    const qsizetype n = gzip.size();
    QCOMPARE(velto::dataByDecompressingGZipWithMaximumLength(gzip, 1).size(), 2 * n);
    QCOMPARE(velto::dataByDecompressingGZipWithMaximumLength(gzip, quint64(2 * n + 1)).size(), 3 * n);
    QCOMPARE(velto::dataByDecompressingGZipWithMaximumLength(gzip, 1 << 20), QByteArray(1 << 20, 'z'));
}

void ByteArrayTest::zipStream()
{
    for (const auto &[length, capacity] : QList<std::pair<quint64, quint64>>{{0, 1024}, {1709, 1024}, {2000, 1200}, {1000000, 600000}})
        QCOMPARE(VeltoZipStream::initWithEstimatedInputDataLength(length)->bufferCapacity(), capacity);

    // Incompressible input makes the buffer grow: c becomes c + max(2c, 1024).
    VeltoTestRandom random(99);
    const QByteArray noise = randomBytes(random, 200000);
    auto zip = VeltoZipStream::initWithEstimatedOutputBufferCapacity(1024);
    QVERIFY(zip->appendData(noise));
    QVERIFY(QList<quint64>({3072, 9216, 27648, 82944, 248832}).contains(zip->bufferCapacity()));
    QVERIFY(zip->bufferCapacity() >= zip->zstream()->total_out);
    QCOMPARE(velto::dataByDecompressingGZip(zip->finalizeCompressedData()), noise);
    QVERIFY(!zip->zstream());
    QVERIFY(!zip->appendData("more"));
    QVERIFY(zip->finalizeCompressedData().isNull());
}

void ByteArrayTest::fileReading_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint64>("maximum");
    QTest::addColumn<bool>("fromEnd");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<qint64>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("first 10 bytes") << u"forty"_s << quint64(10) << false << QByteArray("0123456789") << qint64(0) << QString();
    QTest::newRow("last 10 bytes") << u"forty"_s << quint64(10) << true << QByteArray("ABCDEFGHIJ") << qint64(0) << QString();
    QTest::newRow("last 100 of 40 bytes") << u"forty"_s << quint64(100) << true
                                          << QByteArray("0123456789abcdefghijklmnopqrstABCDEFGHIJ") << qint64(0) << QString();
    QTest::newRow("no limit") << u"forty"_s << quint64(VeltoNotFound) << false
                              << QByteArray("0123456789abcdefghijklmnopqrstABCDEFGHIJ") << qint64(0) << QString();
    QTest::newRow("empty file") << u"empty"_s << quint64(10) << false << QByteArray() << qint64(256) << u"unknown file error"_s;
    QTest::newRow("a folder") << u"."_s << quint64(10) << true << QByteArray() << qint64(256) << u"unknown file error"_s;
    QTest::newRow("missing file") << u"missing"_s << quint64(10) << false << QByteArray() << qint64(257)
                                  << u"permission was denied: %1/missing"_s;
}

void ByteArrayTest::fileReading()
{
    QFETCH(QString, name);
    QFETCH(quint64, maximum);
    QFETCH(bool, fromEnd);
    QFETCH(QByteArray, expected);
    QFETCH(qint64, code);
    QFETCH(QString, text);
    QTemporaryDir folder;
    QFile forty(folder.filePath(u"forty"_s)), empty(folder.filePath(u"empty"_s));
    QVERIFY(forty.open(QIODevice::WriteOnly) && forty.write("0123456789abcdefghijklmnopqrstABCDEFGHIJ") == 40);
    QVERIFY(empty.open(QIODevice::WriteOnly));
    forty.close();

    VeltoError error;
    const QByteArray read = velto::dataReadingFromFileAtURL(QUrl::fromLocalFile(folder.filePath(name)), maximum, fromEnd, &error);
    QCOMPARE(read, expected);
    QCOMPARE(read.isNull(), code != 0);
    QCOMPARE(error.code(), code);
    if (code)
        QCOMPARE(error.descriptionForUserVelto(), QString(text).replace(u"%1"_s, QDir::cleanPath(folder.path())));

    VeltoError earlier(u"x"_s, 1);
    (void)velto::dataReadingFromStartOfFileAtURL(QUrl::fromLocalFile(folder.filePath(u"missing"_s)), 1, &earlier);
    QCOMPARE(earlier.code(), 1); // an error already there is kept
}

void ByteArrayTest::searching_data()
{
    QTest::addColumn<QString>("call"); // "data", a C string's search options, or an encoding
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<VeltoRange>("range");
    QTest::addColumn<VeltoRange>("expected");
    const QByteArray data("abcabcXYZ");
    const VeltoRange all{0, 9};
    QTest::newRow("first match") << u"data"_s << data << QByteArray("bc") << all << VeltoRange{1, 2};
    QTest::newRow("first match inside the range") << u"data"_s << data << QByteArray("bc") << VeltoRange{2, 7} << VeltoRange{4, 2};
    QTest::newRow("match ending past the range") << u"data"_s << data << QByteArray("cX") << VeltoRange{0, 6} << NoRange;
    QTest::newRow("empty pattern") << u"data"_s << data << QByteArray() << all << NoRange;
    QTest::newRow("pattern longer than the range") << u"data"_s << data << QByteArray("abca") << VeltoRange{0, 3} << NoRange;
    QTest::newRow("absent") << u"data"_s << data << QByteArray("zz") << all << NoRange;
    QTest::newRow("C string, forwards") << u"cstring"_s << data << QByteArray("abc") << all << VeltoRange{0, 3};
    QTest::newRow("C string, backwards") << u"backwards"_s << data << QByteArray("abc") << all << VeltoRange{3, 3};
    QTest::newRow("C string, anchored") << u"anchored"_s << data << QByteArray("bc") << VeltoRange{1, 8} << VeltoRange{1, 2};
    QTest::newRow("C string, anchored, not at the start") << u"anchored"_s << data << QByteArray("bc") << all << NoRange;
    QTest::newRow("C string, anchored backwards") << u"anchoredBackwards"_s << data << QByteArray("YZ") << all << VeltoRange{7, 2};
    QTest::newRow("C string, empty") << u"cstring"_s << data << QByteArray("") << all << NoRange;
    QTest::newRow("Latin-1 é") << u"ISO-8859-1"_s << QByteArray("caf\xe9 caf\xc3\xa9") << u"é"_s.toUtf8() << VeltoRange{0, 10} << VeltoRange{3, 1};
    QTest::newRow("UTF-8 é") << u"UTF-8"_s << QByteArray("caf\xe9 caf\xc3\xa9") << u"é"_s.toUtf8() << VeltoRange{0, 10} << VeltoRange{8, 2};
    QTest::newRow("€ has no Latin-1 byte: \"?\"") << u"ISO-8859-1"_s << QByteArray("a?b") << u"€"_s.toUtf8() << VeltoRange{0, 3} << VeltoRange{1, 1};
    QTest::newRow("unknown encoding") << u"no-such-encoding"_s << data << QByteArray("a") << all << NoRange;
}

void ByteArrayTest::searching()
{
    QFETCH(QString, call);
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, pattern);
    QFETCH(VeltoRange, range);
    QFETCH(VeltoRange, expected);
    const QMap<QString, VeltoDataSearchOptions> cString{
        {u"cstring"_s, {}}, {u"backwards"_s, VeltoDataSearchOption::Backwards}, {u"anchored"_s, VeltoDataSearchOption::Anchored},
        {u"anchoredBackwards"_s, VeltoDataSearchOption::Anchored | VeltoDataSearchOption::Backwards}};
    VeltoRange found = velto::rangeOfData(data, pattern, range);
    QCOMPARE(velto::rangeOfBytes(data, pattern.constData(), quint64(pattern.size()), range), found);
    if (cString.contains(call))
        found = velto::rangeOfCStringVelto(data, pattern.constData(), cString.value(call), range);
    else if (call != u"data")
        found = velto::rangeOfString(data, QString::fromUtf8(pattern), call.toLatin1(), range);
    QCOMPARE(found, expected);
    VELTO_COMPARE_THROWN((void)velto::rangeOfData(data, pattern, VeltoRange{1, quint64(data.size())}), VeltoRangeException,
                         u"velto::rangeOfBytes: range {1, %1} out of bounds; data length %1"_s.arg(data.size()));
}

void ByteArrayTest::repeatingAndCounting()
{
    QCOMPARE(velto::dataByRepeatingNumberOfTimesVelto("ab", 0), QByteArray(""));
    QVERIFY(!velto::dataByRepeatingNumberOfTimesVelto("ab", 0).isNull());
    QCOMPARE(velto::dataByRepeatingNumberOfTimesVelto("", 5), QByteArray(""));
    QCOMPARE(velto::dataByRepeatingNumberOfTimesVelto("abc", 5), QByteArray("abcabcabcabcabc"));
    QCOMPARE(velto::dataByRepeatingNumberOfTimesVelto(QByteArray(1000, 'q'), 999), QByteArray(999000, 'q'));
    QTest::ignoreMessage(QtInfoMsg, "* failed malloc to repeat 2 bytes * 4611686018427387904 times");
    QVERIFY(velto::dataByRepeatingNumberOfTimesVelto("ab", quint64(1) << 62).isNull());

    // (inequal count, first equal position) of bytes and of 32-bit words
    const auto bytes = [](const QByteArray &a, const QByteArray &b) {
        quint64 first = 0;
        return std::pair{velto::countInequalBytes(a, b, &first), first};
    };
    const auto words = [](const QByteArray &a, const QByteArray &b) {
        quint64 first = 0;
        return std::pair{velto::countInequalInts(a, b, &first), first};
    };
    QCOMPARE(bytes("abcd", "xbxdyy"), std::pair(quint64(2), quint64(1)));
    QCOMPARE(bytes("ab", "cd"), std::pair(quint64(2), VeltoNotFound));
    QCOMPARE(bytes("", "cd"), std::pair(quint64(0), VeltoNotFound));
    QCOMPARE(words("aaaabbbbccccdd", "xaaabbbbxxxx"), std::pair(quint64(2), quint64(1)));
    QCOMPARE(words("abc", "abc"), std::pair(quint64(0), VeltoNotFound));
}

void ByteArrayTest::hex_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << u""_s << QByteArray("");
    QTest::newRow("white space only") << u" \n\t"_s << QByteArray("");
    QTest::newRow("prefix alone") << u"0x"_s << QByteArray("");
    QTest::newRow("odd count: a 0 in front") << u"abc"_s << QByteArray("\x0a\xbc");
    QTest::newRow("one digit") << u"7"_s << QByteArray("\x07");
    QTest::newRow("prefix and white space anywhere") << u" 0 X 0A\n bc\u3000F"_s << QByteArray("\x00\xab\xcf", 3);
    QTest::newRow("invalid digit") << u"0xg1"_s << QByteArray();
    QTest::newRow("second prefix") << u"0x0x12"_s << QByteArray();
    QTest::newRow("non-ASCII digit") << u"1٢"_s << QByteArray();
    QTest::newRow("longer than a slice") << u"0x"_s + u"ab"_s.repeated(5000) << QByteArray(5000, '\xab');
}

void ByteArrayTest::hex()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    const QByteArray fast = velto::dataWithHexStringVelto(text);
    QCOMPARE(fast, bytes);
    QCOMPARE(fast.isNull(), bytes.isNull());
    QCOMPARE(velto::initWithHexStringSlow(text), fast);
    if (bytes.isNull())
        return;
    QCOMPARE(velto::unadornedLowercaseHexString(bytes), QString::fromLatin1(bytes.toHex()));
    QCOMPARE(velto::lowercaseHexString(bytes), u"0x"_s + QString::fromLatin1(bytes.toHex()));
    QByteArray appended("hex:");
    velto::appendLowercaseHexASCIIToData(bytes, appended);
    QCOMPARE(appended, "hex:" + bytes.toHex());
}

// The fast path (a lookup table over slices) and the slow one (character by character) must agree on
// every text, valid or not.
void ByteArrayTest::hexFastAndSlowAgree()
{
    VeltoTestRandom random(20240611);
    const QString alphabet = u"0123456789abcdefABCDEF0000xXg \n\t\u00a0\u2028\u3000é"_s + QChar(0xD800);
    for (int round = 0; round < 3000; ++round) {
        const int length = round % 100 == 0 ? random.bounded(6000, 12000) : random.bounded(12);
        QString text;
        for (int i = 0; i < length; ++i)
            text += alphabet.at(random.bounded(round % 3 == 0 ? 16 : int(alphabet.size())));
        const QByteArray fast = velto::initWithHexStringFast(text);
        const QByteArray slow = velto::initWithHexStringSlow(text);
        QCOMPARE(fast, slow);
        QCOMPARE(fast.isNull(), slow.isNull());
    }
}

void ByteArrayTest::base64_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<quint64>("lineLength");
    QTest::addColumn<QByteArray>("encoded");
    const QByteArray line(76, 'A');
    QTest::newRow("no line feeds") << QByteArray(60, '\0') << quint64(0) << QByteArray(80, 'A');
    QTest::newRow("76: one full line") << QByteArray(57, '\0') << quint64(76) << line + '\n';
    QTest::newRow("76: a full line and more") << QByteArray(60, '\0') << quint64(76) << line + '\n' + "AAAA";
    QTest::newRow("75 rounds up to whole groups") << QByteArray(60, '\0') << quint64(75) << line + '\n' + "AAAA";
    QTest::newRow("1: a group per line") << QByteArray("hello") << quint64(1) << QByteArray("aGVs\nbG8=\n");
    QTest::newRow("padding") << QByteArray("hi") << quint64(0) << QByteArray("aGk=");
}

void ByteArrayTest::base64()
{
    QFETCH(QByteArray, data);
    QFETCH(quint64, lineLength);
    QFETCH(QByteArray, encoded);
    QCOMPARE(velto::base64DataWithLineLength(data, lineLength), encoded);
    QCOMPARE(velto::initWithBase64String(QString::fromLatin1(encoded)), data);
    QCOMPARE(velto::dataWithBase64String(u"aG é=k\n"_s), QByteArray("hi")); // outside the alphabet: skipped
    QCOMPARE(velto::dataWithBase64String(u"a"_s), QByteArray(""));
    QVERIFY(velto::dataWithBase64String(QString()).isNull());
    QVERIFY(!velto::initWithBase64String(QString()).isNull());
}

void ByteArrayTest::base64MatchesQt()
{
    VeltoTestRandom random(64);
    for (int round = 0; round < 200; ++round) {
        const QByteArray data = randomBytes(random, random.bounded(300));
        QCOMPARE(velto::base64String(data), QString::fromLatin1(data.toBase64()));
        const quint64 lineLength = random.bounded(100);
        QCOMPARE(velto::initWithBase64String(QString::fromLatin1(velto::base64DataWithLineLength(data, lineLength))), data);
    }
}

QTEST_GUILESS_MAIN(ByteArrayTest)
#include "bytearraytest.moc"

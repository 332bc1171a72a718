// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ByteArray+VeltoAdditions.h"

#include "ByteArray+VeltoEnsuredGrowth.h"
#include "String+VeltoEncoding.h"
#include "String+VeltoSearching.h"
#include "Url+VeltoAdditions.h"
#include "VTZlibCalls_p.h"
#include "VeltoCharacterSet.h"
#include "VeltoCore.h"
#include "VeltoException.h"
#include "VeltoFileManager.h"
#include "VeltoLocalization.h"
#include "VeltoLogSink.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>

using namespace Qt::StringLiterals;

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};
constexpr quint64 NoLimit = std::numeric_limits<quint64>::max();
constexpr qsizetype ZlibOutputStep = 16384;
constexpr qsizetype HexSliceLength = 4096;

// The two lowercase hex digits of every byte, as ASCII and as UTF-16, so that encoding is one lookup a byte.
template <typename Unit>
constexpr std::array<std::array<Unit, 2>, 256> hexPairs()
{
    constexpr char digits[] = "0123456789abcdef";
    std::array<std::array<Unit, 2>, 256> pairs{};
    for (int byte = 0; byte < 256; ++byte)
        pairs[size_t(byte)] = {Unit(digits[byte >> 4]), Unit(digits[byte & 15])};
    return pairs;
}
constexpr auto AsciiHexPairs = hexPairs<char>();
constexpr auto Utf16HexPairs = hexPairs<char16_t>();

// Writes the hex digit pairs of \a data at \a out.
template <typename Unit>
void writeHexPairs(const QByteArray &data, const std::array<std::array<Unit, 2>, 256> &pairs, Unit *out)
{
    for (const char byte : data) {
        std::memcpy(out, pairs[uchar(byte)].data(), sizeof(Unit) * 2);
        out += 2;
    }
}

// A buffer of \a size bytes left unset: its users overwrite it, or keep only what zlib wrote into it.
// Null when the memory cannot be had.
QByteArray uninitializedBuffer(quint64 size)
{
    if (size > quint64(std::numeric_limits<qsizetype>::max()))
        return {};
    try {
        return QByteArray(qsizetype(size), Qt::Uninitialized);
    } catch (const std::bad_alloc &) {
        return {};
    }
}

// Enlarges \a buffer by \a step bytes; false, with the buffer unchanged, when the memory cannot be had.
bool growBy(QByteArray &buffer, quint64 step)
{
    if (step > quint64(std::numeric_limits<qsizetype>::max()) || !velto::ensureCanIncreaseLengthBy(buffer, qsizetype(step)))
        return false;
    buffer.resize(buffer.size() + qsizetype(step)); // the capacity is there: no second allocation
    return true;
}

// The output cut to what the stream produced, its unused tail given back to the allocator in place.
QByteArray finished(QByteArray &buffer, const z_stream &stream)
{
    buffer.resize(qsizetype(stream.total_out));
    buffer.squeeze();
    return std::move(buffer);
}

// The shared inflater of the gzip calls: a gzip or zlib stream, told apart by its header. Returns what
// was produced and sets \a failed on any error; stops once \a maximum bytes are out (an early stop is not
// a failure).
QByteArray VTDecompressGZip(const QByteArray &data, quint64 maximum, bool *failed)
{
    if ((quint64(data.size()) & 0xFFFFFFFFu) == 0)
        return data;
    const quint64 n = quint64(data.size()) & 0x7FFFFFFFu;
    z_stream stream{};
    if (VTInflateInitDetectingHeader(stream) != Z_OK) {
        *failed = true;
        return {};
    }
    QByteArray buffer = uninitializedBuffer(2 * n);
    const int result = buffer.isNull()
        ? Z_MEM_ERROR
        : VTInflateInto(stream, buffer, data, maximum, [n](QByteArray &output) { return growBy(output, n); });
    const bool stoppedAtMaximum = result == Z_OK && stream.total_out >= maximum;
    const bool ended = inflateEnd(&stream) == Z_OK;
    *failed = !stoppedAtMaximum && (result != Z_STREAM_END || !ended);
    return buffer.isNull() ? QByteArray() : finished(buffer, stream);
}

QString localized(const char *key)
{
    return VeltoLocalizeInBundle(QString::fromUtf8(key), VeltoCoreBundle().get());
}

// Up to \a maximum bytes from the open file \a fd, from its start or its end. The buffer grows with what
// arrives, so a huge \a maximum costs nothing; running out of memory throws std::bad_alloc.
QByteArray readUpTo(int fd, quint64 maximum, bool fromEnd)
{
    if (fromEnd) {
        const off_t size = ::lseek(fd, 0, SEEK_END);
        if (size < 0 || ::lseek(fd, quint64(size) > maximum ? off_t(quint64(size) - maximum) : 0, SEEK_SET) < 0)
            return {};
    }
    QByteArray bytes;
    qsizetype have = 0;
    while (quint64(have) < maximum) {
        const qsizetype chunk = qsizetype(std::min<quint64>(maximum - quint64(have), 1 << 16));
        bytes.resize(have + chunk);
        const ssize_t got = ::read(fd, bytes.data() + have, size_t(chunk));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        have += got;
    }
    bytes.resize(have);
    bytes.squeeze();
    return bytes;
}

void checkRange(const QByteArray &data, VeltoRange range, const char *operation)
{
    if (velto::isRangeInsideVelto(range, quint64(data.size())))
        return;
    throw VeltoException(VeltoRangeException, u"velto::%1: range {%2, %3} out of bounds; data length %4"_s
                                                  .arg(QLatin1StringView(operation))
                                                  .arg(range.location)
                                                  .arg(range.length)
                                                  .arg(data.size()));
}

QByteArrayView slice(const QByteArray &data, VeltoRange range)
{
    return QByteArrayView(data).sliced(qsizetype(range.location), qsizetype(range.length));
}

VeltoRange found(qsizetype at, VeltoRange range, qsizetype length)
{
    return at < 0 ? NoRange : VeltoRange{range.location + quint64(at), quint64(length)};
}

// Hex digit values of every UTF-16 unit: 0-15 for the digits, WhiteSpace for white space (never a
// surrogate), Invalid for everything else.
constexpr quint8 WhiteSpace = 0x10;
constexpr quint8 Invalid = 0xFF;

int asciiHexDigitValue(char16_t unit)
{
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return -1;
}

const std::array<quint8, 65536> &hexDigitTable()
{
    static const std::array<quint8, 65536> table = [] {
        std::array<quint8, 65536> values{};
        const VeltoCharacterSet &space = VeltoCharacterSet::whitespaceAndNewlineCharacterSet();
        for (char32_t unit = 0; unit < values.size(); ++unit) {
            const int digit = asciiHexDigitValue(char16_t(unit));
            values[unit] = digit >= 0 ? quint8(digit) : space.contains(unit) ? WhiteSpace : Invalid;
        }
        return values;
    }();
    return table;
}

bool isHexPrefix(char16_t zero, char16_t x)
{
    return zero == u'0' && (x == u'x' || x == u'X');
}

QString hexString(const QByteArray &data, QLatin1StringView prefix)
{
    QString text(prefix.size() + 2 * data.size(), Qt::Uninitialized);
    char16_t *out = reinterpret_cast<char16_t *>(text.data());
    for (char c : prefix)
        *out++ = char16_t(c);
    writeHexPairs(data, Utf16HexPairs, out);
    return text;
}

} // namespace

void VeltoSetFileReadError(const QUrl &url, VeltoError *error)
{
    if (!error || !error->isNull())
        return;
    if (VeltoFileManager::isReadableItemAtURL(url)) {
        *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadUnknown,
                                             localized("_unknown file error"));
    } else {
        *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadNoPermission,
                                             u"%1: %2"_s.arg(localized("_permission was denied"),
                                                             velto::filePathForUserDisplay(url)));
    }
}

namespace velto {

QByteArray dataByCompressingZlib(const QByteArray &data)
{
    if (data.isEmpty())
        return data;
    z_stream stream{};
    if (VTDeflateInitZlib(stream) != Z_OK)
        return {};
    QByteArray buffer = uninitializedBuffer(ZlibOutputStep);
    const bool complete = !buffer.isNull()
        && VTDeflateInto(stream, buffer, data, true, [](QByteArray &output) { return growBy(output, ZlibOutputStep); });
    deflateEnd(&stream);
    return complete ? finished(buffer, stream) : QByteArray();
}

QByteArray dataByDecompressingZlib(const QByteArray &data)
{
    if (data.isEmpty())
        return data;
    const quint64 n = quint64(data.size());
    z_stream stream{};
    if (VTInflateInitZlib(stream) != Z_OK)
        return {};
    QByteArray buffer = uninitializedBuffer(n + n / 2);
    const int result = buffer.isNull()
        ? Z_MEM_ERROR
        : VTInflateInto(stream, buffer, data, NoLimit, [n](QByteArray &output) { return growBy(output, n / 2); });
    const bool ended = inflateEnd(&stream) == Z_OK;
    return result == Z_STREAM_END && ended ? finished(buffer, stream) : QByteArray();
}

QByteArray dataByCompressingGZip(const QByteArray &data)
{
    const quint64 n = quint64(data.size());
    if ((n & 0xFFFFFFFFu) == 0)
        return data;
    z_stream stream{};
    if (VTDeflateInitGZip(stream) != Z_OK)
        return {};
    const quint64 step = n > 8195 ? n / 4 : 2048;
    QByteArray buffer = uninitializedBuffer(std::max<quint64>(6 * (n / 10), 1024));
    const bool complete = !buffer.isNull()
        && VTDeflateInto(stream, buffer, data, true, [step](QByteArray &output) { return growBy(output, step); });
    deflateEnd(&stream);
    return complete ? finished(buffer, stream) : QByteArray();
}

QByteArray dataByDecompressingGZip(const QByteArray &data)
{
    bool failed = false;
    QByteArray result = VTDecompressGZip(data, VeltoNotFound, &failed);
    return failed ? QByteArray() : result;
}

QByteArray dataByDecompressingGZipWithMaximumLength(const QByteArray &data, quint64 maximumLength)
{
    bool failed = false;
    return VTDecompressGZip(data, maximumLength, &failed);
}

QByteArray dataReadingFromFileAtURL(const QUrl &url, quint64 maximumLength, bool fromEnd, VeltoError *error)
{
    const int fd = url.isLocalFile() ? ::open(QFile::encodeName(url.toLocalFile()).constData(), O_RDONLY | O_CLOEXEC) : -1;
    if (fd < 0) {
        VeltoSetFileReadError(url, error);
        return {};
    }
    QByteArray bytes;
    try {
        bytes = readUpTo(fd, maximumLength, fromEnd);
    } catch (const std::exception &exception) {
        ::close(fd);
        if (error) {
            *error = VeltoError::errorWithDomainException(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadUnknown,
                                                          VeltoException::fromException(exception));
        }
        return {};
    }
    ::close(fd);
    if (bytes.isEmpty()) {
        VeltoSetFileReadError(url, error);
        return {};
    }
    return bytes;
}

QByteArray dataReadingFromStartOfFileAtURL(const QUrl &url, quint64 maximumLength, VeltoError *error)
{
    return dataReadingFromFileAtURL(url, maximumLength, false, error);
}

QByteArray dataReadingFromEndOfFileAtURL(const QUrl &url, quint64 maximumLength, VeltoError *error)
{
    return dataReadingFromFileAtURL(url, maximumLength, true, error);
}

QByteArray dataByRepeatingNumberOfTimesVelto(const QByteArray &data, quint64 count)
{
    if (count == 0 || data.isEmpty())
        return QByteArray("");
    if (count == 1)
        return data;
    const quint64 length = quint64(data.size());
    QByteArray repeated;
    if (length <= quint64(std::numeric_limits<qsizetype>::max()) / count)
        repeated = uninitializedBuffer(length * count);
    if (repeated.isNull()) {
        VeltoLogSink::write(u"* failed malloc to repeat %1 bytes * %2 times"_s.arg(length).arg(count));
        return {};
    }
    // One copy, then the filled part doubled until the buffer is full.
    std::memcpy(repeated.data(), data.constData(), size_t(length));
    for (qsizetype filled = qsizetype(length); filled < repeated.size(); filled *= 2)
        std::memcpy(repeated.data() + filled, repeated.constData(), size_t(std::min(filled, repeated.size() - filled)));
    return repeated;
}

VeltoRange rangeOfData(const QByteArray &data, QByteArrayView pattern)
{
    return rangeOfBytes(data, pattern.data(), quint64(pattern.size()), VeltoRange{0, quint64(data.size())});
}

VeltoRange rangeOfData(const QByteArray &data, QByteArrayView pattern, VeltoRange range)
{
    return rangeOfBytes(data, pattern.data(), quint64(pattern.size()), range);
}

VeltoRange rangeOfBytes(const QByteArray &data, const char *bytes, quint64 length)
{
    return rangeOfBytes(data, bytes, length, VeltoRange{0, quint64(data.size())});
}

VeltoRange rangeOfBytes(const QByteArray &data, const char *bytes, quint64 length, VeltoRange range)
{
    checkRange(data, range, "rangeOfBytes");
    if (length == 0 || length > range.length)
        return NoRange;
    const QByteArrayView pattern(bytes, qsizetype(length));
    return found(slice(data, range).indexOf(pattern), range, pattern.size());
}

VeltoRange rangeOfString(const QByteArray &data, const QString &string, QByteArrayView encoding, VeltoRange range)
{
    const QByteArray bytes = lossyDataUsingEncodingVelto(string, encoding);
    return rangeOfBytes(data, bytes.constData(), quint64(bytes.size()), range);
}

VeltoRange rangeOfCStringVelto(const QByteArray &data, const char *cString, VeltoDataSearchOptions options,
                               VeltoRange range)
{
    checkRange(data, range, "rangeOfCStringVelto");
    const QByteArrayView pattern(cString ? cString : "");
    const QByteArrayView within = slice(data, range);
    if (pattern.isEmpty() || pattern.size() > within.size())
        return NoRange;
    const bool backwards = options.testFlag(VeltoDataSearchOption::Backwards);
    qsizetype at = -1;
    if (options.testFlag(VeltoDataSearchOption::Anchored)) {
        if (backwards ? within.endsWith(pattern) : within.startsWith(pattern))
            at = backwards ? within.size() - pattern.size() : 0;
    } else {
        at = backwards ? within.lastIndexOf(pattern) : within.indexOf(pattern);
    }
    return found(at, range, pattern.size());
}

quint64 countInequalBytes(const QByteArray &data, const QByteArray &other, quint64 *indexOfFirstEqual)
{
    const qsizetype common = std::min(data.size(), other.size());
    quint64 inequal = 0;
    quint64 firstEqual = VeltoNotFound;
    for (qsizetype i = 0; i < common; ++i) {
        if (data[i] != other[i])
            ++inequal;
        else if (firstEqual == VeltoNotFound)
            firstEqual = quint64(i);
    }
    if (indexOfFirstEqual)
        *indexOfFirstEqual = firstEqual;
    return inequal;
}

quint64 countInequalInts(const QByteArray &data, const QByteArray &other, quint64 *indexOfFirstEqual)
{
    const qsizetype words = std::min(data.size(), other.size()) / 4;
    quint64 inequal = 0;
    quint64 firstEqual = VeltoNotFound;
    for (qsizetype i = 0; i < words; ++i) {
        if (std::memcmp(data.constData() + 4 * i, other.constData() + 4 * i, 4) != 0)
            ++inequal;
        else if (firstEqual == VeltoNotFound)
            firstEqual = quint64(i);
    }
    if (indexOfFirstEqual)
        *indexOfFirstEqual = firstEqual;
    return inequal;
}

QByteArray initWithHexStringFast(const QString &text)
{
    const std::array<quint8, 65536> &table = hexDigitTable();
    const auto *units = reinterpret_cast<const char16_t *>(text.utf16());
    const qsizetype size = text.size();

    // First pass: where the digits start (after the prefix) and how many characters are not white space.
    qsizetype start = 0;
    qsizetype significant = 0;
    qsizetype firstTwo[2] = {-1, -1};
    for (qsizetype i = 0; i < size; ++i) {
        if (table[units[i]] == WhiteSpace)
            continue;
        if (significant < 2)
            firstTwo[significant] = i;
        ++significant;
    }
    if (significant >= 2 && isHexPrefix(units[firstTwo[0]], units[firstTwo[1]])) {
        start = firstTwo[1] + 1;
        significant -= 2;
    }

    // Second pass, slice by slice: an odd count of digits reads as if a "0" stood in front.
    QByteArray bytes((significant + 1) / 2, Qt::Uninitialized);
    char *out = bytes.data();
    bool haveHigh = significant % 2 == 1;
    quint8 high = 0;
    for (qsizetype sliceStart = start; sliceStart < size; sliceStart += HexSliceLength) {
        const qsizetype sliceEnd = std::min(size, sliceStart + HexSliceLength);
        for (qsizetype i = sliceStart; i < sliceEnd; ++i) {
            const quint8 value = table[units[i]];
            if (value == WhiteSpace)
                continue;
            if (value == Invalid)
                return {};
            if (haveHigh)
                *out++ = char(high << 4 | value);
            high = value;
            haveHigh = !haveHigh;
        }
    }
    return bytes;
}

QByteArray dataWithHexStringVelto(const QString &text)
{
    return initWithHexStringFast(text);
}

QByteArray initWithHexStringSlow(const QString &text)
{
    const VeltoCharacterSet &space = VeltoCharacterSet::whitespaceAndNewlineCharacterSet();
    QString digits;
    for (const QChar c : text) {
        if (!space.contains(c.unicode()))
            digits += c;
    }
    if (digits.size() >= 2 && isHexPrefix(digits[0].unicode(), digits[1].unicode()))
        digits.remove(0, 2);
    if (digits.size() % 2 == 1)
        digits.prepend(u'0');
    QByteArray bytes("");
    for (qsizetype i = 0; i < digits.size(); i += 2) {
        const int high = asciiHexDigitValue(digits[i].unicode());
        const int low = asciiHexDigitValue(digits[i + 1].unicode());
        if (high < 0 || low < 0)
            return {};
        bytes.append(char(high * 16 + low));
    }
    return bytes;
}

QString lowercaseHexString(const QByteArray &data)
{
    return hexString(data, "0x"_L1);
}

QString unadornedLowercaseHexString(const QByteArray &data)
{
    return hexString(data, {});
}

void appendLowercaseHexASCIIToData(const QByteArray &data, QByteArray &output)
{
    const QByteArray source = data; // shared, so appending a buffer to itself reads the bytes as they were
    const qsizetype start = output.size();
    output.resize(start + 2 * source.size());
    writeHexPairs(source, AsciiHexPairs, output.data() + start);
}

QByteArray base64DataWithLineLength(const QByteArray &data, quint64 lineLength)
{
    const QByteArray plain = data.toBase64();
    if (lineLength == 0)
        return plain;
    // Whole groups of four per line: a line ends after the first group that reaches the length. A line
    // longer than the text is never full.
    const quint64 groups = lineLength / 4 + (lineLength % 4 != 0);
    const qsizetype perLine = groups > quint64(plain.size()) ? plain.size() + 1 : qsizetype(groups * 4);
    QByteArray lines;
    lines.reserve(plain.size() + plain.size() / perLine + 1);
    for (qsizetype at = 0; at < plain.size(); at += perLine) {
        const QByteArrayView line = QByteArrayView(plain).sliced(at, std::min(perLine, plain.size() - at));
        lines.append(line);
        if (line.size() == perLine)
            lines.append('\n');
    }
    return lines;
}

QString base64String(const QByteArray &data)
{
    return QString::fromLatin1(data.toBase64());
}

QByteArray initWithBase64String(const QString &text)
{
    // Qt's decoder skips every character outside the alphabet ("=" included); characters outside
    // Latin-1 become "?", which it skips too.
    const QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
    return bytes.isNull() ? QByteArray("") : bytes;
}

QByteArray dataWithBase64String(const QString &text)
{
    return text.isNull() ? QByteArray() : initWithBase64String(text);
}

} // namespace velto

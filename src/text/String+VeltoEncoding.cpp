// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoEncoding.h"

#include "String+VeltoSearching.h"

#include <QUuid>

#include <unicode/ucnv.h>

#include <cstring>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct ConverterCloser
{
    void operator()(UConverter *converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// ucnv_open() would open the process's default converter for an empty name; that is never what is meant.
Converter openConverter(QByteArrayView encoding)
{
    if (encoding.isEmpty())
        return nullptr;
    const QByteArray name = encoding.toByteArray(); // zero-terminated
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.constData(), &status));
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

bool fitsInt32(quint64 length) noexcept
{
    return length <= quint64(std::numeric_limits<int32_t>::max());
}

// Decodes with the converter's current to-Unicode callback; null on any conversion error.
QString decode(UConverter *converter, const char *bytes, quint64 length)
{
    if (!fitsInt32(length))
        return {};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t needed = ucnv_toUChars(converter, nullptr, 0, bytes, int32_t(length), &status);
    if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR)
        return {};
    if (needed == 0)
        return u""_s;
    QString result(needed, Qt::Uninitialized);
    status = U_ZERO_ERROR;
    ucnv_toUChars(converter, reinterpret_cast<UChar *>(result.data()), needed, bytes, int32_t(length), &status);
    return U_FAILURE(status) ? QString() : result;
}

// Encodes with the converter's current from-Unicode callback; false on any conversion error.
bool encode(UConverter *converter, QStringView string, QByteArray *bytes)
{
    if (!fitsInt32(quint64(string.size())))
        return false;
    const auto *units = reinterpret_cast<const UChar *>(string.utf16());
    UErrorCode status = U_ZERO_ERROR;
    const int32_t needed = ucnv_fromUChars(converter, nullptr, 0, units, int32_t(string.size()), &status);
    if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR)
        return false;
    bytes->resize(needed);
    status = U_ZERO_ERROR;
    ucnv_fromUChars(converter, bytes->data(), needed, units, int32_t(string.size()), &status);
    return U_SUCCESS(status);
}

void stopOnInvalidInput(UConverter *converter)
{
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
}

// Encodes with every character the encoding cannot hold written as "?"; false on any other failure.
bool encodeLossy(UConverter *converter, QStringView string, QByteArray *bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr, &status);
    ucnv_setSubstString(converter, u"?", 1, &status);
    return U_SUCCESS(status) && encode(converter, string, bytes);
}

} // namespace

QString stringWithFourCharCode(quint32 code)
{
    QString result(4, Qt::Uninitialized);
    for (int i = 0; i < 4; ++i)
        result[i] = QChar(char16_t((code >> (24 - 8 * i)) & 0xFF));
    return result;
}

quint32 fourCharCodeValue(QStringView string)
{
    if (string.size() != 4)
        return 0;
    return quint32(string[0].unicode()) << 24 | quint32(string[1].unicode()) << 16
        | quint32(string[2].unicode()) << 8 | quint32(string[3].unicode());
}

bool getPascalString(QStringView string, unsigned char *buffer, quint64 length)
{
    if (!buffer || length == 0)
        return false;
    buffer[0] = 0;
    const Converter converter = openConverter("macintosh");
    if (!converter)
        return false;
    stopOnInvalidInput(converter.get());
    QByteArray bytes;
    if (!encode(converter.get(), string, &bytes) || bytes.size() > 255 || quint64(bytes.size()) > length - 1)
        return false;
    buffer[0] = static_cast<unsigned char>(bytes.size());
    std::memcpy(buffer + 1, bytes.constData(), size_t(bytes.size()));
    return true;
}

bool getPascalString(QStringView string, unsigned char (&buffer)[256])
{
    return getPascalString(string, buffer, sizeof buffer);
}

QString stringWithData(QByteArrayView data, QByteArrayView encoding)
{
    return stringWithBytes(data.data(), quint64(data.size()), encoding);
}

QString stringWithBytes(const char *bytes, quint64 length, QByteArrayView encoding)
{
    if (!bytes && length != 0)
        return {};
    const Converter converter = openConverter(encoding);
    if (!converter)
        return {};
    if (length == 0)
        return u""_s;
    stopOnInvalidInput(converter.get());
    return decode(converter.get(), bytes, length);
}

QString stringByLossyConversionToEncoding(const QString &string, QByteArrayView encoding)
{
    const Converter converter = openConverter(encoding);
    if (!converter)
        return {};
    // Find out first whether anything is lost, so that a string that converts cleanly is shared, not copied.
    stopOnInvalidInput(converter.get());
    QByteArray bytes;
    if (encode(converter.get(), string, &bytes))
        return string;

    if (!encodeLossy(converter.get(), string, &bytes))
        return {};
    return decode(converter.get(), bytes.constData(), quint64(bytes.size()));
}

QByteArray lossyDataUsingEncodingVelto(QStringView string, QByteArrayView encoding)
{
    const Converter converter = openConverter(encoding);
    QByteArray bytes("");
    if (!converter || !encodeLossy(converter.get(), string, &bytes))
        return {};
    return bytes;
}

const char16_t *characterBufferVelto(const QString &string)
{
    return reinterpret_cast<const char16_t *>(string.utf16());
}

QString uuidString()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

bool containsStringVelto(QStringView string, QStringView target, VeltoStringCompareOptions options)
{
    return target.isEmpty() || rangeOfStringVelto(string, target, options).location != VeltoNotFound;
}

bool containsStringVelto(QStringView string, QStringView target)
{
    return containsStringVelto(string, target, {});
}

} // namespace velto

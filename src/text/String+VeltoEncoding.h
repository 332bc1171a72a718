// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoEncoding.h
 * \brief Strings to and from bytes in legacy and Unicode encodings, four-character codes, length-prefixed
 * (Pascal) strings in Mac Roman, the raw UTF-16 buffer, new UUID strings, and substring containment.
 *
 * \code
 * const QString name = velto::stringWithData(bytes, "ISO-8859-1");
 * if (name.isNull()) ...                                  // unknown encoding or bytes not valid in it
 * unsigned char pascal[256];
 * if (velto::getPascalString(title, pascal)) writeResource(pascal, pascal[0] + 1);
 * \endcode
 *
 * Encodings are named by their IANA or ICU names ("UTF-8", "UTF-16LE", "ISO-8859-1", "windows-1252",
 * "macintosh" for Mac Roman, "Shift_JIS"); names are matched as ICU matches them (ignoring case, "-"
 * and "_"). Conversion is done by ICU's converters. Where a function returns a QString, an unknown or
 * empty encoding name, or bytes that are not valid in the encoding (a truncated sequence included), give
 * a null QString; valid empty input gives an empty, non-null one.
 */

#include "VeltoStringCompareOptions.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace velto {

/**
 * stringWithFourCharCode: the four bytes of \a code, most significant first, each as the character of
 * the same value (as "%c%c%c%c" writes them, read as Latin-1): 0x54455854 gives "TEXT". Zero bytes are
 * kept as U+0000, so the result always has four units.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringWithFourCharCode(quint32 code);

/**
 * fourCharCodeValue: 0 unless \a string is exactly four units long; otherwise the first unit shifted
 * left by 24, the second by 16, the third by 8 and the fourth, combined with OR in 32 bits. Units are not
 * masked to 8 bits, so only strings of Latin-1 characters round-trip with stringWithFourCharCode().
 */
[[nodiscard]] VELTOCORE_EXPORT quint32 fourCharCodeValue(QStringView string);

/**
 * getPascalString: writes \a string to \a buffer as a length-prefixed byte string in Mac Roman (ICU's
 * "macintosh" converter) and returns true: buffer[0] holds the byte count n and buffer[1..n] the bytes;
 * the rest of the buffer is not touched. Returns false when a character has no Mac Roman byte (an
 * unpaired surrogate included), when n would exceed 255 or \a length - 1, or when \a buffer is null or
 * \a length is 0; on failure only buffer[0] is written, with 0, so the buffer reads as an empty string.
 */
[[nodiscard]] VELTOCORE_EXPORT bool getPascalString(QStringView string, unsigned char *buffer, quint64 length);

/// getPascalString into a 256-byte buffer, room for the longest Pascal string.
[[nodiscard]] VELTOCORE_EXPORT bool getPascalString(QStringView string, unsigned char (&buffer)[256]);

/**
 * stringWithData: \a data decoded from \a encoding. A byte-order mark is decoded like any other
 * character unless the encoding is one that reads it ("UTF-16", "UTF-32"). Null for an unknown encoding
 * or bytes not valid in it.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringWithData(QByteArrayView data, QByteArrayView encoding);

/**
 * stringWithBytes: the \a length bytes at \a bytes decoded from \a encoding, as stringWithData(). A null
 * \a bytes with a \a length of 0 gives the empty string; with any other length, a null string.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringWithBytes(const char *bytes, quint64 length, QByteArrayView encoding);

/**
 * stringByLossyConversionToEncoding: \a string as it reads after conversion to \a encoding and back:
 * each character the encoding cannot hold (an unpaired surrogate included) becomes one "?" ("naïve
 * 日本" in ASCII gives "na?ve ??"). \a string itself when it converts without loss; null for an unknown
 * encoding.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByLossyConversionToEncoding(const QString &string,
                                                                         QByteArrayView encoding);

/**
 * lossyDataUsingEncodingVelto: the bytes of \a string in \a encoding, each character the encoding cannot
 * hold (an unpaired surrogate included) written as "?"; empty (not null) for an empty string. Null for an
 * unknown encoding or a string of 2^31 units or more (ICU counts in 32 bits).
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray lossyDataUsingEncodingVelto(QStringView string, QByteArrayView encoding);

/**
 * characterBufferVelto: the UTF-16 units of \a string, zero-terminated, without a copy (as
 * QString::utf16()). Never null; valid until \a string is changed or destroyed, so temporaries are refused.
 */
[[nodiscard]] VELTOCORE_EXPORT const char16_t *characterBufferVelto(const QString &string);
const char16_t *characterBufferVelto(QString &&string) = delete;

/// uuidString: a new random UUID in upper case without braces ("0F8FAD5B-D9CB-469F-A165-70867728950E").
[[nodiscard]] VELTOCORE_EXPORT QString uuidString();

/**
 * containsStringVelto: true when \a target is empty, otherwise whether it occurs in \a string, compared
 * with \a options (see rangeOfStringVelto(); Anchored asks for it at the start, or end with Backwards).
 */
[[nodiscard]] VELTOCORE_EXPORT bool containsStringVelto(QStringView string, QStringView target,
                                                        VeltoStringCompareOptions options);
/// containsStringVelto with literal, case-sensitive comparison.
[[nodiscard]] VELTOCORE_EXPORT bool containsStringVelto(QStringView string, QStringView target);

} // namespace velto

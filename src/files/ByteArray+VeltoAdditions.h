// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file ByteArray+VeltoAdditions.h
 * \brief Additions to QByteArray: zlib and gzip compression, bounded reads from the start or the end of
 * a file, byte searches and comparisons, repetition, and hex and base64 text forms.
 *
 * \code
 * const QByteArray packed = velto::dataByCompressingGZip(document);
 * const QByteArray again = velto::dataByDecompressingGZip(packed);       // null when packed is damaged
 * const QByteArray head = velto::dataByDecompressingGZipWithMaximumLength(packed, 512);   // a preview
 * VeltoError error;
 * const QByteArray tail = velto::dataReadingFromEndOfFileAtURL(logURL, 4096, &error);
 * const QByteArray key = velto::dataWithHexStringVelto(u"0x0a bc"_s);  // the bytes 0a bc
 * \endcode
 *
 * A "nothing" result is a null QByteArray (isNull()); an empty result is empty and not null. Where a
 * call "returns the receiver", the result shares the receiver's data (no copy: the same constData()).
 * Compression needs no error object: it fails only when zlib cannot start or memory runs out. All
 * functions may be called from any thread.
 */

#include "VeltoError.h"
#include "VeltoRange.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QFlags>
#include <QString>
#include <QUrl>

/// How rangeOfCStringVelto() searches (the values are fixed).
enum class VeltoDataSearchOption : unsigned {
    Backwards = 1, ///< the match nearest the end of the range wins
    Anchored = 2,  ///< the match must start at the range's start (or end at its end with Backwards)
};
Q_DECLARE_FLAGS(VeltoDataSearchOptions, VeltoDataSearchOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoDataSearchOptions)

/**
 * VeltoSetFileReadError: fills \a error for a file at \a url that could not be read, unless \a error is
 * null or already holds an error. When the file's path is readable (VeltoFileManager::isReadableItemAtURL())
 * the error is NSCocoaErrorDomain 256, "unknown file error"; otherwise NSCocoaErrorDomain 257,
 * "permission was denied: <display path>" (a missing file included).
 */
VELTOCORE_EXPORT void VeltoSetFileReadError(const QUrl &url, VeltoError *error);

namespace velto {

/** \name Compression
 * Empty input returns the receiver itself (for the gzip calls, input whose length has its low 32 bits
 * zero counts as empty). Any other failure gives nothing. */
///@{
/// dataByCompressingZlib: \a data in the zlib format at the default level; nothing when zlib cannot start.
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByCompressingZlib(const QByteArray &data);
/// dataByDecompressingZlib: the zlib stream \a data decompressed; nothing when it is damaged, truncated or not zlib (gzip included).
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByDecompressingZlib(const QByteArray &data);
/// dataByCompressingGZip: \a data in the gzip format at the default level; nothing when zlib cannot start or memory runs out.
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByCompressingGZip(const QByteArray &data);
/**
 * dataByDecompressingGZip: the gzip or zlib stream \a data (told apart by its header) decompressed;
 * nothing on any error (damaged, truncated or unknown data). Bytes after the end of the first stream are
 * ignored.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByDecompressingGZip(const QByteArray &data);
/**
 * dataByDecompressingGZipWithMaximumLength: as dataByDecompressingGZip(), but stops as soon as at least
 * \a maximumLength bytes are out (the result may be longer by up to one buffer step: twice the input
 * length at first, then the input length), and returns what was produced even after an error: a
 * truncated stream gives the bytes before the damage. VeltoNotFound means no limit.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByDecompressingGZipWithMaximumLength(const QByteArray &data,
                                                                                    quint64 maximumLength);
///@}

/** \name Reading part of a file */
///@{
/**
 * dataReadingFromFileAtURL: up to \a maximumLength bytes of the file at \a url, from its start, or with
 * \a fromEnd its last bytes (all of it when it is shorter). Nothing when the file cannot be opened or
 * nothing could be read (an empty file included), with \a error filled by VeltoSetFileReadError(); when
 * memory for the bytes cannot be had, NSCocoaErrorDomain 256 with the exception's text.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataReadingFromFileAtURL(const QUrl &url, quint64 maximumLength, bool fromEnd,
                                                                   VeltoError *error = nullptr);
/// dataReadingFromStartOfFileAtURL: dataReadingFromFileAtURL() from the start.
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataReadingFromStartOfFileAtURL(const QUrl &url, quint64 maximumLength,
                                                                          VeltoError *error = nullptr);
/// dataReadingFromEndOfFileAtURL: dataReadingFromFileAtURL() from the end.
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataReadingFromEndOfFileAtURL(const QUrl &url, quint64 maximumLength,
                                                                        VeltoError *error = nullptr);
///@}

/** \name Repeating, searching and comparing bytes
 * A range that does not lie inside the receiver throws VeltoRangeException. */
///@{
/**
 * dataByRepeatingNumberOfTimesVelto: \a count copies of \a data one after the other; empty data for a
 * count of 0 or empty \a data; \a data itself for a count of 1. When the memory cannot be had (or the
 * length would not fit), logs "* failed malloc to repeat <length> bytes * <count> times" and gives nothing.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataByRepeatingNumberOfTimesVelto(const QByteArray &data, quint64 count);
/// rangeOfData: the first occurrence of \a pattern in \a data; location VeltoNotFound when \a pattern is empty, longer or absent.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfData(const QByteArray &data, QByteArrayView pattern);
/// rangeOfData: the first occurrence of \a pattern inside \a range of \a data, as the form above.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfData(const QByteArray &data, QByteArrayView pattern, VeltoRange range);
/// rangeOfBytes: rangeOfData() with the \a length bytes at \a bytes.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfBytes(const QByteArray &data, const char *bytes, quint64 length);
/// rangeOfBytes: rangeOfData() with the \a length bytes at \a bytes, inside \a range.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfBytes(const QByteArray &data, const char *bytes, quint64 length,
                                                       VeltoRange range);
/**
 * rangeOfString: \a string converted to the encoding named \a encoding (see String+VeltoEncoding.h;
 * characters it cannot hold become "?") and searched for inside \a range. Not found when the conversion
 * gives no bytes (an empty string or an unknown encoding).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfString(const QByteArray &data, const QString &string,
                                                        QByteArrayView encoding, VeltoRange range);
/**
 * rangeOfCStringVelto: the bytes of the zero-terminated \a cString (without the terminator) searched for
 * inside \a range with \a options. Not found for a null or empty string.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfCStringVelto(const QByteArray &data, const char *cString,
                                                              VeltoDataSearchOptions options, VeltoRange range);
/**
 * countInequalBytes: over the length \a data and \a other have in common, the number of positions where
 * their bytes differ. \a indexOfFirstEqual (when given) gets the first position where they are equal, or
 * VeltoNotFound when there is none (or nothing in common).
 */
[[nodiscard]] VELTOCORE_EXPORT quint64 countInequalBytes(const QByteArray &data, const QByteArray &other,
                                                         quint64 *indexOfFirstEqual = nullptr);
/**
 * countInequalInts: countInequalBytes() over whole 32-bit words (positions count words); fewer than 4
 * bytes in common give 0 and VeltoNotFound.
 */
[[nodiscard]] VELTOCORE_EXPORT quint64 countInequalInts(const QByteArray &data, const QByteArray &other,
                                                        quint64 *indexOfFirstEqual = nullptr);
///@}

/** \name Hex
 * Hex text is read after all white space (VeltoCharacterSet::whitespaceAndNewlineCharacterSet()) is
 * removed: an optional prefix "0x" or "0X" is skipped (the prefix alone gives empty data), an odd number
 * of digits reads as if a "0" stood in front ("abc" is 0a bc), digits are 0-9, a-f and A-F, and any
 * other character gives nothing. Empty text gives empty data. */
///@{
/// initWithHexStringFast: the bytes \a text spells, read in slices of 4,096 characters with a lookup table.
[[nodiscard]] VELTOCORE_EXPORT QByteArray initWithHexStringFast(const QString &text);
/// dataWithHexStringVelto: initWithHexStringFast().
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataWithHexStringVelto(const QString &text);
/// initWithHexStringSlow: the same conversion character by character; it always agrees with the fast one.
[[nodiscard]] VELTOCORE_EXPORT QByteArray initWithHexStringSlow(const QString &text);
/// lowercaseHexString: "0x" followed by two lowercase hex digits per byte ("0x" for empty data).
[[nodiscard]] VELTOCORE_EXPORT QString lowercaseHexString(const QByteArray &data);
/// unadornedLowercaseHexString: two lowercase hex digits per byte, no prefix.
[[nodiscard]] VELTOCORE_EXPORT QString unadornedLowercaseHexString(const QByteArray &data);
/// appendLowercaseHexASCIIToData: appends two lowercase ASCII hex digits per byte of \a data to \a output.
VELTOCORE_EXPORT void appendLowercaseHexASCIIToData(const QByteArray &data, QByteArray &output);
///@}

/** \name Base64 (alphabet A-Z a-z 0-9 + /, "=" padding) */
///@{
/**
 * base64DataWithLineLength: \a data in base64; after each 4-character group that brings the line to at
 * least \a lineLength characters a line feed follows (so 76 breaks after every 76 characters, the last
 * full line included); 0 means no line feeds.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray base64DataWithLineLength(const QByteArray &data, quint64 lineLength);
/// base64String: base64DataWithLineLength() with no line feeds, as text.
[[nodiscard]] VELTOCORE_EXPORT QString base64String(const QByteArray &data);
/**
 * initWithBase64String: the bytes base64 \a text stands for; characters outside the alphabet ("=",
 * white space, anything not ASCII) are skipped, and a last group of 2 or 3 characters gives 1 or 2
 * bytes. Empty (or null) text gives empty data.
 */
[[nodiscard]] VELTOCORE_EXPORT QByteArray initWithBase64String(const QString &text);
/// dataWithBase64String: initWithBase64String(), but nothing for a null \a text.
[[nodiscard]] VELTOCORE_EXPORT QByteArray dataWithBase64String(const QString &text);
///@}

} // namespace velto

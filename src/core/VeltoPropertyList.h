// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoPropertyList.h
 * \brief The library's one property-list codec: XML and binary ("bplist00") documents read into and
 * written from QVariant trees, with the format of a document detected from its bytes.
 *
 * \code
 * VeltoError error;
 * const QByteArray bytes = VeltoPropertyList::write(QVariantMap{{u"flags"_s, 1}}, VeltoPropertyListBinaryFormat, &error);
 * VeltoPropertyListFormat format;
 * const std::optional<QVariant> back = VeltoPropertyList::read(bytes, &format, &error);   // format is binary
 * \endcode
 *
 * Property-list values are: QVariantMap (also QVariantHash), QVariantList (also QStringList), QString,
 * QByteArray (data), bool, whole numbers from the signed 64-bit minimum up to 2^64 − 1, double (also
 * float) and valid QDateTime. Documents are outside data: a malformed, hostile or oversized document
 * costs time and memory bounded by its size and the limits below, and gives a VeltoError, never a crash.
 * Reading gives whole numbers as qint64 (quint64 above its range), reals as double, dates in UTC to the
 * millisecond.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QVariant>

#include <optional>

/// The two document formats; the numbers are the ones stored elsewhere to name them.
enum VeltoPropertyListFormat : int {
    VeltoPropertyListXMLFormat = 100,    ///< XML with the property-list vocabulary, UTF-8
    VeltoPropertyListBinaryFormat = 200, ///< the binary format, version "bplist00"
};

/**
 * \brief VeltoPropertyList: reads and writes property-list documents (class operations only).
 *
 * Failures are VeltoErrors in the general domain (VeltoCocoaErrorDomain): a document that cannot be read
 * is code 3840 (VeltoCocoaErrorPropertyListReadCorrupt), a value that cannot be written is code 3852
 * (VeltoCocoaErrorPropertyListWriteInvalid); the description says what was wrong and where.
 */
class VELTOCORE_EXPORT VeltoPropertyList
{
public:
    VeltoPropertyList() = delete;

    /// Deepest nesting of arrays and dictionaries, in both formats, when reading and when writing.
    static constexpr int MaximumDepth = 256;
    /// Most values one document may hold, or one value may hold when written, counting every value
    /// each time it is reached.
    static constexpr qint64 MaximumValueCount = 1 << 20;
    /**
     * A binary document may reference one object from many places, so a few hundred bytes could stand
     * for a million values, and everyone who converts or prints them pays for a million. So a binary
     * document may stand for at most as many values as it has bytes (never more for a document that
     * shares only strings, numbers, data and dates, as this library writes them), or this many,
     * whichever is more: a tiny hostile document then stands for no more than some 200 KB of XML.
     */
    static constexpr qint64 SharedValueAllowance = 1 << 12;

    /**
     * \brief formatOfData: the format \a data is written in: binary when it begins with "bplist00", XML
     * when its first character other than white space (after a byte-order mark) is "<"; nothing otherwise.
     */
    [[nodiscard]] static std::optional<VeltoPropertyListFormat> formatOfData(const QByteArray &data);

    /**
     * \brief read: the value of the document \a data, in either format.
     *
     * \param format receives the format that was read, when given.
     * \return the root value; nothing, with \a error (when given) filled with code 3840, for empty data,
     * an unknown format and every malformation.
     */
    [[nodiscard]] static std::optional<QVariant> read(const QByteArray &data, VeltoPropertyListFormat *format = nullptr,
                                                      VeltoError *error = nullptr);

    /**
     * \brief write: the document of \a root in \a format.
     *
     * \return the document; a null QByteArray, with \a error filled with code 3852 naming the first value
     * that cannot be written and its place ("root["key"][2]"), when \a root is not a property-list value,
     * nests deeper than MaximumDepth, holds more than MaximumValueCount values, or holds a string that
     * cannot be stored: one with an unpaired surrogate (either format), or in XML one with a character
     * XML 1.0 cannot carry (control characters other than tab, line feed and carriage return; U+FFFE,
     * U+FFFF). Nothing is ever left out or changed silently.
     */
    [[nodiscard]] static QByteArray write(const QVariant &root, VeltoPropertyListFormat format,
                                          VeltoError *error = nullptr);

    /// isPropertyListValue: whether \a value (recursively) is a property-list value (see the file comment).
    [[nodiscard]] static bool isPropertyListValue(const QVariant &value);

    /**
     * \brief normalized: \a value as it reads back from a document: whole numbers as qint64 (quint64
     * above its range), reals as double, string lists as lists, hashes as maps, dates in UTC. An invalid
     * QVariant for a value that is not a property-list value.
     */
    [[nodiscard]] static QVariant normalized(const QVariant &value);
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSecureURLSerialization.h
 * \brief VeltoSecureURLSerialization: the stored form of a secure URL, for user defaults, documents and
 * alias files.
 *
 * A record holds the three things a secure URL keeps across launches: its bookmark data, its capture
 * flags and, for a reference reached through an enclosing folder, the path below that folder. Stored, it
 * takes one of two shapes:
 *
 * - plain: with flags 0 and no subpath, the bookmark bytes themselves;
 * - tagged: otherwise, the nine bytes "VeltoData" followed by a binary property list (VeltoPropertyList)
 *   whose root dictionary holds "data" (the bookmark bytes), "flags" (an integer) and, when there is one,
 *   "subpath" (a string).
 *
 * \code
 * VeltoSecureURLSerialization record;
 * record.setAppleBookmarkData(bookmark);
 * record.setCaptureFlags(VeltoSecureURLCaptureReadOnly);
 * const QByteArray stored = record.generatedSerializationData();   // "VeltoDatabplist00..."
 * const auto back = VeltoSecureURLSerialization::initWithSerializationData(stored, &error);
 * \endcode
 *
 * A value type; a record is used by one thread at a time.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

#include <optional>

/// The tag that starts a stored secure URL of the tagged shape.
inline constexpr QLatin1StringView VeltoSecureURLSerializationTag{"VeltoData"};

/// VeltoSecureURLSerialization: bookmark data, capture flags and subpath, to and from stored bytes.
class VELTOCORE_EXPORT VeltoSecureURLSerialization
{
public:
    /// An empty record: no bookmark data, flags 0, no subpath.
    VeltoSecureURLSerialization();
    VeltoSecureURLSerialization(const VeltoSecureURLSerialization &other);
    VeltoSecureURLSerialization &operator=(const VeltoSecureURLSerialization &other);
    ~VeltoSecureURLSerialization();

    /**
     * initWithSerializationData: the record \a data stores (setPropertiesFromSerializationData()), or
     * nothing with \a error.
     */
    [[nodiscard]] static std::optional<VeltoSecureURLSerialization> initWithSerializationData(const QByteArray &data,
                                                                                              VeltoError *error = nullptr);

    /// missingDataError: what reading null data gives: VeltoCoreErrorDomain 1, "Security-scoped serialization data is nil.".
    [[nodiscard]] static VeltoError missingDataError();

    /**
     * setPropertiesFromSerializationData: reads \a data into this record.
     * - Data of at least 10 bytes beginning with "VeltoData": the property list after the tag, in either
     *   format. "flags" read as an integer (0 when missing), "data" when it is data, "subpath" when it is
     *   a string; other values count as missing.
     * - Any other data (also the bare 9-byte tag): plain bookmark bytes with flags 0 and no subpath.
     * \return false, leaving the record as it was, for null \a data (VeltoCoreErrorDomain 1, "Security-scoped
     * serialization data is nil."), for a property list that cannot be read (the reader's error, general
     * domain 3840), and for one whose root is no dictionary (VeltoCoreErrorDomain 1, "Security-scoped
     * serialization data is not a dictionary.").
     */
    [[nodiscard]] bool setPropertiesFromSerializationData(const QByteArray &data, VeltoError *error = nullptr);

    /**
     * generatedSerializationData: the stored form: the bookmark data as it is for flags 0 and no subpath,
     * else the tagged shape. Should the property list fail to be written (a subpath with an unpaired
     * surrogate), the bare bookmark data, dropping flags and subpath: the bookmark alone still works.
     * \throw VeltoException VeltoInvalidArgumentException for a tagged record without bookmark data.
     */
    [[nodiscard]] QByteArray generatedSerializationData() const;

    /// appleBookmarkData: the bookmark bytes; null when there are none.
    [[nodiscard]] QByteArray appleBookmarkData() const;
    void setAppleBookmarkData(const QByteArray &data);
    /// captureFlags: VeltoSecureURLCaptureFlag bits (1 read-only, 2 unscoped).
    [[nodiscard]] qint32 captureFlags() const;
    void setCaptureFlags(qint32 flags);
    /// subpathFragment: the path below the bookmarked folder; null when there is none.
    [[nodiscard]] QString subpathFragment() const;
    void setSubpathFragment(const QString &fragment);

private:
    class Private;
    QSharedDataPointer<Private> d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTBookmarkRecord: the bytes of a Linux bookmark, a small versioned binary record of what finds a file
// again: its path, name, device and inode, and its path relative to a document. docs/bookmark-format.md
// describes the layout; decoded() is the one reader of it and takes bytes from anywhere (user defaults,
// documents, alias files), so it checks every length and refuses anything it does not fully understand.

#include "VeltoBookmarkPlatform.h"
#include "VeltoFileIdentity.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

struct VELTOCORE_TESTS_EXPORT VTBookmarkRecord
{
    /// The first four bytes of every record.
    static constexpr char Magic[] = "VTBK";
    /// The version this library writes and the highest it reads.
    static constexpr quint8 CurrentVersion = 1;
    /// The creation options a record keeps; others are not stored.
    static constexpr VeltoBookmarkCreationOptions KnownOptions = VeltoBookmarkCreationSuitableForBookmarkFile
                                                                 | VeltoBookmarkCreationWithSecurityScope
                                                                 | VeltoBookmarkCreationSecurityScopeAllowOnlyReadAccess;

    VeltoBookmarkCreationOptions options = 0;
    VeltoFileIdentity identity;
    QString path;                 ///< absolute and clean
    QString name;                 ///< the last component of path ("/" for the root)
    QString documentRelativePath; ///< from the document's folder; empty when made without a document

    /// encoded: the record's bytes.
    [[nodiscard]] QByteArray encoded() const;
    /**
     * decoded: the record \a bytes hold; nothing when they are no complete record of a known version,
     * with \a problem (when given) saying what is wrong.
     */
    [[nodiscard]] static std::optional<VTBookmarkRecord> decoded(QByteArrayView bytes, QString *problem = nullptr);

    friend bool operator==(const VTBookmarkRecord &, const VTBookmarkRecord &) = default;
};

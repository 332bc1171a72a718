// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The binary property-list format, version "bplist00": the 8-byte magic, the objects, a table of their
// offsets and a 32-byte trailer (offset and reference sizes, object count, root object, table offset).
// VeltoPropertyList is the entry point; this is its binary half.
//
// The reader treats every byte as hostile: sizes of 1, 2, 4 or 8 bytes only, every offset, reference
// and declared length checked against the file before it is used, nesting and the number of values
// reached bounded, a reference back into its own ancestors (a cycle) refused, dictionary keys must be
// strings and unique, strings must be valid ASCII or UTF-16. Objects referenced from several places are
// read once and shared, so the work is linear in the size of the file.

#include "veltocore_export.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

class VELTOCORE_TESTS_EXPORT VTPropertyListBinary
{
public:
    VTPropertyListBinary() = delete;

    /// The first eight bytes of every document.
    static constexpr QByteArrayView Magic{"bplist00"};

    /// The value of a binary document; nothing, with errorMessage set, when it is malformed.
    static std::optional<QVariant> read(QByteArrayView data, QString *errorMessage = nullptr);

    /**
     * The document of \a root, which must have passed VeltoPropertyList's checks for the binary format.
     * Equal objects are written once (strings, numbers, and whole equal containers).
     */
    static QByteArray write(const QVariant &root);
};

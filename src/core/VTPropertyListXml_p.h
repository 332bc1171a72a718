// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Reads and writes XML property lists (dict, array, string, integer, real, true/false, date, data) as
// QVariant trees. VeltoPropertyList is the entry point; this is its XML half. Input is outside data:
// nesting and the number of values are bounded, a key may appear once per dictionary, and every
// malformation is an error, never a crash.

#include "veltocore_export.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

class VELTOCORE_TESTS_EXPORT VTPropertyListXml
{
public:
    VTPropertyListXml() = delete;

    /// The XML document of \a root, which must have passed VeltoPropertyList's checks for XML.
    static QByteArray write(const QVariant &root);

    /// The value of an XML property-list document; nothing, with errorMessage set, when it is malformed.
    static std::optional<QVariant> read(const QByteArray &xml, QString *errorMessage = nullptr);
};

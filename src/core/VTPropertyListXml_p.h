#pragma once

// Reads and writes XML property lists (dict, array, string, integer, real, true/false, date, data) as
// QVariant trees. The user-defaults file uses it, so that values keep their types and a person can edit
// the file. Input is outside data: nesting is bounded and every malformation is an error, never a crash.

#include "veltocore_export.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

class VELTOCORE_TESTS_EXPORT VTPropertyListXml
{
public:
    VTPropertyListXml() = delete;

    /// Deepest nesting of arrays and dictionaries accepted when reading.
    static constexpr int MaximumDepth = 256;

    /// Whether value (recursively) is a property-list value: bool, a whole number, a real number,
    /// string, byte array, date-time, list or string-keyed map of property-list values.
    static bool isPropertyListValue(const QVariant &value);

    /**
     * The value as it reads back from a document: whole numbers as qint64 (quint64 above its range),
     * reals as double, string lists as lists, hashes as maps, dates in UTC. An invalid QVariant for a
     * value that is not a property-list value.
     */
    static QVariant normalized(const QVariant &value);

    /// The XML document of root, a property-list value; an empty array when root is not one.
    static QByteArray write(const QVariant &root);

    /// The value of an XML property-list document; nothing, with errorMessage set, when it is malformed.
    static std::optional<QVariant> read(const QByteArray &xml, QString *errorMessage = nullptr);
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// What a QVariant is as a property-list value. The checks, the normalisation and both document writers
// decide by this one classification, so that they agree on what each Qt type stands for.

#include <QDate>
#include <QDateTime>
#include <QVariant>

enum class VTPropertyListKind {
    None,            ///< not a property-list value
    Boolean,
    Integer,         ///< any signed or small whole-number type, read with toLongLong()
    UnsignedInteger, ///< quint64 and unsigned long, which may exceed the qint64 range
    Real,
    String,
    Data,
    Date,
    Array,           ///< QVariantList or QStringList
    Dictionary,      ///< QVariantMap or QVariantHash
};

[[nodiscard]] inline VTPropertyListKind propertyListKind(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return VTPropertyListKind::Boolean;
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::Short:
    case QMetaType::UShort: case QMetaType::Long: case QMetaType::Char: case QMetaType::SChar:
    case QMetaType::UChar:
        return VTPropertyListKind::Integer;
    case QMetaType::ULongLong: case QMetaType::ULong:
        return VTPropertyListKind::UnsignedInteger;
    case QMetaType::Double: case QMetaType::Float:
        return VTPropertyListKind::Real;
    case QMetaType::QString:
        return VTPropertyListKind::String;
    case QMetaType::QByteArray:
        return VTPropertyListKind::Data;
    case QMetaType::QDateTime:
        return VTPropertyListKind::Date;
    case QMetaType::QVariantList: case QMetaType::QStringList:
        return VTPropertyListKind::Array;
    case QMetaType::QVariantMap: case QMetaType::QVariantHash:
        return VTPropertyListKind::Dictionary;
    default:
        return VTPropertyListKind::None;
    }
}

namespace VTPropertyListDates {

/// Dates are kept to the millisecond for the years 1 to 9999 (UTC): both formats carry exactly these.
[[nodiscard]] inline bool isStorable(const QDateTime &date)
{
    if (!date.isValid())
        return false;
    const int year = date.toUTC().date().year();
    return year >= 1 && year <= 9999;
}

/// The binary format counts seconds from 2001-01-01 00:00:00 UTC.
inline constexpr qint64 ReferenceDateMSecsSinceEpoch = 978307200000;

} // namespace VTPropertyListDates

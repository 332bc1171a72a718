// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Which QVariants count as numbers, and conversions of doubles to 64-bit integers that C++ leaves
// undefined out of range (truncated toward zero, saturated at the type's limits, NaN as 0). The
// formatters, mutable numbers and tick counts share them.

#include <QLocale>
#include <QVariant>

#include <cmath>
#include <limits>

namespace VTNumberConversion {

/// isFloating: a double or float.
[[nodiscard]] inline bool isFloating(const QVariant &v) noexcept
{
    return v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float;
}

/// isNumber: bool, any integer type or a floating type (what the platform boxes as a number).
[[nodiscard]] inline bool isNumber(const QVariant &v) noexcept
{
    switch (v.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

/// isUnsigned: an unsigned integer type that may hold values above the qint64 range.
[[nodiscard]] inline bool isUnsigned(const QVariant &v) noexcept
{
    return v.typeId() == QMetaType::ULongLong || v.typeId() == QMetaType::ULong || v.typeId() == QMetaType::UInt;
}

/// truncatedInteger: \a value truncated toward zero into qint64, saturated; NaN gives 0.
[[nodiscard]] inline qint64 truncatedInteger(double value) noexcept
{
    if (std::isnan(value))
        return 0;
    // 2^63 is exactly representable; anything at or above it does not fit.
    constexpr double Limit = 9223372036854775808.0;
    if (value >= Limit)
        return std::numeric_limits<qint64>::max();
    if (value < -Limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(value);
}

/// truncatedUnsigned: values from 2^63 up converted directly (saturated at 2^64 − 1); below that the
/// truncated signed value, with negative numbers wrapping as integer conversion does.
[[nodiscard]] inline quint64 truncatedUnsigned(double value) noexcept
{
    constexpr double Limit = 9223372036854775808.0;
    if (value >= 2 * Limit)
        return std::numeric_limits<quint64>::max();
    if (value >= Limit)
        return static_cast<quint64>(value);
    return static_cast<quint64>(truncatedInteger(value));
}

/// integerValue: the platform number's integerValue of \a v: floating values truncated, unsigned ones
/// wrapped; a value that is not a number gives 0 (Qt's own conversion would round, or parse strings).
[[nodiscard]] inline qint64 integerValue(const QVariant &v) noexcept
{
    if (!isNumber(v))
        return 0;
    if (isFloating(v))
        return truncatedInteger(v.toDouble());
    return isUnsigned(v) ? static_cast<qint64>(v.toULongLong()) : v.toLongLong();
}

/// doubleValue: the platform number's doubleValue of \a v; 0 for a value that is not a number.
[[nodiscard]] inline double doubleValue(const QVariant &v) noexcept
{
    return isNumber(v) ? v.toDouble() : 0.0;
}

/**
 * numberValue: a stored value as a number (qint64 or double), the way the platform reads one from a
 * number or text: a bool is 1 or 0, a number is itself, text is read in the C locale after trimming as a
 * whole number if it is one, else as a real number; anything else is 0.
 */
[[nodiscard]] inline QVariant numberValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return QVariant(qint64(value.toBool() ? 1 : 0));
    if (isNumber(value))
        return value;
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString().trimmed();
        bool ok = false;
        if (const qint64 whole = QLocale::c().toLongLong(text, &ok); ok)
            return QVariant(whole);
        if (const double real = QLocale::c().toDouble(text, &ok); ok)
            return QVariant(real);
    }
    return QVariant(qint64(0));
}

} // namespace VTNumberConversion

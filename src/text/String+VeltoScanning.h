// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoScanning.h
 * \brief Numbers read out of text: hexadecimal, integer and floating-point values scanned from an index
 * (with the span they came from), a whole-range number parse with optional currency, and integer text.
 *
 * \code
 * VeltoRange used;
 * const qint32 line = velto::intValueAtIndex(u"line 42: missing ;", 4, &used);   // 42, used = {4, 3}
 * \endcode
 *
 * The scanner is the library's own and does not depend on the locale. From the index it reads:
 *
 * \verbatim
 *   whitespace*  then one of
 *   hex:    ("0x" | "0X")? hex-digit+                       (no sign; "0x" only counts before a hex digit)
 *   int:    ("+" | "-")? digit+
 *   float:  ("+" | "-")? (digit+ ("." digit*)? | "." digit+) (("e" | "E") ("+" | "-")? digit+)?
 * \endverbatim
 *
 * Whitespace is VeltoCharacterSet::whitespaceAndNewlineCharacterSet(); it is skipped and counted in the
 * effective range. Digits are ASCII only. An exponent marker not followed by digits is not consumed.
 * Values out of range clamp to the type's limits (0xFFFFFFFF; INT32_MIN and INT32_MAX; -DBL_MAX and
 * DBL_MAX, while a value too small for a double becomes a zero of its sign); every digit is consumed
 * all the same.
 *
 * When nothing scans, the value is 0 and the effective range is (index, 0). An index at or past the end
 * is not an error: it gives 0 and (index, 0).
 *
 * Long strings are not copied: in a string of 51 units or more only the stretch of at most 11 (hex),
 * 22 (int) or 47 (float) units from the index is scanned, so a number (with its leading whitespace) that
 * runs past that stretch is cut there.
 */

#include "VeltoRange.h"
#include "veltocore_export.h"

#include <QString>
#include <QStringView>

/// What parseInt() found in its range.
enum class VeltoParsedNumberKind {
    None,    ///< the range holds no number (or more than one number)
    Integer, ///< an integer that fits 64 bits: no decimal point, no exponent
    Double,  ///< any other number
};

namespace velto {

/// hexIntValue: hexIntValueAtIndex() from index 0.
[[nodiscard]] VELTOCORE_EXPORT quint32 hexIntValue(QStringView string);

/**
 * hexIntValueAtIndex: the unsigned 32-bit hexadecimal value scanned from \a index (see the file
 * comment); 0 when nothing scans. \a effectiveRange, when given, receives (index, units consumed).
 */
[[nodiscard]] VELTOCORE_EXPORT quint32 hexIntValueAtIndex(QStringView string, quint64 index,
                                                          VeltoRange *effectiveRange = nullptr);

/**
 * intValueAtIndex: the signed 32-bit decimal value scanned from \a index (see the file comment); 0 when
 * nothing scans. \a effectiveRange, when given, receives (index, units consumed).
 */
[[nodiscard]] VELTOCORE_EXPORT qint32 intValueAtIndex(QStringView string, quint64 index,
                                                      VeltoRange *effectiveRange = nullptr);

/**
 * floatValueAtIndex: the double scanned from \a index (see the file comment); 0 when nothing scans.
 * \a effectiveRange, when given, receives (index, units consumed).
 */
[[nodiscard]] VELTOCORE_EXPORT double floatValueAtIndex(QStringView string, quint64 index,
                                                        VeltoRange *effectiveRange = nullptr);

/**
 * parseInt: reads \a range of \a string as exactly one number (the float grammar of the file comment),
 * ignoring whitespace and line breaks (VeltoCharacterSet::allWhitespaceCharacterSet()) at both ends.
 *
 * With \a currency, one currency symbol (Unicode category Sc, such as "$", "€", "£") may stand before
 * the number, after its sign, or after the number, with whitespace between symbol and number
 * ("-$ 1,234.50", "12 €"); and a comma followed by exactly three digits groups thousands. Without
 * \a currency neither is accepted.
 *
 * Returns Integer for an integer that fits 64 bits: it is stored in \a intValue and, as a double, in
 * \a doubleValue. Returns Double for any other number (a decimal point, an exponent, or too many digits):
 * it is stored in \a doubleValue only. Returns None, storing nothing, when the range holds anything else,
 * is empty, or does not lie inside the string. Either out-pointer may be null.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoParsedNumberKind parseInt(QStringView string, qint64 *intValue,
                                                              double *doubleValue, VeltoRange range,
                                                              bool currency);

/// stringWithVeltoInt: \a value in decimal with a leading "-" when negative ("-42"), as "%ld" writes it.
[[nodiscard]] VELTOCORE_EXPORT QString stringWithVeltoInt(qint64 value);

} // namespace velto

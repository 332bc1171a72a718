// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFileSizeFormatter.h
 * \brief VeltoFileSizeFormatter: file sizes as text with unit words ("1.5 MB", "12 K") and back, and the
 * stepping rule of a size field's up and down arrows.
 *
 * \code
 * VeltoFileSizeFormatter::localizedStringForFileSize(1'500'000);   // "1.5 MB"
 * VeltoFileSizeFormatter::localizedStringForByteCount(1'048'576);  // "1 MB" (binary, truncating)
 * VeltoFileSizeFormatter::fileSizeFromLocalizedString(u"12 K"_s);   // 12000
 * \endcode
 *
 * Reading is decimal (K = 1,000) while localizedStringForByteCount() writes binary (1,024-based) values;
 * the difference is deliberate and kept. The field helpers for QLineEdit live in VeltoCoreGui
 * (LineEdit+VeltoFileSize.h). All functions are thread-safe.
 */

#include "VeltoFormatter.h"
#include "VeltoRange.h"
#include "veltocore_export.h"

class VELTOCORE_EXPORT VeltoFileSizeFormatter : public VeltoFormatter
{
public:
    /// StepDirection: which arrow of a size field was used.
    enum class StepDirection { Up, Down };

    VeltoFileSizeFormatter() = default;

    /// fileSizeFormatter: a new formatter.
    [[nodiscard]] static VeltoFileSizeFormatter fileSizeFormatter();

    /**
     * localizedStringForFileSize: \a size in decimal units of 1,000, never in bytes: the largest of KB,
     * MB, GB, TB, PB and EB that is at most the size (KB below that), KB with no decimals, MB with one,
     * GB and above with two, rounded half-to-even, trailing zeros dropped; a value that rounds to 1,000
     * moves to the next unit. Zero is "0 KB"; 1 to 999 bytes are "1 KB" so that a small file never reads
     * as empty. Digits and separators are those of currentLocaleVelto(): 1,500,000 is "1.5 MB" in
     * English, "1,5 MB" in German. Unit symbols are not translated.
     */
    [[nodiscard]] static QString localizedStringForFileSize(quint64 size);
    /**
     * localizedStringForByteCount: \a count in binary units, truncated, with the library's "_%lu K",
     * "_%lu MB" and "_%lu GB" texts: 0 → "0 K"; 1 to 1,024 → "1 K"; up to 1,048,575 the count / 1,024 in
     * K; up to 1,073,741,823 the count / 1,048,576 in MB; above, the count / 1,073,741,824 in GB.
     */
    [[nodiscard]] static QString localizedStringForByteCount(quint64 count);
    /**
     * fileSizeFromLocalizedString: the whole number \a string begins with (after white space; digits up
     * to the first other character, so "1.5 MB" reads 1) times the multiplier of unitForString(). No
     * number gives 0, a negative one 0; a product beyond 64 bits gives the largest quint64.
     */
    [[nodiscard]] static quint64 fileSizeFromLocalizedString(const QString &string);
    /**
     * unitForString: the multiplier of the first unit found in \a string, trying in order bytes (1),
     * K (1,000), MB (1,000,000) and GB (1,000,000,000); each unit's text is its localized format without
     * the leading number placeholder ("%lu "), searched case-insensitively. \a *unitRange (when not null)
     * runs from the unit to the end of the string. No unit: 1 and the empty range at the end.
     */
    [[nodiscard]] static quint64 unitForString(const QString &string, VeltoRange *unitRange = nullptr);
    /**
     * steppedFileSize: \a value moved one step in \a direction. The step is 1 below 1,000, 1,000 below
     * 1,000,000, 1,000,000 below 1,000,000,000 and 1,000,000,000 from there, chosen from the current value:
     * so stepping down from exactly 1,000 gives 0 (deliberately). Up leaves the value unchanged when it
     * would overflow; down gives 0 when the value is below the step.
     */
    [[nodiscard]] static quint64 steppedFileSize(quint64 value, StepDirection direction);

    /// stringForObjectValue: localizedStringForFileSize() of a number (negative as 0, fractions
    /// truncated); null for a value that is not a number.
    [[nodiscard]] QString stringForObjectValue(const QVariant &value) const override;
    /// getObjectValue: always true; \a *value is fileSizeFromLocalizedString() as a quint64.
    [[nodiscard]] bool getObjectValue(QVariant *value, const QString &string,
                                      QString *errorDescription = nullptr) const override;
};

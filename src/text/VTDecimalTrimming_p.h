// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The decimal trimming and 7-to-9 rounding that VeltoNumberFormatter applies to the text its base
// formatting produced. It works on the text, not on the number, so that what the user sees is what gets
// cut: kept apart from the formatter so that every worked example can be checked on plain text.

#include "veltocore_export.h"

#include <QString>
#include <QStringView>

class VELTOCORE_TESTS_EXPORT VTDecimalTrimming
{
public:
    VTDecimalTrimming() = delete;

    /**
     * trimmedText: \a text with the digits after the first \a separator cut to at most \a maximumDigits,
     * trailing zeros among the kept ones removed (and the separator with them when none is left), and the
     * rest rounded up when the first removed character is 7, 8 or 9 (5 and 6 round down, deliberately).
     * Returns \a text unchanged when \a maximumDigits is 0, \a separator is empty or absent, or nothing
     * follows it. Only the ASCII digits 0-9 count as digits; anything after them (a unit) is kept.
     */
    [[nodiscard]] static QString trimmedText(const QString &text, QStringView separator, quint64 maximumDigits);
};

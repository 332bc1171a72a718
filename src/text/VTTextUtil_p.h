// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Small UTF-16 helpers shared by the string additions: stepping by code point, trimming a range by a
// character set, and telling whether a position would split a surrogate pair. Not installed.

#include "VeltoCharacterSet.h"
#include "VeltoRange.h"

#include <QChar>
#include <QStringView>

/// One code point read from UTF-16: its value and how many units it takes (1 or 2).
struct VTCodePoint
{
    char32_t value = 0;
    qsizetype width = 1;
};

/// The code point starting at \a i (i < size); an unpaired surrogate is read as itself.
inline VTCodePoint VTCodePointAt(QStringView s, qsizetype i) noexcept
{
    const char16_t unit = s[i].unicode();
    if (QChar::isHighSurrogate(unit) && i + 1 < s.size() && QChar::isLowSurrogate(s[i + 1].unicode()))
        return {QChar::surrogateToUcs4(unit, s[i + 1].unicode()), 2};
    return {unit, 1};
}

/// The code point ending just before \a i (i > 0); an unpaired surrogate is read as itself.
inline VTCodePoint VTCodePointBefore(QStringView s, qsizetype i) noexcept
{
    const char16_t unit = s[i - 1].unicode();
    if (QChar::isLowSurrogate(unit) && i >= 2 && QChar::isHighSurrogate(s[i - 2].unicode()))
        return {QChar::surrogateToUcs4(s[i - 2].unicode(), unit), 2};
    return {unit, 1};
}

/// Whether a cut at \a pos would separate the two halves of a surrogate pair.
inline bool VTSplitsSurrogatePair(QStringView s, qsizetype pos) noexcept
{
    return pos > 0 && pos < s.size() && QChar::isHighSurrogate(s[pos - 1].unicode())
        && QChar::isLowSurrogate(s[pos].unicode());
}

/**
 * \a range (inside \a s) without the members of \a set at either end, code point by code point.
 * An empty result lies at the range's start.
 */
inline VeltoRange VTTrimmedRange(QStringView s, const VeltoCharacterSet &set, VeltoRange range) noexcept
{
    qsizetype start = qsizetype(range.location);
    qsizetype end = qsizetype(range.end());
    while (start < end) {
        const VTCodePoint c = VTCodePointAt(s.first(end), start);
        if (!set.contains(c.value))
            break;
        start += c.width;
    }
    while (end > start) {
        const VTCodePoint c = VTCodePointBefore(s.sliced(start), end - start);
        if (!set.contains(c.value))
            break;
        end -= c.width;
    }
    if (start == end)
        return {range.location, 0};
    return {quint64(start), quint64(end - start)};
}

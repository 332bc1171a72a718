// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoSearching.h
 * \brief Searches inside a range of a string for a substring or for a member of a character set, with
 * the result as a VeltoRange in UTF-16 units: the primitives the replacer and the string additions build on.
 *
 * \code
 * VeltoRange r = velto::rangeOfCharacterFromSetVelto(text, VeltoCharacterSet::lineBreakCharacterSet());
 * if (r.location != VeltoNotFound) ...
 * \endcode
 *
 * Every function answers "no range" ({VeltoNotFound, 0}) when nothing matches, when the range is empty,
 * or when the range does not lie inside the string (a range past the end is bad input, not an error).
 */

#include "VeltoCharacterSet.h"
#include "VeltoRange.h"
#include "VeltoStringCompareOptions.h"
#include "veltocore_export.h"

#include <QStringView>

namespace velto {

/**
 * rangeOfStringVelto: the first occurrence of \a target inside \a range of \a string (the last with
 * Backwards; only at the range's start, or end with Backwards, when Anchored). An empty target never
 * matches. CaseInsensitive compares with Unicode simple case folding.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfStringVelto(QStringView string, QStringView target,
    VeltoStringCompareOptions options, VeltoRange range);
/// rangeOfStringVelto over the whole string.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfStringVelto(QStringView string, QStringView target,
    VeltoStringCompareOptions options = {});

/**
 * rangeOfCharacterFromSetVelto: the first member of \a set inside \a range (the last with Backwards;
 * only the first, or last, character when Anchored). A surrogate pair lying wholly inside the range is
 * tested as its code point and matches with length 2; any other unit, an unpaired surrogate included, is
 * tested as itself with length 1. CaseInsensitive is ignored (a set says exactly what it holds).
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfCharacterFromSetVelto(QStringView string,
    const VeltoCharacterSet &set, VeltoStringCompareOptions options, VeltoRange range);
/// rangeOfCharacterFromSetVelto over the whole string.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfCharacterFromSetVelto(QStringView string,
    const VeltoCharacterSet &set, VeltoStringCompareOptions options = {});

/// isRangeInsideVelto: whether \a range lies inside a string of \a length units (without overflow).
[[nodiscard]] constexpr bool isRangeInsideVelto(VeltoRange range, quint64 length) noexcept
{
    return range.location <= length && range.length <= length - range.location;
}

} // namespace velto

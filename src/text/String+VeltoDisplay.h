// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoDisplay.h
 * \brief Text prepared for people: the sort order of lists shown to the user, truncation and hard wrapping
 * for display, and case changes that follow a pattern.
 *
 * \code
 * std::sort(names.begin(), names.end(),
 *           [](const QString &a, const QString &b) { return velto::veltoUserDisplayCompare(a, b) < 0; });
 * label = velto::stringByPrettyTruncationToLength(title, 40, false, u"…"_s);
 * \endcode
 *
 * Lengths and columns are counted in UTF-16 units. Where a unit count would cut between the two halves
 * of a surrogate pair, each function says what it does; none of them produces an unpaired surrogate
 * from well-formed text.
 */

#include "veltocore_export.h"

#include <QString>

namespace velto {

/**
 * veltoUserDisplayCompare: the order of \a a and \a b in a list shown to the user: -1 when \a a comes
 * first, 1 when \a b does, 0 when they sort alike.
 *
 * Both strings first lose their leading whitespace (everything before the first member of
 * VeltoCharacterSet::nonWhitespaceCharacterSet()), so "  File 2" sorts as "File 2". The rest is
 * compared with QCollator on the default QLocale in numeric mode, so digit runs compare by value
 * ("File 2" before "File 10"). The C locale has no collation of its own (Qt compares it unit by unit),
 * so it is compared in the Unicode root order (English, which has no tailoring). Where the collator
 * cannot compare numerically, a localized case-insensitive comparison is used instead.
 * Empty and null strings sort first and alike. Safe from any thread (one collator per thread).
 */
[[nodiscard]] VELTOCORE_EXPORT qint64 veltoUserDisplayCompare(const QString &a, const QString &b);

/**
 * stringByPrettyTruncationToLength: a one-line label of at most \a length units taken from \a string,
 * cut at a word boundary.
 *
 * 1. n = min(\a length, string length); unless \a allowLineBreak, n is cut back to the first member of
 *    VeltoCharacterSet::lineBreakCharacterSet() within the first n units.
 * 2. G = the gremlins (VeltoCharacterSet::gremlinCharacterSet()), tab and U+FFFC.
 * 3. When n reaches the end and the first n units hold no member of G, \a string comes back unchanged.
 * 4. Otherwise the text is cut at the last whitespace-or-newline unit within the first n units (at n when
 *    there is none). So a text holding a tab or a gremlin loses its last word even when it fits.
 * 5. Spaces and tabs (VeltoCharacterSet::whitespaceCharacterSet()) are trimmed from both ends and each
 *    member of G becomes one space.
 * 6. \a suffix is appended when \a string was longer than n and \a suffix is not empty; the suffix is
 *    not counted in \a length.
 *
 * Surrogate pairs: a cut at n that would fall inside a pair is made one unit earlier, before the pair
 * (the result still holds at most \a length units). A \a length of 0 gives just the suffix (or the empty
 * string) for a non-empty text.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByPrettyTruncationToLength(const QString &string, quint64 length,
                                                                        bool allowLineBreak, const QString &suffix);

/// stringByPrettyTruncationToLength with line breaks allowed and no suffix.
[[nodiscard]] VELTOCORE_EXPORT QString stringByPrettyTruncationToLength(const QString &string, quint64 length);

/**
 * stringByHardWrappingToLineLength: \a string with "\n" inserted so that no line runs past \a lineLength
 * units. A string of at most \a lineLength units, and any string when \a lineLength is 0, comes back
 * unchanged.
 *
 * The text is walked with a column count and the length of the current run of non-whitespace units
 * (whitespace = VeltoCharacterSet::whitespaceAndNewlineCharacterSet()). LF and FF set the column to 0
 * (the run goes on). Any other unit adds one to the column, and to the run (a whitespace unit resets the
 * run). When the column reaches \a lineLength at a unit c:
 * - if c is not whitespace, the word holding it is measured by continuing from c (counting c a second
 *   time) until whitespace or until the count passes \a lineLength; when characters precede the word
 *   on the line and the count is below \a lineLength, the break moves back to the whitespace before
 *   the word (by at most \a lineLength - 1 units);
 * - "\n" is inserted at the break; the character after it (that whitespace, or c when a long word is
 *   split) is stepped over uncounted, and column and run restart at 0.
 *
 * These rules are kept on purpose: the first line of a long word holds \a lineLength - 1 units and
 * later ones \a lineLength, and the space where a line broke begins the next line. With a line length of
 * 4, "aa bb cc" becomes "aa\n bb\n cc" and "abcdefghij" becomes "abc\ndefg\nhij".
 *
 * Surrogate pairs: a long word split between the halves of a pair breaks one unit earlier, before the
 * pair. The character stepped over is always a whole code point; when it is a pair its second unit is
 * counted on the new line, so no line grows past \a lineLength units ("ab\U0001F600cdefg" with 4 gives
 * "ab", "\U0001F600cd" and "efg"); only with a line length of 1 does a pair take a line of 2 units.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByHardWrappingToLineLength(const QString &string, quint64 lineLength);

/**
 * stringByMatchingCase: \a string in the case of \a pattern, as when a replacement follows the case of
 * the text it replaces. \a string comes back unchanged when \a pattern is empty or does not start with
 * an upper-case letter; upper-cased when every unit of \a pattern is an upper-case letter; otherwise
 * capitalized: the first character of each word (a run of non-whitespace, see
 * VeltoCharacterSet::nonWhitespaceCharacterSet()) upper case and the rest of the word lower case
 * ("hello wORLD" after "Ab" gives "Hello World"). Case mappings are Unicode's full ones (QString).
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByMatchingCase(const QString &string, const QString &pattern);

/**
 * toggledcaseString: \a string with each unit's case swapped by the C library's wide character classes
 * in the current LC_CTYPE locale (iswupper()/towlower(), iswlower()/towupper()). Each changed unit is
 * replaced by its converted code formatted as "%c", that is its low byte read as a Latin-1 character,
 * so results above U+00FF do not survive (kept: "Ā" becomes U+0001). Units that are neither upper nor
 * lower case are kept as they are; the length never changes.
 */
[[nodiscard]] VELTOCORE_EXPORT QString toggledcaseString(const QString &string);

} // namespace velto

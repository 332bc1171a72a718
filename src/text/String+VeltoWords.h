// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoWords.h
 * \brief Ranges of words, paragraphs, whitespace and composed characters in UTF-16 text, repeated
 * searches that collect every match, and single-character string building.
 *
 * \code
 * const VeltoRange word = velto::rangeOfWordAtIndex(text, caret);            // double-click selection
 * const VeltoRange paragraph = velto::paragraphRangeForRange(text, selection);
 * for (VeltoRange r : velto::rangesOfStringVelto(text, u"TODO")) ...
 * \endcode
 *
 * All ranges are in UTF-16 units. Words, whitespace and paragraphs are the library's named character
 * sets (VeltoCharacterSet): a word character is a member of VeltoCharacterSet::alphanumericCharacterSet()
 * (letters, marks, numbers), whitespace is VeltoCharacterSet::allWhitespaceCharacterSet(), and a
 * paragraph ends after a member of VeltoCharacterSet::paragraphBreakCharacterSet() (LF, FF, CR, U+2029),
 * CR LF counting as one break. A surrogate pair is tested as its code point and is never split.
 *
 * Bad input is not an error: a range or index that does not lie inside the string gives "no range"
 * ({VeltoNotFound, 0}), an empty list, or VeltoNotFound, as each function says.
 */

#include "VeltoCharacterSet.h"
#include "VeltoRange.h"
#include "VeltoStringCompareOptions.h"
#include "veltocore_export.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <functional>

/**
 * VeltoRangeMatchFunction: finds the next match in (string, search range) and returns its range, or a
 * range whose location is VeltoNotFound when there is none.
 */
using VeltoRangeMatchFunction = std::function<VeltoRange(QStringView string, VeltoRange searchRange)>;

namespace velto {

/**
 * rangeOfWordAtIndex: the word (maximal run of word characters) holding the character at \a index.
 * (index, 0) when that character is not a word character; "no range" when \a index is at or past the end.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfWordAtIndex(QStringView string, quint64 index);

/**
 * rangeOfCaseChangeWordAtIndex: like rangeOfWordAtIndex(), but a word also ends where its case changes,
 * as in identifiers: a new word starts at an upper-case letter that follows a lower-case letter or a
 * digit, and at the last upper-case letter of a run that is followed by a lower-case letter. So in
 * "parseHTMLString2Text" the words are "parse", "HTML", "String2" and "Text".
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfCaseChangeWordAtIndex(QStringView string, quint64 index);

/**
 * rangeOfTrimmedWordForRange: \a range without the non-word characters at either end
 * ("(hello)," gives the range of "hello"). "No range" when \a range holds no word character or does not
 * lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfTrimmedWordForRange(QStringView string, VeltoRange range);

/**
 * locationOfCharacterFromSet: where the first member of \a set at or after \a location lies; with
 * Backwards, the last member before \a location (so \a location works like a caret). Anchored only
 * looks at the one character at (or before) \a location. VeltoNotFound when there is none or when
 * \a location is past the end.
 */
[[nodiscard]] VELTOCORE_EXPORT quint64 locationOfCharacterFromSet(QStringView string, const VeltoCharacterSet &set,
                                                                  VeltoStringCompareOptions options, quint64 location);

/**
 * rangesOfCharactersFromSetVelto: every member of \a set inside \a range, one range per character (a
 * surrogate pair has length 2), found by repeating rangeOfCharacterFromSetVelto() on what is left of the
 * range. In ascending order; with Backwards from the last to the first. With Anchored the search stops
 * at the first non-member, so the list holds the run of members at the range's start (end, Backwards).
 * Empty when nothing matches or \a range does not lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT QList<VeltoRange> rangesOfCharactersFromSetVelto(QStringView string,
    const VeltoCharacterSet &set, VeltoStringCompareOptions options, VeltoRange range);
/// rangesOfCharactersFromSetVelto over the whole string.
[[nodiscard]] VELTOCORE_EXPORT QList<VeltoRange> rangesOfCharactersFromSetVelto(QStringView string,
    const VeltoCharacterSet &set, VeltoStringCompareOptions options = {});

/**
 * rangesOfStringVelto: every occurrence of \a target inside \a range, without overlaps, found by
 * repeating rangeOfStringVelto() on what is left of the range after each match ("aaa" holds "aa" once).
 * Order and Anchored as rangesOfCharactersFromSetVelto(). Empty for an empty target, when nothing
 * matches, or when \a range does not lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT QList<VeltoRange> rangesOfStringVelto(QStringView string, QStringView target,
    VeltoStringCompareOptions options, VeltoRange range);
/// rangesOfStringVelto over the whole string.
[[nodiscard]] VELTOCORE_EXPORT QList<VeltoRange> rangesOfStringVelto(QStringView string, QStringView target,
    VeltoStringCompareOptions options = {});

/**
 * rangesOfMatchesVeltoInRange: every match \a match reports inside \a range, in order. \a match is first
 * called with the whole range, then with the rest of it after each match's end. An empty match is kept
 * and the next search starts one unit after it (a surrogate pair is stepped over whole), so the
 * collection always ends. A result that does not lie inside the search range ends the collection, as
 * does a null \a match or a \a range that does not lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT QList<VeltoRange> rangesOfMatchesVeltoInRange(QStringView string, VeltoRange range,
    const VeltoRangeMatchFunction &match);

/**
 * getParagraphStart: for the paragraphs that \a range touches, stores where the first one starts
 * (\a start), where the last one ends after its break (\a end), and where its text ends before the break
 * (\a contentsEnd); each out-pointer may be null. The break ending a paragraph belongs to it, so a range
 * starting on the LF of a CR LF lies in the paragraph that CR LF ends, and an empty range after a final
 * break gives the empty paragraph at the end. When \a range does not lie inside the string, each given
 * out-pointer receives VeltoNotFound.
 */
VELTOCORE_EXPORT void getParagraphStart(QStringView string, quint64 *start, quint64 *end, quint64 *contentsEnd,
                                        VeltoRange range);

/// paragraphRangeForRange: (start, end - start) from getParagraphStart(), breaks included; "no range" for bad input.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange paragraphRangeForRange(QStringView string, VeltoRange range);

/// paragraphContentRangeForRange: (start, contentsEnd - start), without the final break; "no range" for bad input.
[[nodiscard]] VELTOCORE_EXPORT VeltoRange paragraphContentRangeForRange(QStringView string, VeltoRange range);

/**
 * nonwhitespaceRangeForRange: \a range without the whitespace and line breaks at either end. "No range"
 * when \a range holds only whitespace, is empty, or does not lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange nonwhitespaceRangeForRange(QStringView string, VeltoRange range);

/**
 * stringByRemovingSurroundingWhitespace: \a string without whitespace and line breaks at either end;
 * the empty string when nothing else is left, \a string itself when there is nothing to remove.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByRemovingSurroundingWhitespace(const QString &string);

/// deleteSurroundingWhitespace: removes whitespace and line breaks from both ends of \a string in place.
VELTOCORE_EXPORT void deleteSurroundingWhitespace(QString &string);

/**
 * rangeOfComposedCharactersForRange: \a range widened to whole user-perceived characters (extended
 * grapheme clusters, QTextBoundaryFinder::Grapheme): a base letter with its combining marks, a surrogate
 * pair, an emoji sequence, CR LF. An empty range between clusters stays as it is; one inside a cluster
 * gives that cluster. "No range" when \a range does not lie inside the string.
 */
[[nodiscard]] VELTOCORE_EXPORT VeltoRange rangeOfComposedCharactersForRange(QStringView string, VeltoRange range);

/// appendCharacter: appends the one UTF-16 unit \a unit to \a string (a lone surrogate is appended as it is).
VELTOCORE_EXPORT void appendCharacter(QString &string, char16_t unit);

/// stringWithCharacter: a string of the one UTF-16 unit \a unit.
[[nodiscard]] VELTOCORE_EXPORT QString stringWithCharacter(char16_t unit);

} // namespace velto

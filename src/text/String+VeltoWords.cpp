// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoWords.h"

#include "String+VeltoSearching.h"
#include "VTTextUtil_p.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace velto {

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};

// Start of the code point holding the unit at index (the high half when index is a pair's low half).
qsizetype codePointStart(QStringView s, qsizetype index) noexcept
{
    return VTSplitsSurrogatePair(s, index) ? index - 1 : index;
}

bool isUpperCase(char32_t c) noexcept
{
    return QChar::isUpper(c) || QChar::isTitleCase(c);
}

bool isLowerCase(char32_t c) noexcept
{
    return QChar::isLetter(c) && !isUpperCase(c);
}

// Whether a case-change word starts at pos, inside the word [wordStart, wordEnd).
bool startsCaseChangeWord(QStringView s, qsizetype pos, qsizetype wordStart, qsizetype wordEnd) noexcept
{
    if (pos <= wordStart || pos >= wordEnd)
        return false;
    const VTCodePoint current = VTCodePointAt(s, pos);
    if (!isUpperCase(current.value))
        return false;
    const char32_t previous = VTCodePointBefore(s, pos).value;
    if (isLowerCase(previous) || QChar::isDigit(previous))
        return true;
    // The last capital of an acronym starts the next word: "HTMLString" is "HTML" + "String".
    const qsizetype next = pos + current.width;
    return isUpperCase(previous) && next < wordEnd && isLowerCase(VTCodePointAt(s, next).value);
}

// Repeats find over what is left of range after each match; see rangesOfMatchesVeltoInRange().
template <typename Find>
QList<VeltoRange> collectRanges(QStringView s, VeltoRange range, bool backwards, Find find)
{
    QList<VeltoRange> found;
    if (!isRangeInsideVelto(range, quint64(s.size())))
        return found;
    VeltoRange rest = range;
    for (;;) {
        const VeltoRange match = find(rest);
        if (match.location == VeltoNotFound || match.location < rest.location
            || !isRangeInsideVelto({match.location - rest.location, match.length}, rest.length))
            break;
        found.append(match);
        if (backwards) {
            if (match.length == 0)
                break;
            rest.length = match.location - rest.location;
            continue;
        }
        quint64 next = match.end();
        if (match.length == 0) {
            if (next == rest.end())
                break;
            next = std::min(rest.end(), next + quint64(VTCodePointAt(s, qsizetype(next)).width));
        }
        rest = {next, rest.end() - next};
    }
    return found;
}

VeltoRange wholeString(QStringView s) noexcept
{
    return {0, quint64(s.size())};
}

} // namespace

VeltoRange rangeOfWordAtIndex(QStringView string, quint64 index)
{
    if (index >= quint64(string.size()))
        return NoRange;
    const VeltoCharacterSet &word = VeltoCharacterSet::alphanumericCharacterSet();
    qsizetype start = codePointStart(string, qsizetype(index));
    VTCodePoint at = VTCodePointAt(string, start);
    if (!word.contains(at.value))
        return {index, 0};
    qsizetype end = start + at.width;
    while (start > 0) {
        const VTCodePoint before = VTCodePointBefore(string, start);
        if (!word.contains(before.value))
            break;
        start -= before.width;
    }
    while (end < string.size() && word.contains((at = VTCodePointAt(string, end)).value))
        end += at.width;
    return {quint64(start), quint64(end - start)};
}

VeltoRange rangeOfCaseChangeWordAtIndex(QStringView string, quint64 index)
{
    const VeltoRange word = rangeOfWordAtIndex(string, index);
    if (word.length == 0)
        return word;
    const qsizetype wordStart = qsizetype(word.location);
    const qsizetype wordEnd = qsizetype(word.end());
    const qsizetype at = codePointStart(string, qsizetype(index));
    qsizetype start = at;
    while (start > wordStart && !startsCaseChangeWord(string, start, wordStart, wordEnd))
        start -= VTCodePointBefore(string, start).width;
    qsizetype end = at + VTCodePointAt(string, at).width;
    while (end < wordEnd && !startsCaseChangeWord(string, end, wordStart, wordEnd))
        end += VTCodePointAt(string, end).width;
    return {quint64(start), quint64(end - start)};
}

VeltoRange rangeOfTrimmedWordForRange(QStringView string, VeltoRange range)
{
    if (!isRangeInsideVelto(range, quint64(string.size())))
        return NoRange;
    const VeltoRange trimmed = VTTrimmedRange(string, VeltoCharacterSet::nonAlphanumericCharacterSet(), range);
    return trimmed.length == 0 ? NoRange : trimmed;
}

quint64 locationOfCharacterFromSet(QStringView string, const VeltoCharacterSet &set, VeltoStringCompareOptions options,
                                   quint64 location)
{
    const quint64 size = quint64(string.size());
    if (location > size)
        return VeltoNotFound;
    const bool backwards = options.testFlag(VeltoStringCompareOption::Backwards);
    const VeltoRange range = backwards ? VeltoRange{0, location} : VeltoRange{location, size - location};
    return rangeOfCharacterFromSetVelto(string, set, options, range).location;
}

QList<VeltoRange> rangesOfCharactersFromSetVelto(QStringView string, const VeltoCharacterSet &set,
                                                 VeltoStringCompareOptions options, VeltoRange range)
{
    return collectRanges(string, range, options.testFlag(VeltoStringCompareOption::Backwards), [&](VeltoRange rest) {
        return rangeOfCharacterFromSetVelto(string, set, options, rest);
    });
}

QList<VeltoRange> rangesOfCharactersFromSetVelto(QStringView string, const VeltoCharacterSet &set,
                                                 VeltoStringCompareOptions options)
{
    return rangesOfCharactersFromSetVelto(string, set, options, wholeString(string));
}

QList<VeltoRange> rangesOfStringVelto(QStringView string, QStringView target, VeltoStringCompareOptions options,
                                      VeltoRange range)
{
    return collectRanges(string, range, options.testFlag(VeltoStringCompareOption::Backwards), [&](VeltoRange rest) {
        return rangeOfStringVelto(string, target, options, rest);
    });
}

QList<VeltoRange> rangesOfStringVelto(QStringView string, QStringView target, VeltoStringCompareOptions options)
{
    return rangesOfStringVelto(string, target, options, wholeString(string));
}

QList<VeltoRange> rangesOfMatchesVeltoInRange(QStringView string, VeltoRange range,
                                              const VeltoRangeMatchFunction &match)
{
    if (!match)
        return {};
    return collectRanges(string, range, false, [&](VeltoRange rest) { return match(string, rest); });
}

void getParagraphStart(QStringView string, quint64 *start, quint64 *end, quint64 *contentsEnd, VeltoRange range)
{
    const auto store = [&](quint64 startValue, quint64 endValue, quint64 contentsEndValue) {
        if (start)
            *start = startValue;
        if (end)
            *end = endValue;
        if (contentsEnd)
            *contentsEnd = contentsEndValue;
    };
    const quint64 size = quint64(string.size());
    if (!isRangeInsideVelto(range, size)) {
        store(VeltoNotFound, VeltoNotFound, VeltoNotFound);
        return;
    }
    const VeltoCharacterSet &breaks = VeltoCharacterSet::paragraphBreakCharacterSet();
    const auto isCrLfAt = [&](quint64 i) {
        return i + 1 < size && string[qsizetype(i)] == u'\r' && string[qsizetype(i + 1)] == u'\n';
    };

    // The LF of a CR LF belongs to the paragraph its CR ends.
    quint64 first = range.location;
    if (first > 0 && isCrLfAt(first - 1))
        --first;
    const VeltoRange previousBreak =
        rangeOfCharacterFromSetVelto(string, breaks, VeltoStringCompareOption::Backwards, {0, first});
    const quint64 paragraphStart = previousBreak.location == VeltoNotFound ? 0 : previousBreak.end();

    quint64 last = range.length > 0 ? range.end() - 1 : range.location;
    if (last > 0 && isCrLfAt(last - 1))
        --last;
    const VeltoRange nextBreak = rangeOfCharacterFromSetVelto(string, breaks, {}, {last, size - last});
    if (nextBreak.location == VeltoNotFound)
        store(paragraphStart, size, size);
    else
        store(paragraphStart, nextBreak.location + (isCrLfAt(nextBreak.location) ? 2 : 1), nextBreak.location);
}

VeltoRange paragraphRangeForRange(QStringView string, VeltoRange range)
{
    quint64 start = 0;
    quint64 end = 0;
    getParagraphStart(string, &start, &end, nullptr, range);
    return start == VeltoNotFound ? NoRange : VeltoRange{start, end - start};
}

VeltoRange paragraphContentRangeForRange(QStringView string, VeltoRange range)
{
    quint64 start = 0;
    quint64 contentsEnd = 0;
    getParagraphStart(string, &start, nullptr, &contentsEnd, range);
    return start == VeltoNotFound ? NoRange : VeltoRange{start, contentsEnd - start};
}

VeltoRange nonwhitespaceRangeForRange(QStringView string, VeltoRange range)
{
    if (!isRangeInsideVelto(range, quint64(string.size())))
        return NoRange;
    const VeltoRange trimmed = VTTrimmedRange(string, VeltoCharacterSet::allWhitespaceCharacterSet(), range);
    return trimmed.length == 0 ? NoRange : trimmed;
}

QString stringByRemovingSurroundingWhitespace(const QString &string)
{
    const VeltoRange kept = VTTrimmedRange(string, VeltoCharacterSet::allWhitespaceCharacterSet(), wholeString(string));
    if (kept.length == quint64(string.size()))
        return string;
    return string.sliced(qsizetype(kept.location), qsizetype(kept.length));
}

void deleteSurroundingWhitespace(QString &string)
{
    const VeltoRange kept = VTTrimmedRange(string, VeltoCharacterSet::allWhitespaceCharacterSet(), wholeString(string));
    string.truncate(qsizetype(kept.end()));
    string.remove(0, qsizetype(kept.location));
}

VeltoRange rangeOfComposedCharactersForRange(QStringView string, VeltoRange range)
{
    if (!isRangeInsideVelto(range, quint64(string.size())))
        return NoRange;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, string.data(), string.size());
    qsizetype start = qsizetype(range.location);
    finder.setPosition(start);
    if (!finder.isAtBoundary())
        start = std::max<qsizetype>(0, finder.toPreviousBoundary());
    qsizetype end = qsizetype(range.end());
    finder.setPosition(end);
    if (!finder.isAtBoundary()) {
        const qsizetype next = finder.toNextBoundary();
        end = next < 0 ? string.size() : next;
    }
    return {quint64(start), quint64(end - start)};
}

void appendCharacter(QString &string, char16_t unit)
{
    string.append(QChar(unit));
}

QString stringWithCharacter(char16_t unit)
{
    return QString(QChar(unit));
}

} // namespace velto

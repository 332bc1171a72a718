// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoDisplay.h"

#include "String+VeltoSearching.h"
#include "VTTextUtil_p.h"
#include "VeltoCharacterSet.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <cwctype>
#include <optional>

namespace velto {

namespace {

// One collator per thread: QCollator is not safe to share, and making one per comparison would cost
// an ICU collator open on every step of a sort. It is remade when the default locale changes.
const QCollator &displayCollator()
{
    thread_local std::optional<QLocale> madeFor;
    thread_local std::optional<QCollator> collator;
    const QLocale current;
    if (!collator || *madeFor != current) {
        // Qt compares the C locale unit by unit and ignores numeric mode there.
        const QLocale collation = current.language() == QLocale::C ? QLocale(QLocale::English) : current;
        QCollator numeric(collation);
        numeric.setNumericMode(true);
        if (numeric.compare(u"2", u"10") < 0) {
            collator = std::move(numeric);
        } else {
            QCollator caseless(collation);
            caseless.setCaseSensitivity(Qt::CaseInsensitive);
            collator = std::move(caseless);
        }
        madeFor = current;
    }
    return *collator;
}

QStringView withoutLeadingWhitespace(QStringView s)
{
    const VeltoRange first = rangeOfCharacterFromSetVelto(s, VeltoCharacterSet::nonWhitespaceCharacterSet());
    return first.location == VeltoNotFound ? QStringView() : s.sliced(qsizetype(first.location));
}

// Characters that pretty truncation shows as spaces: gremlins, tab and the attachment character.
const VeltoCharacterSet &truncationGremlins()
{
    static const VeltoCharacterSet set = [] {
        VeltoCharacterSet s = VeltoCharacterSet::gremlinCharacterSet();
        s.addCharacter(u'\t');
        s.addCharacter(u'\uFFFC');
        return s;
    }();
    return set;
}

} // namespace

qint64 veltoUserDisplayCompare(const QString &a, const QString &b)
{
    const int order = displayCollator().compare(withoutLeadingWhitespace(a), withoutLeadingWhitespace(b));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

QString stringByPrettyTruncationToLength(const QString &string, quint64 length, bool allowLineBreak,
                                         const QString &suffix)
{
    const qsizetype total = string.size();
    qsizetype n = qsizetype(std::min(length, quint64(total)));
    if (!allowLineBreak) {
        const VeltoRange lineBreak =
            rangeOfCharacterFromSetVelto(string, VeltoCharacterSet::lineBreakCharacterSet(), {}, {0, quint64(n)});
        if (lineBreak.location != VeltoNotFound)
            n = qsizetype(lineBreak.location);
    }
    const VeltoCharacterSet &gremlins = truncationGremlins();
    const bool hasGremlin =
        rangeOfCharacterFromSetVelto(string, gremlins, {}, {0, quint64(n)}).location != VeltoNotFound;
    if (n == total && !hasGremlin)
        return string;

    qsizetype cut = n;
    const VeltoRange lastSpace = rangeOfCharacterFromSetVelto(
        string, VeltoCharacterSet::whitespaceAndNewlineCharacterSet(), VeltoStringCompareOption::Backwards,
        {0, quint64(n)});
    if (lastSpace.location != VeltoNotFound)
        cut = qsizetype(lastSpace.location);
    else if (VTSplitsSurrogatePair(string, cut))
        --cut;

    const VeltoRange kept = VTTrimmedRange(string, VeltoCharacterSet::whitespaceCharacterSet(), {0, quint64(cut)});
    QString result = string.sliced(qsizetype(kept.location), qsizetype(kept.length));
    for (QChar &c : result) {
        if (gremlins.contains(c.unicode()))
            c = u' ';
    }
    if (total > n && !suffix.isEmpty())
        result += suffix;
    return result;
}

QString stringByPrettyTruncationToLength(const QString &string, quint64 length)
{
    return stringByPrettyTruncationToLength(string, length, true, QString());
}

QString stringByHardWrappingToLineLength(const QString &string, quint64 lineLength)
{
    const QStringView s(string);
    const qsizetype total = s.size();
    if (lineLength == 0 || quint64(total) <= lineLength)
        return string;

    // Every unit but LF and FF adds one to the column, so the unit where the column reaches the length
    // is found by arithmetic, jumping from one LF or FF to the next; whitespace and the run of
    // non-whitespace only matter at a break, where they are read around it.
    const VeltoCharacterSet &whitespace = VeltoCharacterSet::whitespaceAndNewlineCharacterSet();
    const auto isSpace = [&](qsizetype k) { return whitespace.contains(s[k].unicode()); };
    const auto setsColumnBack = [&](qsizetype k) { return s[k] == u'\n' || s[k] == u'\f'; };
    const qsizetype length = qsizetype(lineLength);
    qsizetype nextLineFeed = -1, nextFormFeed = -1;
    const auto nextColumnReset = [&](qsizetype from) {
        const auto next = [&](qsizetype &cached, char16_t unit) {
            if (cached != total && cached < from) {
                cached = s.indexOf(QChar(unit), from);
                cached = cached < 0 ? total : cached;
            }
            return cached;
        };
        return std::min(next(nextLineFeed, u'\n'), next(nextFormFeed, u'\f'));
    };

    QString result;
    result.reserve(total + total / length + 1);
    qsizetype copied = 0;
    qsizetype lineFrom = 0;                      // where counting began after the last break
    qsizetype columnFrom = 0, columnCarried = 0; // where the column was last set back, and what it held there
    for (;;) {
        const qsizetype need = length > columnCarried ? length - columnCarried : 1;
        const qsizetype at = columnFrom + need - 1;
        if (at >= total)
            break;
        if (const qsizetype reset = nextColumnReset(columnFrom); reset <= at) {
            columnFrom = reset + 1; // the run deliberately goes on across the line end
            columnCarried = 0;
            continue;
        }
        const qsizetype column = columnCarried + need;

        qsizetype breakAt = at;
        if (!isSpace(at)) {
            // The run back to the break, LF and FF passed over. (A run reaching the break may leave out the
            // second half of a pair stepped over there: such a run is as long as the column, or one short
            // with the word not fitting, and the break stays where it is either way.)
            qsizetype run = 0;
            for (qsizetype k = at; k >= lineFrom && (setsColumnBack(k) || !isSpace(k)); --k)
                run += !setsColumnBack(k);
            // The unit at the break is already in the run and is counted once more here.
            qsizetype count = run;
            for (qsizetype j = at; j < total && count <= length && !isSpace(j); ++j)
                ++count;
            if (column > run && count < length)
                breakAt = at - run; // back to the whitespace before a word that fits a line
            else if (VTSplitsSurrogatePair(s, breakAt))
                --breakAt;
        }
        result.append(s.sliced(copied, breakAt - copied));
        result.append(u'\n');
        copied = breakAt;
        // The character after the break is stepped over without being counted; of a surrogate pair only
        // the first unit goes uncounted, so that no line grows past the length.
        const qsizetype width = VTCodePointAt(s, breakAt).width;
        lineFrom = columnFrom = breakAt + width;
        columnCarried = width - 1;
    }
    result.append(s.sliced(copied));
    return result;
}

QString stringByMatchingCase(const QString &string, const QString &pattern)
{
    if (pattern.isEmpty() || !pattern.front().isUpper())
        return string;
    if (std::all_of(pattern.cbegin(), pattern.cend(), [](QChar c) { return c.isUpper(); }))
        return string.toUpper();

    const QStringView s(string);
    const quint64 total = quint64(s.size());
    QString result;
    result.reserve(s.size());
    quint64 i = 0;
    while (i < total) {
        const VeltoRange word =
            rangeOfCharacterFromSetVelto(s, VeltoCharacterSet::nonWhitespaceCharacterSet(), {}, {i, total - i});
        if (word.location == VeltoNotFound) {
            result.append(s.sliced(qsizetype(i)));
            break;
        }
        const VeltoRange gap = rangeOfCharacterFromSetVelto(s, VeltoCharacterSet::allWhitespaceCharacterSet(), {},
                                                            {word.location, total - word.location});
        const quint64 end = gap.location == VeltoNotFound ? total : gap.location;
        result.append(s.sliced(qsizetype(i), qsizetype(word.location - i)));
        result.append(s.sliced(qsizetype(word.location), qsizetype(word.length)).toString().toUpper());
        result.append(s.sliced(qsizetype(word.end()), qsizetype(end - word.end())).toString().toLower());
        i = end;
    }
    return result;
}

QString toggledcaseString(const QString &string)
{
    QString result = string;
    for (qsizetype i = result.size() - 1; i >= 0; --i) {
        const wint_t unit = result.at(i).unicode();
        wint_t converted = unit;
        if (std::iswupper(unit))
            converted = std::towlower(unit);
        else if (std::iswlower(unit))
            converted = std::towupper(unit);
        else
            continue;
        // Formatted with "%c": only the low byte of the converted code survives.
        result[i] = QChar(char16_t(static_cast<unsigned char>(converted)));
    }
    return result;
}

} // namespace velto

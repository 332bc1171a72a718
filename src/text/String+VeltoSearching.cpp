// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoSearching.h"

namespace velto {

namespace {

constexpr VeltoRange NoRange{VeltoNotFound, 0};

} // namespace

VeltoRange rangeOfStringVelto(QStringView string, QStringView target, VeltoStringCompareOptions options,
                              VeltoRange range)
{
    if (target.isEmpty() || !isRangeInsideVelto(range, quint64(string.size()))
        || range.length < quint64(target.size()))
        return NoRange;
    const QStringView window = string.sliced(qsizetype(range.location), qsizetype(range.length));
    const Qt::CaseSensitivity cs =
        options.testFlag(VeltoStringCompareOption::CaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    qsizetype found = -1;
    if (options.testFlag(VeltoStringCompareOption::Anchored)) {
        if (options.testFlag(VeltoStringCompareOption::Backwards))
            found = window.endsWith(target, cs) ? window.size() - target.size() : -1;
        else
            found = window.startsWith(target, cs) ? 0 : -1;
    } else if (options.testFlag(VeltoStringCompareOption::Backwards)) {
        found = window.lastIndexOf(target, -1, cs);
    } else {
        found = window.indexOf(target, 0, cs);
    }
    if (found < 0)
        return NoRange;
    return {range.location + quint64(found), quint64(target.size())};
}

VeltoRange rangeOfStringVelto(QStringView string, QStringView target, VeltoStringCompareOptions options)
{
    return rangeOfStringVelto(string, target, options, {0, quint64(string.size())});
}

VeltoRange rangeOfCharacterFromSetVelto(QStringView string, const VeltoCharacterSet &set,
                                        VeltoStringCompareOptions options, VeltoRange range)
{
    if (range.length == 0 || !isRangeInsideVelto(range, quint64(string.size())))
        return NoRange;
    const char16_t *units = string.utf16();
    const qsizetype first = qsizetype(range.location);
    const qsizetype end = qsizetype(range.end());
    const bool anchored = options.testFlag(VeltoStringCompareOption::Anchored);

    if (!options.testFlag(VeltoStringCompareOption::Backwards)) {
        for (qsizetype i = first; i < end;) {
            qsizetype width = 1;
            char32_t codePoint = units[i];
            if (QChar::isHighSurrogate(codePoint) && i + 1 < end && QChar::isLowSurrogate(units[i + 1])) {
                codePoint = QChar::surrogateToUcs4(units[i], units[i + 1]);
                width = 2;
            }
            if (set.contains(codePoint))
                return {quint64(i), quint64(width)};
            if (anchored)
                break;
            i += width;
        }
        return NoRange;
    }
    for (qsizetype i = end - 1; i >= first;) {
        qsizetype start = i;
        char32_t codePoint = units[i];
        if (QChar::isLowSurrogate(codePoint) && i - 1 >= first && QChar::isHighSurrogate(units[i - 1])) {
            codePoint = QChar::surrogateToUcs4(units[i - 1], units[i]);
            start = i - 1;
        }
        if (set.contains(codePoint))
            return {quint64(start), quint64(i - start + 1)};
        if (anchored)
            break;
        i = start - 1;
    }
    return NoRange;
}

VeltoRange rangeOfCharacterFromSetVelto(QStringView string, const VeltoCharacterSet &set,
                                        VeltoStringCompareOptions options)
{
    return rangeOfCharacterFromSetVelto(string, set, options, {0, quint64(string.size())});
}

} // namespace velto

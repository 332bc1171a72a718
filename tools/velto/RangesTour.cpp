// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The ranges stop of `velto tour`: found words kept in a range array while the text is edited.

#include "Commands.h"
#include "Tour.h"

#include "VeltoMutableRangeArray.h"
#include "VeltoRangeUtil.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString rangeText(VeltoRange range)
{
    return range.location == VeltoNotFound ? u"(VeltoNotFound, 0)"_s : VeltoRange_ToString(range);
}

QString show(const QString &text, const VeltoAbstractRangeArray &ranges)
{
    QStringList parts;
    ranges.enumerateRangesVeltoUsing([&](VeltoRange range, quint64, bool *) {
        parts << u"%1 %2"_s.arg(VeltoRange_ToString(range), quoted(text.mid(qsizetype(range.location), qsizetype(range.length))));
    });
    return parts.join(u", "_s);
}

// Replaces the characters of \a replaced by \a replacement, and carries the ranges across the edit.
void edit(Tour &tour, QString &text, VeltoMutableRangeArray &ranges, VeltoRange replaced, const QString &replacement)
{
    const QString description = replacement.isEmpty() ? u"delete %1"_s.arg(quoted(text.mid(qsizetype(replaced.location), qsizetype(replaced.length))))
                                                      : replaced.length == 0 ? u"insert %1 at %2"_s.arg(quoted(replacement)).arg(replaced.location)
                                                                             : u"replace %1 by %2"_s.arg(quoted(text.mid(qsizetype(replaced.location), qsizetype(replaced.length))), quoted(replacement));
    text.replace(qsizetype(replaced.location), qsizetype(replaced.length), replacement);
    const VeltoRange editRange{replaced.location, quint64(replacement.size())};
    const quint64 delta = quint64(replacement.size()) - replaced.length;
    const bool changed = ranges.adjustRangesForEditInRange(editRange, delta);
    tour.say(u"%1: edit range %2, delta %3%4"_s.arg(description, VeltoRange_ToString(editRange)).arg(qint64(delta))
                 .arg(changed ? QString() : u" (no range changed)"_s));
    tour.say(u"  %1"_s.arg(quoted(text)));
    tour.say(u"  %1"_s.arg(show(text, ranges)));
}

void rangesStop(Tour &tour)
{
    tour.stop(u"Ranges carried across text edits"_s);
    QString text = u"The quick brown fox jumps over the lazy dog."_s;
    auto found = VeltoMutableRangeArray::init();
    for (const QString &word : {u"quick"_s, u"fox"_s, u"lazy"_s})
        found->insertSortedRange({quint64(text.indexOf(word)), quint64(word.size())});
    tour.say(u"%1 with the found words in a VeltoMutableRangeArray (capacity %2):"_s.arg(quoted(text)).arg(found->capacity()));
    tour.say(u"  %1"_s.arg(show(text, *found)));

    edit(tour, text, *found, {4, 0}, u"very "_s);        // before every range: all move
    edit(tour, text, *found, {15, 6}, QString());         // "brown " between two ranges
    edit(tour, text, *found, {19, 10}, u"sleeps beside"_s);
    edit(tour, text, *found, {15, 3}, u"brown bear"_s);   // a whole range replaced: it covers the new text
    edit(tour, text, *found, {14, 0}, u"ish"_s);          // at a range's end: not absorbed
    edit(tour, text, *found, {9, 1}, u"Q"_s);             // same length: nothing moves

    // Where the two edit rules part: replacing text across the start of a range.
    const VeltoRange lazy = found->rangeAtIndex(2);
    const VeltoRange straddling{lazy.location - 4, 0};
    const quint64 deleteFive = quint64(0) - 5;
    tour.say(u"deleting 5 characters from %1, across the start of %2:"_s.arg(straddling.location).arg(VeltoRange_ToString(lazy)));
    tour.say(u"  VeltoRange_AdjustedPerfectlyForEdit gives up: %1"_s
                 .arg(rangeText(VeltoRange_AdjustedPerfectlyForEdit(lazy, straddling, deleteFive))));
    tour.say(u"  VeltoRange_AdjustedUnionForEdit keeps what is left: %1"_s
                 .arg(VeltoRange_ToString(VeltoRange_AdjustedUnionForEdit(lazy, straddling, deleteFive))));

    found->addRange({0, 3});
    found->addRange({2, 6});
    const auto normalized = found->arrayByNormalizingRanges();
    tour.say(u"adding {0, 3} and {2, 6}, then normalising (sorted, overlaps joined):"_s);
    tour.say(u"  %1"_s.arg(show(text, *normalized)));
    tour.say(u"the gaps between them, arrayByInvertingRangesWithinLimit(%1):"_s.arg(text.size()));
    tour.say(u"  %1"_s.arg(show(text, *normalized->arrayByInvertingRangesWithinLimit(quint64(text.size())))));
}

const bool rangesStopRegistered = registerTourStop(300, rangesStop);

} // namespace

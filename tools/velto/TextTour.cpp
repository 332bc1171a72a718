// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The tour's text stop: a replacement pass over a document (and one that finds nothing, which copies
// nothing), pretty truncation for display, numbers with units, file sizes, and the stored date text.

#include "Commands.h"
#include "Tour.h"

#include "DateTime+VeltoAdditions.h"
#include "String+VeltoDisplay.h"
#include "String+VeltoReplacing.h"
#include "VeltoFileSizeFormatter.h"
#include "VeltoNumberFormatter.h"
#include "VeltoStringReplacer.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

void textStop(Tour &tour)
{
    tour.stop(u"Text and values: replacing, truncating, numbers, file sizes, dates"_s);

    const QString letter = u"Dear Sam,\r\nthe draft is ready.\rSam, please read the draft.\n"_s;
    VeltoStringReplacer replacer(letter);
    const quint64 names = replacer.replaceAllOccurrencesOfString(u"Sam"_s, u"Alex"_s);
    const quint64 endings = replacer.replaceAllLineEndingsWithString(u"\n"_s);
    tour.say(u"%1 -> %2"_s.arg(quoted(letter), quoted(replacer.finalizedString())));
    tour.say(u"  (%1 names replaced; %2 line endings made LF, the lone LF left as it was)"_s.arg(names).arg(endings));
    const QString unchanged = velto::stringByReplacingAllOccurrencesOfString(letter, u"Robin"_s, u"Kim"_s);
    tour.say(u"replacing a name that is not there answers the original characters, not a copy: %1"_s
                 .arg(unchanged.constData() == letter.constData() ? u"yes"_s : u"no"_s));

    const QString title = u"The quarterly report on regional sales"_s;
    tour.say(u"pretty truncation to 20: %1"_s
                 .arg(quoted(velto::stringByPrettyTruncationToLength(title, 20, true, u"\u2026"_s))));

    VeltoNumberFormatter width(u"cm"_s, true);
    width.setMaximumFractionDigits(6);
    width.setMaximumDecimalDigitsVelto(2);
    QStringList widths;
    for (double value : {0.0, 1.237, 1.2000, 99.997})
        widths << width.stringForObjectValue(value);
    tour.say(u"widths with at most two decimals: %1"_s.arg(widths.join(u", "_s)));

    QStringList sizes;
    for (quint64 bytes : {quint64(0), quint64(1'025), quint64(5'300'000), quint64(1'048'576), quint64(3'221'225'472)})
        sizes << u"%1 bytes = %2 / %3"_s.arg(bytes).arg(VeltoFileSizeFormatter::localizedStringForFileSize(bytes),
                                                      VeltoFileSizeFormatter::localizedStringForByteCount(bytes));
    tour.say(u"file sizes (decimal for display / binary counts):"_s);
    for (const QString &line : sizes)
        tour.say(u"  "_s + line);
    tour.say(u"reading \"12 MB\" back: %1 bytes"_s.arg(VeltoFileSizeFormatter::fileSizeFromLocalizedString(u"12 MB"_s)));

    const QDateTime moment = velto::dateWithGregorianVeltoYear(2024, 5, 17, 14, 30, 0, QTimeZone("Europe/Berlin"));
    const QString stored = velto::stringValueForPlistVelto(moment);
    tour.say(u"a date as stored in settings: %1, reads back to the same instant: %2"_s
                 .arg(quoted(stored), velto::dateWithStringValueFromPlistVelto(stored) == moment ? u"yes"_s : u"no"_s));
}

const bool registered = registerTourStop(800, textStop);

} // namespace

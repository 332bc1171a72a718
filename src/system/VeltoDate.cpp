// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDate.h"

#include <mutex>

using namespace Qt::StringLiterals;

class VeltoDate::Private
{
public:
    // Whichever form was given is set from the start; the other is derived once, on first request.
    mutable std::optional<QDateTime> date;
    mutable std::optional<Components> components;
    mutable std::once_flag dateDerived;
    mutable std::once_flag componentsDerived;
    bool madeFromComponents = false;
};

namespace {

// Far beyond any calendar in use; keeps the carrying arithmetic below well inside 64 bits.
constexpr qint64 FieldLimit = 100'000'000;
constexpr qint64 SecondsPerDay = 86'400;

qint64 floorDivide(qint64 value, qint64 divisor)
{
    const qint64 quotient = value / divisor;
    return (value % divisor != 0 && value < 0) ? quotient - 1 : quotient;
}

QDateTime gregorianDate(const VeltoDate::Components &c)
{
    for (const qint64 field : {c.year, c.month, c.day, c.hour, c.minute, c.second}) {
        if (field > FieldLimit || field < -FieldLimit)
            return {};
    }
    // Out-of-range months, times of day and days carry over.
    const qint64 months = c.year * 12 + (c.month - 1);
    const qint64 year = floorDivide(months, 12);
    const int month = int(months - year * 12) + 1;
    const qint64 seconds = c.hour * 3600 + c.minute * 60 + c.second;
    const qint64 extraDays = floorDivide(seconds, SecondsPerDay);
    // Astronomical year 0 is 1 BC, which QDate numbers −1.
    const QDate firstOfMonth(int(year > 0 ? year : year - 1), month, 1);
    const QDate day = firstOfMonth.addDays(c.day - 1 + extraDays);
    const QTime time = QTime::fromMSecsSinceStartOfDay(int((seconds - extraDays * SecondsPerDay) * 1000));
    return QDateTime(day, time, c.timeZone.isValid() ? c.timeZone : QTimeZone::systemTimeZone());
}

std::optional<VeltoDate::Components> gregorianComponents(const QDateTime &date)
{
    if (!date.isValid())
        return std::nullopt;
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QDateTime local = date.toTimeZone(zone);
    const QDate day = local.date();
    const QTime time = local.time();
    return VeltoDate::Components{day.year() < 0 ? day.year() + 1 : day.year(), day.month(), day.day(),
                                 time.hour(), time.minute(), time.second(), zone};
}

} // namespace

VeltoDate::VeltoDate() : d(std::make_shared<Private>()) {}

VeltoDate::VeltoDate(const QDateTime &date)
{
    auto made = std::make_shared<Private>();
    made->date = date;
    d = std::move(made);
}

VeltoDate::VeltoDate(const Components &components)
{
    auto made = std::make_shared<Private>();
    made->components = components;
    made->madeFromComponents = true;
    d = std::move(made);
}

VeltoDate VeltoDate::now()
{
    return VeltoDate(QDateTime::currentDateTime());
}

VeltoDate VeltoDate::dateWithDate(const QDateTime &date)
{
    return VeltoDate(date);
}

VeltoDate VeltoDate::dateWithDateComponents(const Components &components)
{
    return VeltoDate(components);
}

VeltoDate VeltoDate::dateWithYear(qint64 year, qint64 month, qint64 day)
{
    return VeltoDate(Components{year, month, day, 0, 0, 0, QTimeZone()});
}

VeltoDate VeltoDate::dateWithYear(qint64 year, qint64 month, qint64 day, qint64 hour, qint64 minute,
                                  qint64 second, const QTimeZone &timeZone)
{
    return VeltoDate(Components{year, month, day, hour, minute, second, timeZone});
}

QDateTime VeltoDate::date() const
{
    std::call_once(d->dateDerived, [this] {
        if (!d->date && d->components)
            d->date = gregorianDate(*d->components);
    });
    return d->date.value_or(QDateTime());
}

std::optional<VeltoDate::Components> VeltoDate::dateComponents() const
{
    std::call_once(d->componentsDerived, [this] {
        if (!d->components && d->date)
            d->components = gregorianComponents(*d->date);
    });
    return d->components;
}

QTimeZone VeltoDate::timeZone() const
{
    const std::optional<Components> components = dateComponents();
    return components && components->timeZone.isValid() ? components->timeZone : QTimeZone::systemTimeZone();
}

int VeltoDate::compare(const VeltoDate &other) const
{
    const QDateTime mine = date();
    const QDateTime theirs = other.date();
    if (!mine.isValid() || !theirs.isValid())
        return int(mine.isValid()) - int(theirs.isValid());
    const qint64 a = mine.toMSecsSinceEpoch();
    const qint64 b = theirs.toMSecsSinceEpoch();
    return a < b ? -1 : (a > b ? 1 : 0);
}

QString VeltoDate::description() const
{
    QString shown;
    if (d->madeFromComponents)
        shown = d->components->description();
    else if (const QDateTime moment = date(); moment.isValid())
        shown = moment.toUTC().toString(u"yyyy-MM-dd HH:mm:ss +0000"_s);
    else
        shown = u"(null)"_s;
    return u"VeltoDate<%1>: %2"_s.arg(QString::asprintf("%p", static_cast<const void *>(d.get())), shown);
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "DateTime+VeltoAdditions.h"

#include "VTNumberConversion_p.h"
#include "VeltoDate.h"
#include "VeltoDateFormatter.h"

namespace velto {

// VeltoDate holds the one implementation of Gregorian components and their carrying rules.

VeltoDateComponents nowGregorianVelto()
{
    return VeltoDate::now().dateComponents().value_or(VeltoDateComponents());
}

VeltoDateComponents dateComponentsVeltoWithYear(qint64 year, qint64 month, qint64 day)
{
    return VeltoDateComponents{year, month, day, 0, 0, 0, QTimeZone()};
}

VeltoDateComponents dateComponentsVeltoWithYear(qint64 year, qint64 month, qint64 day, qint64 hour, qint64 minute,
                                                qint64 second, const QTimeZone &timeZone)
{
    return VeltoDateComponents{year, month, day, hour, minute, second, timeZone};
}

QDateTime dateWithGregorianVeltoYear(qint64 year, qint64 month, qint64 day)
{
    return VeltoDate(dateComponentsVeltoWithYear(year, month, day)).date();
}

QDateTime dateWithGregorianVeltoYear(qint64 year, qint64 month, qint64 day, qint64 hour, qint64 minute,
                                     qint64 second, const QTimeZone &timeZone)
{
    return VeltoDate(dateComponentsVeltoWithYear(year, month, day, hour, minute, second, timeZone)).date();
}

QDateTime dateWithGregorianVeltoComponents(const std::optional<VeltoDateComponents> &components)
{
    return components ? VeltoDate(*components).date() : QDateTime();
}

std::optional<VeltoDateComponents> componentsInGregorianCalendarVelto(const QDateTime &date)
{
    return VeltoDate(date).dateComponents();
}

double secondsForTickCount(quint32 ticks)
{
    return ticks / 60.0;
}

qint64 tickCountForSeconds(double seconds)
{
    return VTNumberConversion::truncatedInteger(seconds * 60.0);
}

QString stringValueForPlistVelto(const QDateTime &date)
{
    return VeltoDateFormatter::stringFromDate(date, PlistDatePattern);
}

QDateTime dateWithStringValueFromPlistVelto(const QString &string)
{
    return VeltoDateFormatter(PlistDatePattern).dateFromString(string);
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file DateTime+VeltoAdditions.h
 * \brief Additions to QDateTime: Gregorian dates from and to components, sixtieth-of-a-second ticks, and
 * the text in which dates are kept in property lists and user defaults.
 *
 * \code
 * const QDateTime due = velto::dateWithGregorianVeltoYear(2024, 12, 31);
 * defaults.setObject(velto::stringValueForPlistVelto(due), u"due"_s);   // "2024-12-31 00:00:00 GMT+1"
 * const QDateTime back = velto::dateWithStringValueFromPlistVelto(defaults.objectForKey(u"due"_s).toString());
 * \endcode
 *
 * Components use the proleptic Gregorian calendar (see VeltoDateComponents.h); components without a time
 * zone are read in the default (system) time zone. The plist date text has the ICU pattern
 * PlistDatePattern and keeps whole seconds.
 */

#include "VeltoDateComponents.h"
#include "veltocore_export.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace velto {

/// The pattern of the plist date text: four-digit year, month, day, 24-hour time, short time-zone name.
inline constexpr QLatin1StringView PlistDatePattern{"yyyy-MM-dd HH:mm:ss zzz"};

/// nowGregorianVelto: the current moment's components in the default time zone (which they carry).
[[nodiscard]] VELTOCORE_EXPORT VeltoDateComponents nowGregorianVelto();

/// dateComponentsVeltoWithYear: components with exactly \a year, \a month and \a day set (the time 0, no zone).
[[nodiscard]] VELTOCORE_EXPORT VeltoDateComponents dateComponentsVeltoWithYear(qint64 year, qint64 month, qint64 day);
/// dateComponentsVeltoWithYear: components with every field given; an invalid \a timeZone leaves it unset.
[[nodiscard]] VELTOCORE_EXPORT VeltoDateComponents dateComponentsVeltoWithYear(qint64 year, qint64 month, qint64 day,
    qint64 hour, qint64 minute, qint64 second, const QTimeZone &timeZone);

/// dateWithGregorianVeltoYear: the date of dateComponentsVeltoWithYear(year, month, day): midnight in
/// the default time zone. Fields out of range carry over; beyond ±100,000,000 the date is invalid.
[[nodiscard]] VELTOCORE_EXPORT QDateTime dateWithGregorianVeltoYear(qint64 year, qint64 month, qint64 day);
/// dateWithGregorianVeltoYear: the date of the components with every field given (an invalid
/// \a timeZone means the default one).
[[nodiscard]] VELTOCORE_EXPORT QDateTime dateWithGregorianVeltoYear(qint64 year, qint64 month, qint64 day,
    qint64 hour, qint64 minute, qint64 second, const QTimeZone &timeZone);
/// dateWithGregorianVeltoComponents: the date of \a components in the Gregorian calendar; an invalid
/// QDateTime for empty components.
[[nodiscard]] VELTOCORE_EXPORT QDateTime dateWithGregorianVeltoComponents(
    const std::optional<VeltoDateComponents> &components);
/// componentsInGregorianCalendarVelto: \a date's components in the default time zone (which they carry);
/// empty for an invalid date.
[[nodiscard]] VELTOCORE_EXPORT std::optional<VeltoDateComponents> componentsInGregorianCalendarVelto(
    const QDateTime &date);

/// secondsForTickCount: \a ticks sixtieths of a second, in seconds (90 → 1.5).
[[nodiscard]] VELTOCORE_EXPORT double secondsForTickCount(quint32 ticks);
/// tickCountForSeconds: \a seconds × 60 truncated toward zero (0.99 → 59); saturated at the qint64
/// limits, NaN gives 0.
[[nodiscard]] VELTOCORE_EXPORT qint64 tickCountForSeconds(double seconds);

/**
 * stringValueForPlistVelto: \a date as plist date text ("2024-07-01 08:00:00 EDT"), made with
 * VeltoDateFormatter::stringFromDate(), so in VeltoFormatter::currentLocaleVelto() and the system time
 * zone; null for an invalid date.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringValueForPlistVelto(const QDateTime &date);
/**
 * dateWithStringValueFromPlistVelto: the date of plist date text, read by a new VeltoDateFormatter with
 * its own default locale (QLocale(), not the library's override: text written under an override in
 * another locale may not read back, deliberately kept); an invalid QDateTime for null, empty or
 * unreadable text.
 */
[[nodiscard]] VELTOCORE_EXPORT QDateTime dateWithStringValueFromPlistVelto(const QString &string);

} // namespace velto

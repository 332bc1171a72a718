// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDate.h
 * \brief VeltoDate: a calendar value (a release date, a deadline) held as an instant, as Gregorian date
 * components, or both; each form is derived from the other the first time it is asked for and then kept.
 *
 * \code
 * const VeltoDate released = VeltoDate::dateWithYear(2024, 5, 17);
 * if (VeltoDate::now().compare(released) < 0)
 *     showCountdown(released.date());
 * \endcode
 *
 * Components use the Gregorian calendar with astronomical year numbering (year 0 is 1 BC). Fields
 * outside their usual range carry over into the next larger field, as calendars do: month 13 is January
 * of the next year, day 0 the last day of the month before, second 60 the next minute. A component
 * without a time zone is read in the default (system) time zone.
 *
 * A VeltoDate is immutable and implicitly shared; the lazily derived form is computed once and is safe
 * to ask for from several threads.
 */

#include "VeltoDateComponents.h"
#include "veltocore_export.h"

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QTimeZone>

#include <memory>
#include <optional>

class VELTOCORE_EXPORT VeltoDate
{
public:
    /// Components: the shared Gregorian components type (VeltoDateComponents.h).
    using Components = VeltoDateComponents;

    /// A value with neither a date nor components: date() is null, dateComponents() empty.
    VeltoDate();
    /// initWithDate: keeps a copy of \a date; the components are derived on request.
    explicit VeltoDate(const QDateTime &date);
    /// initWithDateComponents: keeps a copy of \a components; the date is derived on request.
    explicit VeltoDate(const Components &components);

    /// now: the current moment.
    [[nodiscard]] static VeltoDate now();
    /// dateWithDate: VeltoDate(date).
    [[nodiscard]] static VeltoDate dateWithDate(const QDateTime &date);
    /// dateWithDateComponents: VeltoDate(components).
    [[nodiscard]] static VeltoDate dateWithDateComponents(const Components &components);
    /// dateWithYear: the components year, month, day (midnight, no time zone).
    [[nodiscard]] static VeltoDate dateWithYear(qint64 year, qint64 month, qint64 day);
    /// dateWithYear: the components with every field given; an invalid \a timeZone leaves it unset.
    [[nodiscard]] static VeltoDate dateWithYear(qint64 year, qint64 month, qint64 day, qint64 hour, qint64 minute,
                                                qint64 second, const QTimeZone &timeZone = {});

    /**
     * date: the stored date, or the Gregorian calendar's date for the components (in their time zone,
     * else the default one). Null when there are neither, or when a field lies beyond ±100,000,000.
     */
    [[nodiscard]] QDateTime date() const;
    /**
     * dateComponents: the stored components, or the date's components in the Gregorian calendar and the
     * default time zone (whose id they carry); empty when there is no valid date to split.
     */
    [[nodiscard]] std::optional<Components> dateComponents() const;
    /// timeZone: the components' time zone, or the default (system) time zone.
    [[nodiscard]] QTimeZone timeZone() const;

    /// compare: −1, 0 or +1 as date() is earlier than, equal to or later than \a other's; a null date is
    /// earlier than any other and equal to another null date.
    [[nodiscard]] int compare(const VeltoDate &other) const;

    /// description: VeltoDate<address>: and the components' description when made from components, else
    /// the date as "yyyy-MM-dd HH:mm:ss +0000" (UTC), or "(null)".
    [[nodiscard]] QString description() const;

private:
    class Private;
    std::shared_ptr<const Private> d;
};

Q_DECLARE_METATYPE(VeltoDate)

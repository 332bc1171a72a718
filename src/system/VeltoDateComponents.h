// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDateComponents.h
 * \brief VeltoDateComponents: Gregorian date and time-of-day fields and an optional time zone, shared by
 * VeltoDate and the date additions (DateTime+VeltoAdditions.h).
 *
 * \code
 * const VeltoDateComponents release = velto::dateComponentsVeltoWithYear(2024, 5, 17);
 * const QDateTime moment = velto::dateWithGregorianVeltoComponents(release);
 * \endcode
 *
 * Years are astronomical (year 0 is 1 BC). Fields outside their usual range carry over when a date is
 * made from them (month 13 is January of the next year). A field that is not set is 0; a time zone that
 * is not set is an invalid (default-constructed) QTimeZone, read as the default (system) time zone.
 */

#include "veltocore_export.h"

#include <QString>
#include <QTimeZone>

/// VeltoDateComponents: Gregorian date and time-of-day fields and an optional time zone.
struct VELTOCORE_EXPORT VeltoDateComponents
{
    qint64 year = 0;
    qint64 month = 0;
    qint64 day = 0;
    qint64 hour = 0;
    qint64 minute = 0;
    qint64 second = 0;
    QTimeZone timeZone; ///< invalid (default-constructed) when not set

    bool operator==(const VeltoDateComponents &) const = default;
    /// description: "yyyy-MM-dd HH:mm:ss" followed by a space and the time zone's id when set.
    [[nodiscard]] QString description() const;
};

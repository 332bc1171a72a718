// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDateFormatter.h
 * \brief VeltoDateFormatter: dates as text and back with a Unicode (ICU/CLDR) date pattern such as
 * "yyyy-MM-dd HH:mm:ss zzz", in the Gregorian calendar, a locale and a time zone.
 *
 * \code
 * const QString text = VeltoDateFormatter::stringFromDate(QDateTime::currentDateTime(), u"yyyy-MM-dd"_s);
 * VeltoDateFormatter reader(u"yyyy-MM-dd HH:mm:ss zzz"_s);
 * const QDateTime back = reader.dateFromString(u"2024-07-01 08:00:00 EDT"_s);   // invalid if unreadable
 * \endcode
 *
 * Patterns are ICU's, not QDateTime::toString()'s: "zzz" is the short time-zone name ("EDT", "GMT+2"),
 * where Qt would read milliseconds. The calendar is the proleptic Gregorian one (as QDate's), whatever the
 * locale's own calendar. Parsing is strict and must use the whole text; a short zone name is resolved
 * with the formatter's time zone as a hint (so "EST" is New York's, "GMT+5:30" an exact offset). Text made
 * in one locale may not read back in another ("MESZ" is German), so write and read in the same locale.
 *
 * A formatter may be used from several threads (calls are serialized); changing its settings while
 * another thread formats is not safe.
 */

#include "VeltoFormatter.h"
#include "veltocore_export.h"

#include <QDateTime>
#include <QTimeZone>

#include <memory>

class VELTOCORE_EXPORT VeltoDateFormatter : public VeltoFormatter
{
public:
    /**
     * A formatter for \a pattern in \a locale (by default QLocale(), the user's locale: not the library's
     * override, which dateFormatterWithFormat() applies) and \a timeZone (an invalid zone, the default,
     * means the system time zone).
     */
    explicit VeltoDateFormatter(const QString &pattern = {}, const QLocale &locale = QLocale(),
                                const QTimeZone &timeZone = {});
    VeltoDateFormatter(const VeltoDateFormatter &other);
    VeltoDateFormatter(VeltoDateFormatter &&other) noexcept;
    VeltoDateFormatter &operator=(const VeltoDateFormatter &other);
    VeltoDateFormatter &operator=(VeltoDateFormatter &&other) noexcept;
    ~VeltoDateFormatter() override;

    /// dateFormatterWithFormat: a formatter for \a pattern in currentLocaleVelto() and the system time zone.
    [[nodiscard]] static VeltoDateFormatter dateFormatterWithFormat(const QString &pattern);
    /// stringFromDate: \a date as text with \a pattern, the Gregorian calendar, currentLocaleVelto() and
    /// the system time zone; null for an invalid date.
    [[nodiscard]] static QString stringFromDate(const QDateTime &date, const QString &pattern);

    /// dateFormat: the pattern.
    [[nodiscard]] QString dateFormat() const;
    void setDateFormat(const QString &pattern);
    /// locale: the locale of month names, digits and zone names. The C locale is ICU's en_US_POSIX.
    [[nodiscard]] QLocale locale() const;
    void setLocale(const QLocale &locale);
    /// timeZone: the zone dates are shown in and the hint for reading zone names (never invalid).
    [[nodiscard]] QTimeZone timeZone() const;
    /// setTimeZone: an invalid zone means the system time zone.
    void setTimeZone(const QTimeZone &timeZone);

    /// stringFromDate: \a date (to the second) as text; null for an invalid date.
    [[nodiscard]] QString stringFromDate(const QDateTime &date) const;
    /// dateFromString: the date \a string stands for, in the formatter's time zone; an invalid QDateTime
    /// when the text does not match the pattern completely (empty and null texts included).
    [[nodiscard]] QDateTime dateFromString(const QString &string) const;

    /// stringForObjectValue: stringFromDate() of a QDateTime; null for any other value.
    [[nodiscard]] QString stringForObjectValue(const QVariant &value) const override;
    /// getObjectValue: dateFromString() as a QDateTime; false with "Invalid date" when it is invalid.
    [[nodiscard]] bool getObjectValue(QVariant *value, const QString &string,
                                      QString *errorDescription = nullptr) const override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDateFormatter.h"

#include "VTNumberConversion_p.h"

#include <QMutex>

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>

using namespace Qt::StringLiterals;

namespace {

// The ICU locale id of a QLocale: the full tag canonicalized and minimized ("en_IN", "sr_Latn"), with the
// Gregorian calendar forced (a Thai locale would otherwise count Buddhist years).
QByteArray icuLocaleId(const QLocale &locale)
{
    QByteArray id = "en_US_POSIX";
    if (locale.language() != QLocale::C) {
        const QString tag = u"%1-%2-%3"_s.arg(QLocale::languageToCode(locale.language()),
                                              QLocale::scriptToCode(locale.script()),
                                              QLocale::territoryToCode(locale.territory()));
        char full[ULOC_FULLNAME_CAPACITY] = {};
        char minimal[ULOC_FULLNAME_CAPACITY] = {};
        UErrorCode status = U_ZERO_ERROR;
        int32_t parsed = 0;
        uloc_forLanguageTag(tag.toLatin1().constData(), full, sizeof full, &parsed, &status);
        const int32_t length = uloc_minimizeSubtags(full, minimal, sizeof minimal, &status);
        if (U_SUCCESS(status) && length > 0 && length < int32_t(sizeof minimal))
            id = QByteArray(minimal, length);
        else
            id = locale.name().toLatin1();
    }
    char withCalendar[ULOC_FULLNAME_CAPACITY] = {};
    qstrncpy(withCalendar, id.constData(), sizeof withCalendar);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = uloc_setKeywordValue("calendar", "gregorian", withCalendar, sizeof withCalendar, &status);
    return U_SUCCESS(status) ? QByteArray(withCalendar, length) : id;
}

// Qt names fixed-offset zones "UTC+05:30"; ICU knows them as custom ids "GMT+05:30".
QString icuZoneId(const QTimeZone &zone)
{
    const QString id = QString::fromUtf8(zone.id());
    if (id.size() > 3 && id.startsWith(u"UTC"_s) && (id.at(3) == u'+' || id.at(3) == u'-'))
        return u"GMT"_s + id.sliced(3);
    return id;
}

const UChar *uchars(const QString &s)
{
    return reinterpret_cast<const UChar *>(s.utf16());
}

} // namespace

class VeltoDateFormatter::Private
{
public:
    Private(const QString &pattern, const QLocale &locale, const QTimeZone &zone)
        : pattern(pattern), locale(locale), zone(zone.isValid() ? zone : QTimeZone::systemTimeZone())
    {
        reopen();
    }
    ~Private() { close(); }
    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    void close()
    {
        if (format)
            udat_close(format);
        format = nullptr;
    }

    // Made again after every change of settings; a failure leaves no formatter, so every call answers
    // "nothing" instead of using stale settings.
    void reopen()
    {
        close();
        UErrorCode status = U_ZERO_ERROR;
        const QString zoneId = icuZoneId(zone);
        format = udat_open(UDAT_PATTERN, UDAT_PATTERN, icuLocaleId(locale).constData(), uchars(zoneId),
                           int32_t(zoneId.size()), uchars(pattern), int32_t(pattern.size()), &status);
        if (U_FAILURE(status)) {
            close();
            return;
        }
        udat_setLenient(format, false);
        // Proleptic Gregorian, as QDate counts: no switch to the Julian calendar before 1582.
        UCalendar *calendar = ucal_clone(udat_getCalendar(format), &status);
        ucal_setGregorianChange(calendar, U_DATE_MIN, &status);
        if (U_SUCCESS(status))
            udat_setCalendar(format, calendar);
        if (calendar)
            ucal_close(calendar);
    }

    QString pattern;
    QLocale locale;
    QTimeZone zone;
    UDateFormat *format = nullptr;
    // ICU's formatter changes its calendar while it works: one call at a time.
    mutable QMutex mutex;
};

VeltoDateFormatter::VeltoDateFormatter(const QString &pattern, const QLocale &locale, const QTimeZone &timeZone)
    : d(std::make_unique<Private>(pattern, locale, timeZone))
{
}

VeltoDateFormatter::VeltoDateFormatter(const VeltoDateFormatter &other)
    : VeltoFormatter(other), d(std::make_unique<Private>(other.d->pattern, other.d->locale, other.d->zone))
{
}

VeltoDateFormatter::VeltoDateFormatter(VeltoDateFormatter &&other) noexcept = default;

VeltoDateFormatter &VeltoDateFormatter::operator=(const VeltoDateFormatter &other)
{
    if (this != &other)
        d = std::make_unique<Private>(other.d->pattern, other.d->locale, other.d->zone);
    return *this;
}

VeltoDateFormatter &VeltoDateFormatter::operator=(VeltoDateFormatter &&other) noexcept = default;
VeltoDateFormatter::~VeltoDateFormatter() = default;

VeltoDateFormatter VeltoDateFormatter::dateFormatterWithFormat(const QString &pattern)
{
    return VeltoDateFormatter(pattern, currentLocaleVelto());
}

QString VeltoDateFormatter::stringFromDate(const QDateTime &date, const QString &pattern)
{
    return dateFormatterWithFormat(pattern).stringFromDate(date);
}

QString VeltoDateFormatter::dateFormat() const
{
    return d->pattern;
}

void VeltoDateFormatter::setDateFormat(const QString &pattern)
{
    d->pattern = pattern;
    d->reopen();
}

QLocale VeltoDateFormatter::locale() const
{
    return d->locale;
}

void VeltoDateFormatter::setLocale(const QLocale &locale)
{
    d->locale = locale;
    d->reopen();
}

QTimeZone VeltoDateFormatter::timeZone() const
{
    return d->zone;
}

void VeltoDateFormatter::setTimeZone(const QTimeZone &timeZone)
{
    d->zone = timeZone.isValid() ? timeZone : QTimeZone::systemTimeZone();
    d->reopen();
}

QString VeltoDateFormatter::stringFromDate(const QDateTime &date) const
{
    if (!date.isValid() || !d->format)
        return {};
    const UDate moment = UDate(date.toMSecsSinceEpoch());
    QMutexLocker lock(&d->mutex);
    QString text(64, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = udat_format(d->format, moment, reinterpret_cast<UChar *>(text.data()), int32_t(text.size()),
                                 nullptr, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        text.resize(length);
        status = U_ZERO_ERROR;
        length = udat_format(d->format, moment, reinterpret_cast<UChar *>(text.data()), int32_t(text.size()),
                             nullptr, &status);
    }
    if (U_FAILURE(status))
        return {};
    text.truncate(length);
    return text;
}

QDateTime VeltoDateFormatter::dateFromString(const QString &string) const
{
    if (string.isEmpty() || !d->format)
        return {};
    QMutexLocker lock(&d->mutex);
    UErrorCode status = U_ZERO_ERROR;
    int32_t position = 0;
    const UDate moment = udat_parse(d->format, uchars(string), int32_t(string.size()), &position, &status);
    // ICU stops at the first character it cannot use and may still report success: demand the whole text.
    if (U_FAILURE(status) || position != string.size())
        return {};
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(VTNumberConversion::truncatedInteger(moment), d->zone);
    return date.isValid() ? date : QDateTime();
}

QString VeltoDateFormatter::stringForObjectValue(const QVariant &value) const
{
    return value.typeId() == QMetaType::QDateTime ? stringFromDate(value.toDateTime()) : QString();
}

bool VeltoDateFormatter::getObjectValue(QVariant *value, const QString &string, QString *errorDescription) const
{
    const QDateTime date = dateFromString(string);
    if (!date.isValid()) {
        if (errorDescription)
            *errorDescription = u"Invalid date"_s;
        return false;
    }
    if (value)
        *value = date;
    return true;
}

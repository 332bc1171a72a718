// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFormatter.h"

#include <QMutex>

namespace {

// Set at start-up and read by every formatter constructor; a mutex keeps a late change from tearing.
struct LocaleOverride
{
    QMutex mutex;
    std::optional<QLocale> locale;
};

LocaleOverride &localeOverride()
{
    static LocaleOverride instance;
    return instance;
}

} // namespace

VeltoFormatter::~VeltoFormatter() = default;

std::optional<QLocale> VeltoFormatter::defaultVeltoLocale()
{
    LocaleOverride &o = localeOverride();
    QMutexLocker lock(&o.mutex);
    return o.locale;
}

void VeltoFormatter::setDefaultVeltoLocale(std::optional<QLocale> locale)
{
    LocaleOverride &o = localeOverride();
    QMutexLocker lock(&o.mutex);
    o.locale = std::move(locale);
}

QLocale VeltoFormatter::currentLocaleVelto()
{
    return defaultVeltoLocale().value_or(QLocale());
}

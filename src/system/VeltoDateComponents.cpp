// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDateComponents.h"

QString VeltoDateComponents::description() const
{
    const QString text = QString::asprintf("%04lld-%02lld-%02lld %02lld:%02lld:%02lld", static_cast<long long>(year),
                                           static_cast<long long>(month), static_cast<long long>(day),
                                           static_cast<long long>(hour), static_cast<long long>(minute),
                                           static_cast<long long>(second));
    return timeZone.isValid() ? text + u' ' + QString::fromUtf8(timeZone.id()) : text;
}

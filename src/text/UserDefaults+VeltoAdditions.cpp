// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "UserDefaults+VeltoAdditions.h"

#include "DateTime+VeltoAdditions.h"
#include "VTNumberConversion_p.h"
#include "Variant+VeltoCore.h"

namespace velto {

QVariant objectForKey(const VeltoUserDefaults &defaults, const QString &key, const QVariant &defaultValue)
{
    const QVariant value = defaults.objectForKey(key);
    return value.isValid() ? value : defaultValue;
}

bool boolForKey(const VeltoUserDefaults &defaults, const QString &key, bool defaultValue)
{
    const QVariant value = defaults.objectForKey(key);
    return value.isValid() ? boolValueVelto(value) : defaultValue;
}

qint64 integerForKey(const VeltoUserDefaults &defaults, const QString &key, qint64 defaultValue)
{
    const QVariant value = defaults.objectForKey(key);
    return value.isValid() ? VTNumberConversion::integerValue(VTNumberConversion::numberValue(value)) : defaultValue;
}

float floatForKey(const VeltoUserDefaults &defaults, const QString &key, float defaultValue)
{
    const QVariant value = defaults.objectForKey(key);
    return value.isValid() ? float(VTNumberConversion::doubleValue(VTNumberConversion::numberValue(value))) : defaultValue;
}

QDateTime dateForKeyVelto(const VeltoUserDefaults &defaults, const QString &key)
{
    const QVariant value = defaults.objectForKey(key);
    return value.typeId() == QMetaType::QString ? dateWithStringValueFromPlistVelto(value.toString()) : QDateTime();
}

bool setDateVelto(VeltoUserDefaults &defaults, const QDateTime &date, const QString &key, VeltoError *error)
{
    if (!date.isValid())
        return defaults.removeObjectForKey(key, error);
    return defaults.setObject(stringValueForPlistVelto(date), key, error);
}

} // namespace velto

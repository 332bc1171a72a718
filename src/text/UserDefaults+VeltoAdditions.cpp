#include "UserDefaults+VeltoAdditions.h"

#include "DateTime+VeltoAdditions.h"
#include "VTNumberConversion_p.h"
#include "Variant+VeltoCore.h"

namespace velto {

namespace {

// A stored value as a number (qint64 or double QVariant), the way the platform reads one: text is read
// in the C locale as a whole number if it is one, else as a real number.
QVariant numberOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return QVariant(qint64(value.toBool() ? 1 : 0));
    if (VTNumberConversion::isNumber(value))
        return value;
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString().trimmed();
        bool ok = false;
        if (const qint64 whole = QLocale::c().toLongLong(text, &ok); ok)
            return QVariant(whole);
        if (const double real = QLocale::c().toDouble(text, &ok); ok)
            return QVariant(real);
    }
    return QVariant(qint64(0));
}

} // namespace

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
    return value.isValid() ? VTNumberConversion::integerValue(numberOf(value)) : defaultValue;
}

float floatForKey(const VeltoUserDefaults &defaults, const QString &key, float defaultValue)
{
    const QVariant value = defaults.objectForKey(key);
    return value.isValid() ? float(VTNumberConversion::doubleValue(numberOf(value))) : defaultValue;
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

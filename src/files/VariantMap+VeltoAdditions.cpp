// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VariantMap+VeltoAdditions.h"

#include "VTNumberConversion_p.h"
#include "Variant+VeltoCore.h"
#include "VeltoException.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// Both missing, or both present and equal.
bool isSameValue(const QVariantMap &map, const QVariantMap &other, const QString &key)
{
    const auto mine = map.constFind(key);
    const auto theirs = other.constFind(key);
    if (mine == map.constEnd() || theirs == other.constEnd())
        return (mine == map.constEnd()) == (theirs == other.constEnd());
    return *mine == *theirs;
}

// The value under key read by a conversion that only numbers and strings answer.
QVariant convertibleValue(const QVariantMap &map, const QString &key, const char *conversion)
{
    const auto found = map.constFind(key);
    if (found == map.constEnd())
        return {};
    if (!VTNumberConversion::isNumber(*found) && found->typeId() != QMetaType::QString) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"-[%1 %2]: unrecognized selector sent to instance 0x%3"_s
                                 .arg(QLatin1StringView(found->typeName()), QLatin1StringView(conversion))
                                 .arg(quintptr(found->constData()), 0, 16));
    }
    return *found;
}

} // namespace

QVariantMap dictionaryWithObjectSetForAllVeltoKeys(const QVariant &value, const QStringList &keys)
{
    QVariantMap map;
    for (const QString &key : keys)
        map.insert(key, value);
    return map;
}

QVariantMap dictionarySettingObject(const QVariantMap &map, const QVariant &value, const QString &key)
{
    if (!value.isValid() || key.isNull())
        return map;
    QVariantMap copy = map;
    copy.insert(key, value);
    return copy;
}

QVariantMap dictionaryRemovingObjectForKey(const QVariantMap &map, const QString &key)
{
    if (!map.contains(key))
        return map;
    if (map.size() == 1)
        return QVariantMap();
    QVariantMap copy = map;
    copy.remove(key);
    return copy;
}

QVariantMap dictionaryRemovingObjectsForKeys(const QVariantMap &map, const QStringList &keys)
{
    // The copy is made at the first key present; later keys are removed from that same copy.
    QVariantMap result = map;
    for (const QString &key : keys) {
        if (result.contains(key))
            result.remove(key);
    }
    return result;
}

QVariantMap dictionaryByAddingEntriesFromDictionary(const QVariantMap &map, const QVariantMap &other)
{
    if (other.isEmpty() || other.isSharedWith(map))
        return map;
    QVariantMap copy = map;
    copy.insert(other);
    return copy;
}

QVariantMap subdictionaryWithKeys(const QVariantMap &map, const QStringList &keys)
{
    QVariantMap result;
    for (const QString &key : keys) {
        if (const auto found = map.constFind(key); found != map.constEnd())
            result.insert(key, *found);
    }
    return result;
}

QString containsKey(const QVariantMap &map, const QString &key, const KeyComparison &compare)
{
    for (auto it = map.keyBegin(); it != map.keyEnd(); ++it) {
        if (compare(key, *it) == 0)
            return *it;
    }
    return {};
}

bool containsKeyInSet(const QVariantMap &map, const QSet<QString> &keys)
{
    if (keys.size() >= map.size())
        return std::any_of(map.keyBegin(), map.keyEnd(), [&](const QString &key) { return keys.contains(key); });
    return std::any_of(keys.begin(), keys.end(), [&](const QString &key) { return map.contains(key); });
}

bool containsKeyInDictionary(const QVariantMap &map, const QVariantMap &other)
{
    return std::any_of(other.keyBegin(), other.keyEnd(), [&](const QString &key) { return map.contains(key); });
}

bool isSubdictionaryOf(const QVariantMap &map, const QVariantMap &other)
{
    if (other.isSharedWith(map))
        return true;
    if (map.size() < other.size())
        return false;
    return std::all_of(other.keyBegin(), other.keyEnd(), [&](const QString &key) { return isSameValue(map, other, key); });
}

bool isEqualToDictionaryForKeys(const QVariantMap &map, const QVariantMap &other, const QStringList &keys)
{
    if (other.isSharedWith(map))
        return true;
    return std::all_of(keys.begin(), keys.end(), [&](const QString &key) { return isSameValue(map, other, key); });
}

bool isEqualToDictionaryIgnoringKeys(const QVariantMap &map, const QVariantMap &other, const QSet<QString> &ignoredKeys)
{
    if (other.isSharedWith(map))
        return true;
    return std::all_of(map.keyBegin(), map.keyEnd(), [&](const QString &key) {
        return ignoredKeys.contains(key) || isSameValue(map, other, key);
    });
}

bool boolForKey(const QVariantMap &map, const QString &key, bool defaultValue)
{
    const QVariant value = convertibleValue(map, key, "boolValue");
    return value.isValid() ? boolValueVelto(value) : defaultValue;
}

qint64 intForKey(const QVariantMap &map, const QString &key, qint64 defaultValue)
{
    const QVariant value = convertibleValue(map, key, "integerValue");
    return value.isValid() ? VTNumberConversion::integerValue(VTNumberConversion::numberValue(value)) : defaultValue;
}

double floatForKey(const QVariantMap &map, const QString &key, double defaultValue)
{
    const QVariant value = convertibleValue(map, key, "floatValue");
    return value.isValid() ? double(float(VTNumberConversion::doubleValue(VTNumberConversion::numberValue(value))))
                           : defaultValue;
}

double doubleForKey(const QVariantMap &map, const QString &key, double defaultValue)
{
    const QVariant value = convertibleValue(map, key, "doubleValue");
    return value.isValid() ? VTNumberConversion::doubleValue(VTNumberConversion::numberValue(value)) : defaultValue;
}

} // namespace velto

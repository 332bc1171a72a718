// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VariantMap+VeltoObjectAdditions.h"

namespace velto {

void setObjectVeltoOrRemoveNil(QVariantMap &map, const QVariant &value, const QString &key)
{
    if (value.isValid())
        map.insert(key, value);
    else
        map.remove(key);
}

void setBool(QVariantMap &map, bool value, const QString &key)
{
    map.insert(key, value);
}

void setInt(QVariantMap &map, qint64 value, const QString &key)
{
    map.insert(key, value);
}

void setFloat(QVariantMap &map, float value, const QString &key)
{
    map.insert(key, double(value));
}

void setDouble(QVariantMap &map, double value, const QString &key)
{
    map.insert(key, value);
}

void addObjectsFromDictionary(QVariantMap &map, const QVariantMap &dictionary, const QSet<QString> &keys)
{
    if (dictionary.size() >= keys.size()) {
        for (const QString &key : keys) {
            if (auto found = dictionary.constFind(key); found != dictionary.constEnd())
                map.insert(key, *found);
        }
    } else {
        for (auto entry = dictionary.constBegin(); entry != dictionary.constEnd(); ++entry) {
            if (keys.contains(entry.key()))
                map.insert(entry.key(), entry.value());
        }
    }
}

void removeObjectsForKeysInVeltoCollection(QVariantMap &map, const QStringList &keys)
{
    for (const QString &key : keys)
        map.remove(key);
}

void removeObjectsForKeysInSetVelto(QVariantMap &map, const QSet<QString> &keys)
{
    for (const QString &key : keys)
        map.remove(key);
}

void removeObjectsForKeysPassingTestVelto(QVariantMap &map, const std::function<bool(const QString &key)> &test)
{
    QStringList passing;
    for (auto entry = map.constBegin(); entry != map.constEnd(); ++entry) {
        if (test(entry.key()))
            passing.append(entry.key());
    }
    removeObjectsForKeysInVeltoCollection(map, passing);
}

} // namespace velto

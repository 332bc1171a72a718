// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VariantMap+VeltoObjectAdditions.h
 * \brief Filling and pruning a QVariantMap: store-or-remove, typed numbers, copying a chosen set of keys
 * from another map, and removing keys by collection or by test.
 */

#include "veltocore_export.h"

#include <QSet>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace velto {

/// setObjectVeltoOrRemoveNil: stores \a value under \a key, or removes \a key when \a value is invalid.
VELTOCORE_EXPORT void setObjectVeltoOrRemoveNil(QVariantMap &map, const QVariant &value, const QString &key);

/// setBool: stores a boolean.
VELTOCORE_EXPORT void setBool(QVariantMap &map, bool value, const QString &key);
/// setInt: stores a signed word (qint64).
VELTOCORE_EXPORT void setInt(QVariantMap &map, qint64 value, const QString &key);
/// setFloat: stores a 32-bit float widened to a double.
VELTOCORE_EXPORT void setFloat(QVariantMap &map, float value, const QString &key);
/// setDouble: stores a double.
VELTOCORE_EXPORT void setDouble(QVariantMap &map, double value, const QString &key);

/**
 * addObjectsFromDictionary: copies into \a map the entries of \a dictionary whose keys are in \a keys; keys
 * absent from \a dictionary are skipped. It walks whichever of the two is smaller; the result is the same.
 */
VELTOCORE_EXPORT void addObjectsFromDictionary(QVariantMap &map, const QVariantMap &dictionary,
                                               const QSet<QString> &keys);

/// removeObjectsForKeysInVeltoCollection: removes every key in \a keys (absent keys are ignored).
VELTOCORE_EXPORT void removeObjectsForKeysInVeltoCollection(QVariantMap &map, const QStringList &keys);
/// removeObjectsForKeysInSetVelto: removes every key in \a keys.
VELTOCORE_EXPORT void removeObjectsForKeysInSetVelto(QVariantMap &map, const QSet<QString> &keys);
/**
 * removeObjectsForKeysPassingTestVelto: removes the keys for which \a test returns true. All keys are tested
 * first and removed afterwards, so \a test sees the whole map.
 */
VELTOCORE_EXPORT void removeObjectsForKeysPassingTestVelto(QVariantMap &map,
                                                           const std::function<bool(const QString &key)> &test);

} // namespace velto

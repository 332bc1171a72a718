// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VariantMap+VeltoAdditions.h
 * \brief Additions to QVariantMap: copies with entries set or removed, sub-dictionaries, key tests,
 * comparison over chosen keys, and typed readers with defaults.
 *
 * The building operations answer the receiver itself (the same shared data, see
 * QVariantMap::isSharedWith) whenever nothing would change, so a caller can tell cheaply whether
 * anything happened:
 *
 * \code
 * const QVariantMap changed = velto::dictionarySettingObject(settings, value, u"width"_s);
 * const QVariantMap same = velto::dictionaryRemovingObjectForKey(settings, u"absent"_s);
 * same.isSharedWith(settings);   // true: nothing was copied
 * \endcode
 *
 * Values are compared with QVariant's operator==; "the same value" means both present and equal, or both
 * missing. The mutable counterparts are in VariantMap+VeltoObjectAdditions.h.
 */

#include "veltocore_export.h"

#include <QSet>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace velto {

/// dictionaryWithObjectSetForAllVeltoKeys: a map holding \a value under every key of \a keys.
[[nodiscard]] VELTOCORE_EXPORT QVariantMap dictionaryWithObjectSetForAllVeltoKeys(const QVariant &value, const QStringList &keys);
/// dictionarySettingObject: a copy of \a map with \a key set to \a value; \a map itself when the value is invalid or the key null.
[[nodiscard]] VELTOCORE_EXPORT QVariantMap dictionarySettingObject(const QVariantMap &map, const QVariant &value, const QString &key);
/**
 * \brief dictionaryRemovingObjectForKey: \a map itself when it has no entry for \a key; the shared empty
 * map when that entry was its only one; otherwise a copy without it.
 */
[[nodiscard]] VELTOCORE_EXPORT QVariantMap dictionaryRemovingObjectForKey(const QVariantMap &map, const QString &key);
/// dictionaryRemovingObjectsForKeys: \a map itself when none of \a keys is present; otherwise one copy without all of them.
[[nodiscard]] VELTOCORE_EXPORT QVariantMap dictionaryRemovingObjectsForKeys(const QVariantMap &map, const QStringList &keys);
/// dictionaryByAddingEntriesFromDictionary: \a map itself when \a other is empty or is \a map; otherwise a copy with \a other's entries added (its values win).
[[nodiscard]] VELTOCORE_EXPORT QVariantMap dictionaryByAddingEntriesFromDictionary(const QVariantMap &map, const QVariantMap &other);
/// subdictionaryWithKeys: the entries of \a map whose keys are in \a keys; absent keys are skipped.
[[nodiscard]] VELTOCORE_EXPORT QVariantMap subdictionaryWithKeys(const QVariantMap &map, const QStringList &keys);

/// A comparison of (given key, key of the map) answering 0 for a match.
using KeyComparison = std::function<qint64(const QString &key, const QString &mapKey)>;

/**
 * \brief containsKey: the first key of \a map (in the map's order) for which \a compare(\a key, that key)
 * answers 0: the map's own key, which may differ from \a key (letter case, say); a null QString when none.
 */
[[nodiscard]] VELTOCORE_EXPORT QString containsKey(const QVariantMap &map, const QString &key, const KeyComparison &compare);
/// containsKeyInSet: whether a key of \a map is in \a keys (it walks whichever of the two is smaller).
[[nodiscard]] VELTOCORE_EXPORT bool containsKeyInSet(const QVariantMap &map, const QSet<QString> &keys);
/// containsKeyInDictionary: whether a key of \a other has a value in \a map.
[[nodiscard]] VELTOCORE_EXPORT bool containsKeyInDictionary(const QVariantMap &map, const QVariantMap &other);
/**
 * \brief isSubdictionaryOf: whether every entry of \a other has the same value in \a map, that is, whether
 * \a other is contained in \a map. The direction is the reverse of what the name says, and callers rely
 * on it: {a: 1, b: 2} isSubdictionaryOf {a: 1} is true.
 */
[[nodiscard]] VELTOCORE_EXPORT bool isSubdictionaryOf(const QVariantMap &map, const QVariantMap &other);
/// isEqualToDictionaryForKeys: whether every key of \a keys has the same value in both (both missing counts as the same).
[[nodiscard]] VELTOCORE_EXPORT bool isEqualToDictionaryForKeys(const QVariantMap &map, const QVariantMap &other,
                                                               const QStringList &keys);
/**
 * \brief isEqualToDictionaryIgnoringKeys: whether every key of \a map outside \a ignoredKeys has the same
 * value in \a other. Keys only \a other has are not looked at: {a: 1} equals {a: 1, b: 2}.
 */
[[nodiscard]] VELTOCORE_EXPORT bool isEqualToDictionaryIgnoringKeys(const QVariantMap &map, const QVariantMap &other,
                                                                    const QSet<QString> &ignoredKeys);

/**
 * \brief boolForKey: boolValueVelto() of the value under \a key; \a defaultValue only when the key is missing.
 *
 * The typed readers convert numbers and strings as typed settings reads do (UserDefaults+VeltoAdditions.h:
 * text in the C locale, whole text). A value of another kind cannot be converted: that is a programming
 * error, and VeltoInvalidArgumentException "-[<type> boolValue]: unrecognized selector sent to instance 0x…"
 * is thrown (integerValue, floatValue, doubleValue for the other readers).
 */
[[nodiscard]] VELTOCORE_EXPORT bool boolForKey(const QVariantMap &map, const QString &key, bool defaultValue = false);
/// intForKey: the value as a signed word (reals truncated toward zero, saturated); \a defaultValue only when the key is missing, never for a stored 0.
[[nodiscard]] VELTOCORE_EXPORT qint64 intForKey(const QVariantMap &map, const QString &key, qint64 defaultValue = 0);
/// floatForKey: the value rounded to a 32-bit float and widened back; \a defaultValue (as given) when the key is missing.
[[nodiscard]] VELTOCORE_EXPORT double floatForKey(const QVariantMap &map, const QString &key, double defaultValue = 0.0);
/// doubleForKey: the value as a double; \a defaultValue when the key is missing.
[[nodiscard]] VELTOCORE_EXPORT double doubleForKey(const QVariantMap &map, const QString &key, double defaultValue = 0.0);

} // namespace velto

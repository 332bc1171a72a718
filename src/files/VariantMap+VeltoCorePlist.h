// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VariantMap+VeltoCorePlist.h
 * \brief Typed reads from property-list dictionaries, and loading and saving a dictionary as a
 * property-list file.
 *
 * A property list read from disk is untyped: a key may be missing or hold a value of the wrong kind. These
 * getters ask for a kind (a QMetaType) and say what they found instead:
 *
 * \code
 * VeltoError error;
 * const QVariant name = velto::plistObjectVeltoForKey(plist, u"name"_s, QMetaType::fromType<QString>(), {}, &error);
 * // error: "Expected value with class name for plist key "QString", found qlonglong."
 * const std::optional<QVariantList> items = velto::plistArrayVeltoForKey(plist, u"items"_s, &error);   // {} when missing
 * \endcode
 *
 * A value is of the asked kind when its type is that type, or when both are of one property-list class:
 * every number type (bool, the integer types, double, float) is one class, QVariantList and QStringList
 * are the array class, QVariantMap and QVariantHash the dictionary class. Type mismatches are errors in
 * VeltoCoreErrorDomain, code 4 (VeltoCoreErrorPlistType), whose texts name the key first and the
 * expected type second ("Expected value with class %1 for plist key \"%2\", found %3." filled with key,
 * expected type, found type): that order is the one callers and logs rely on. A missing value is found
 * as "(null)". Without an error pointer the getters fail silently.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QMetaType>
#include <QUrl>
#include <QVariantMap>

#include <optional>

/// How writePlistToURL() writes: the file is always replaced whole (never left half written).
enum VeltoDataWritingOption : int {
    VeltoDataWritingAtomic = 1,             ///< replace the file only once the new contents are complete (always so)
    VeltoDataWritingWithoutOverwriting = 2, ///< fail (code 516) when the file exists
};
Q_DECLARE_FLAGS(VeltoDataWritingOptions, VeltoDataWritingOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoDataWritingOptions)

namespace velto {

/**
 * \brief plistObjectVeltoForKey: the value under \a key when it is of \a type; \a nilPlaceholder (which
 * may be invalid) when the key is missing, with no error; otherwise an invalid QVariant and, when
 * \a error is given, the code-4 error "Expected value with class <key> for plist key "<type>", found <found type>.".
 */
[[nodiscard]] VELTOCORE_EXPORT QVariant plistObjectVeltoForKey(const QVariantMap &map, const QString &key, QMetaType type,
                                                               const QVariant &nilPlaceholder, VeltoError *error);
/// plistObjectVeltoForKey: the same with no placeholder and no error.
[[nodiscard]] VELTOCORE_EXPORT QVariant plistObjectVeltoForKey(const QVariantMap &map, const QString &key, QMetaType type);
/// plistStringVeltoForKey: the value when it is a string, else a null QString (missing keys included).
[[nodiscard]] VELTOCORE_EXPORT QString plistStringVeltoForKey(const QVariantMap &map, const QString &key);
/**
 * \brief plistBoolVeltoForKey: boolValueVelto() of the value when it is a number or a string ("YES",
 * "true", " 1" are true; "NO", "0", "" false); \a defaultValue when it is missing or of another kind
 * (a date, data, an array).
 */
[[nodiscard]] VELTOCORE_EXPORT bool plistBoolVeltoForKey(const QVariantMap &map, const QString &key, bool defaultValue);
/// plistArrayVeltoForKey: the array under \a key; an empty list when the key is missing; nothing (with the code-4 error) for another kind.
[[nodiscard]] VELTOCORE_EXPORT std::optional<QVariantList> plistArrayVeltoForKey(const QVariantMap &map, const QString &key,
                                                                                VeltoError *error = nullptr);
/// plistDictionaryVeltoForKey: the dictionary under \a key; an empty map when the key is missing; nothing (with the code-4 error) for another kind.
[[nodiscard]] VELTOCORE_EXPORT std::optional<QVariantMap> plistDictionaryVeltoForKey(const QVariantMap &map, const QString &key,
                                                                                    VeltoError *error = nullptr);
/**
 * \brief plistArrayVeltoForKeyAssumingValueClass: plistArrayVeltoForKey(), and only when every element
 * is of \a valueType; at the first element that is not, nothing and the code-4 error
 * "Expected class <key> for all values in plist array with key "<type>", found <element type>.".
 */
[[nodiscard]] VELTOCORE_EXPORT std::optional<QVariantList>
plistArrayVeltoForKeyAssumingValueClass(const QVariantMap &map, const QString &key, QMetaType valueType,
                                        VeltoError *error = nullptr);
/// plistObjectVeltoForKeyAssumingNotNilClass: the value only when it exists and is of \a type; a missing value is the same error, found "(null)".
[[nodiscard]] VELTOCORE_EXPORT QVariant plistObjectVeltoForKeyAssumingNotNilClass(const QVariantMap &map, const QString &key,
                                                                                  QMetaType type, VeltoError *error = nullptr);

/**
 * \brief dictionaryWithPlistLoadedFromURL: the dictionary in the property-list file at the file URL
 * \a url, in either format.
 *
 * Nothing, with \a error, when the file cannot be read (general domain: 260 no such file, 257 no
 * permission, 263 larger than 256 MiB, 262 not a file URL), when it is no property list (3840, with
 * what is wrong and where), or when its root is not a dictionary (259, "Expected dictionary in plist
 * file at <path>", the path with the home folder as "~").
 */
[[nodiscard]] VELTOCORE_EXPORT std::optional<QVariantMap> dictionaryWithPlistLoadedFromURL(const QUrl &url,
                                                                                          VeltoError *error = nullptr);

/**
 * \brief writePlistToURL: saves \a map as a binary property list at the file URL \a url.
 *
 * The file is replaced only once the new contents are complete: on any failure the old file is as it
 * was. False, with \a error, when \a map holds a value the format cannot store (3852, naming it), when
 * \a options has VeltoDataWritingWithoutOverwriting and the file exists (516), or when the file cannot
 * be written (513 no permission, 4 no such folder, 640 disk full, 642 read-only volume, 518 not a file URL).
 */
[[nodiscard]] VELTOCORE_EXPORT bool writePlistToURL(const QVariantMap &map, const QUrl &url, VeltoDataWritingOptions options,
                                                    VeltoError *error = nullptr);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file UserDefaults+VeltoAdditions.h
 * \brief Additions to VeltoUserDefaults: typed reads with an explicit default for keys that have no
 * value, and dates kept as plist date text.
 *
 * \code
 * auto defaults = VeltoUserDefaults::standardUserDefaults();
 * const qint64 columns = velto::integerForKey(*defaults, u"columns"_s, 80);
 * velto::setDateVelto(*defaults, QDateTime::currentDateTime(), u"lastCheck"_s);
 * \endcode
 *
 * "No value" means objectForKey() is invalid: a registered default counts as a value. A stored value of
 * another kind is converted as the platform reads numbers: numbers convert, numeric text in the C locale
 * is read ("42", " -3 ", "2.9", "1e3"), booleans are 1 or 0, and anything else is 0.
 */

#include "VeltoUserDefaults.h"
#include "veltocore_export.h"

#include <QDateTime>

namespace velto {

/// objectForKey: the value under \a key, or \a defaultValue when there is none.
[[nodiscard]] VELTOCORE_EXPORT QVariant objectForKey(const VeltoUserDefaults &defaults, const QString &key,
                                                     const QVariant &defaultValue);
/// boolForKey: \a defaultValue when \a key has no value, else boolValueVelto() of it ("YES" is true).
[[nodiscard]] VELTOCORE_EXPORT bool boolForKey(const VeltoUserDefaults &defaults, const QString &key,
                                               bool defaultValue);
/// integerForKey: \a defaultValue when \a key has no value, else the value as an integer (real numbers
/// truncated toward zero, saturated; text that is no number gives 0).
[[nodiscard]] VELTOCORE_EXPORT qint64 integerForKey(const VeltoUserDefaults &defaults, const QString &key,
                                                    qint64 defaultValue);
/// floatForKey: \a defaultValue when \a key has no value, else the value as a float (text that is no
/// number gives 0).
[[nodiscard]] VELTOCORE_EXPORT float floatForKey(const VeltoUserDefaults &defaults, const QString &key,
                                                 float defaultValue);
/// dateForKeyVelto: the plist date text under \a key read by dateWithStringValueFromPlistVelto(); an
/// invalid QDateTime when there is none, the value is not text, or the text does not read.
[[nodiscard]] VELTOCORE_EXPORT QDateTime dateForKeyVelto(const VeltoUserDefaults &defaults, const QString &key);
/// setDateVelto: stores \a date as plist date text (stringValueForPlistVelto()) under \a key; an invalid
/// date removes the key. \return false, with \a error, when the user defaults could not be written.
[[nodiscard]] VELTOCORE_EXPORT bool setDateVelto(VeltoUserDefaults &defaults, const QDateTime &date,
                                                 const QString &key, VeltoError *error = nullptr);

} // namespace velto

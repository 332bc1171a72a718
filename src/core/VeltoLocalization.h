// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLocalization.h
 * \brief Looking up user-visible texts in a bundle's default string table.
 *
 * Keys are the English text with one leading underscore ("_Choose Folder"). The functions neither add
 * nor strip the underscore, so a text missing from a table shows as its key, underscore included, and
 * stands out. None of them throws; all are safe on any thread.
 *
 * | Function                            | key found   | key missing | bundle / class null or class without bundle |
 * |-------------------------------------|-------------|-------------|---------------------------------------------|
 * | VeltoLocalizeInBundle               | translation | key         | key                                         |
 * | VeltoLocalizeUsingClass             | translation | key         | key                                         |
 * | VeltoLocalizeExpectFailInBundle     | translation | null        | key (null bundle)                           |
 * | VeltoLocalizeExpectFailUsingClass   | translation | null        | null                                        |
 *
 * The asymmetry of the last column is deliberate: the ExpectFail forms let a caller probe whether a
 * translation exists.
 *
 * \code
 * QString title = VeltoLocalizeUsingClass(u"_Choose Folder"_s, &MyDialog::staticMetaObject);
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>

class VeltoBundle;
struct QMetaObject;

/// The value asked for when a key is missing; a lookup that returns it found nothing. Never shown.
inline constexpr QLatin1StringView VeltoLocalizedStringNotFound{"__VTLocalizedStringNotFound__"};

/// VeltoLocalizeInBundle: the translation of \a key in \a bundle; the key itself when missing or no bundle.
[[nodiscard]] VELTOCORE_EXPORT QString VeltoLocalizeInBundle(const QString &key, const VeltoBundle *bundle);

/// VeltoLocalizeUsingClass: VeltoLocalizeInBundle() with the bundle of the binary defining \a metaObject.
[[nodiscard]] VELTOCORE_EXPORT QString VeltoLocalizeUsingClass(const QString &key, const QMetaObject *metaObject);

/// VeltoLocalizeExpectFailInBundle: the translation, a null string when missing, the key for no bundle.
[[nodiscard]] VELTOCORE_EXPORT QString VeltoLocalizeExpectFailInBundle(const QString &key, const VeltoBundle *bundle);

/// VeltoLocalizeExpectFailUsingClass: the translation, else a null string (also for no class or no bundle).
[[nodiscard]] VELTOCORE_EXPORT QString VeltoLocalizeExpectFailUsingClass(const QString &key,
                                                                         const QMetaObject *metaObject);

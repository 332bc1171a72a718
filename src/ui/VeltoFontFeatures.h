// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFontFeatures.h
 * \brief Lists of typographic feature settings, and the "change case" value they stand for.
 *
 * A feature setting is a QVariantMap with two numbers: the feature type under VeltoFontFeatureKey_Type
 * and its selector under VeltoFontFeatureKey_Value (types and selectors are those of the feature registry
 * that VeltoFont maps onto OpenType tags, see docs/platform-mapping.md). A feature list is a QVariantList
 * of settings in the order they were added. Lists are values: every function returns the list it was
 * given (sharing its data) or a new one, never changes one in place.
 *
 * \code
 * QVariantList features = VeltoFontFeaturesByAdding({}, VeltoFontFeatureType_LetterCase, 3, false);
 * const quint32 changeCase = VeltoFontFeaturesChangeCaseValueForFeatures(features);   // 3: small capitals
 * \endcode
 *
 * The entries are read with the typed readers of QVariantMap (velto::intForKey): numbers and numeric
 * text are read as integers; an entry holding a list or a map throws NSInvalidArgumentException. Lists
 * read from outside data should first pass VeltoFont::initWithPropertyListRepresentation(), which
 * refuses such lists with an error. Elements that are not maps match no type. The functions are pure and
 * may run on any thread.
 */

#include "veltocoregui_export.h"

#include <QLatin1StringView>
#include <QVariantList>

/// The key of a setting's feature type: "CTFeatureTypeIdentifier".
inline constexpr QLatin1StringView VeltoFontFeatureKey_Type{"CTFeatureTypeIdentifier"};
/// The key of a setting's selector: "CTFeatureSelectorIdentifier".
inline constexpr QLatin1StringView VeltoFontFeatureKey_Value{"CTFeatureSelectorIdentifier"};

/// The letter-case feature type; its selectors 0, 1, 2, 3, 4 and 12 are the change-case values.
inline constexpr quint32 VeltoFontFeatureType_LetterCase = 3;
/// The style-options feature type (selector 4: titling capitals).
inline constexpr quint32 VeltoFontFeatureType_StyleOptions = 19;
/// The lower-case feature type (selector 1: small capitals, 2: petite capitals).
inline constexpr quint32 VeltoFontFeatureType_LowerCase = 37;
/// The upper-case feature type (selector 1: capitals to small capitals, 2: to petite capitals).
inline constexpr quint32 VeltoFontFeatureType_UpperCase = 38;
/// The change-case value of small capitals, whichever of its three encodings a list uses.
inline constexpr quint32 VeltoFontChangeCase_SmallCaps = 3;
/// The change-case value that means "no change-case setting".
inline constexpr quint32 VeltoFontChangeCase_None = 999;

/**
 * \brief VeltoFontFeaturesByAdding: \a list with the setting {\a type, \a selector} added.
 *
 * When \a allowSecondSetting is false and \a list has a setting of \a type, the first such setting is
 * replaced in place (the list keeps its length and order); otherwise the setting is appended.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QVariantList VeltoFontFeaturesByAdding(const QVariantList &list, quint32 type,
                                                                         quint64 selector, bool allowSecondSetting);
/// VeltoFontFeaturesByRemoving: \a list itself (sharing its data) when no setting has \a type, else a copy without the first one that has.
[[nodiscard]] VELTOCOREGUI_EXPORT QVariantList VeltoFontFeaturesByRemoving(const QVariantList &list, quint32 type);
/// VeltoFontFeatures_GetValueForFeature: whether \a list has a setting of \a type; its selector is stored through \a selector when given.
[[nodiscard]] VELTOCOREGUI_EXPORT bool VeltoFontFeatures_GetValueForFeature(const QVariantList &list, quint32 type,
                                                                            qint64 *selector = nullptr);
/// VeltoFontFeatureValue_ChangeCaseIsValid: true for the change-case values 0, 1, 2, 3, 4 and 12.
[[nodiscard]] VELTOCOREGUI_EXPORT bool VeltoFontFeatureValue_ChangeCaseIsValid(quint64 changeCase);
/**
 * \brief VeltoFontFeatureValue_ChangeCaseForFeatureValue: the change-case value the setting {\a type,
 * \a selector} stands for: a valid letter-case selector itself (12 read as 3), 3 for lower case
 * selector 1; 999 (VeltoFontChangeCase_None) for everything else.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT quint32 VeltoFontFeatureValue_ChangeCaseForFeatureValue(qint32 type, quint64 selector);
/**
 * \brief VeltoFontFeaturesChangeCaseValueForFeatures: the change-case value \a list holds, or 999.
 *
 * A letter-case setting with a valid selector wins (12 reported as 3); otherwise a lower-case setting
 * with selector 1 gives 3. When one is found and \a remaining is given, the list without that setting
 * is stored through it; otherwise \a remaining is left alone.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT quint32 VeltoFontFeaturesChangeCaseValueForFeatures(const QVariantList &list,
                                                                                    QVariantList *remaining = nullptr);

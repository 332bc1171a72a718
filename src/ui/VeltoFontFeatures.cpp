// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFontFeatures.h"

#include "VariantMap+VeltoAdditions.h"

namespace {

constexpr quint64 SecondSmallCapsSelector = 12;

// The selector of the setting at index, read as an integer.
qint64 selectorAt(const QVariantList &list, qsizetype index)
{
    return velto::intForKey(list.at(index).toMap(), VeltoFontFeatureKey_Value);
}

// The index of the first setting whose type, read as an integer, is type; -1 when there is none.
qsizetype VTIndexOfFontFeatureSettingType(const QVariantList &list, quint32 type)
{
    for (qsizetype index = 0; index < list.size(); ++index) {
        const QVariant &setting = list.at(index);
        if (setting.typeId() == QMetaType::QVariantMap
            && velto::intForKey(setting.toMap(), VeltoFontFeatureKey_Type) == qint64(type))
            return index;
    }
    return -1;
}

QVariantList removingAt(QVariantList list, qsizetype index)
{
    list.removeAt(index);
    return list;
}

} // namespace

QVariantList VeltoFontFeaturesByAdding(const QVariantList &list, quint32 type, quint64 selector, bool allowSecondSetting)
{
    const QVariantMap setting{{VeltoFontFeatureKey_Type, QVariant::fromValue(type)},
                              {VeltoFontFeatureKey_Value, QVariant::fromValue(selector)}};
    QVariantList result = list;
    const qsizetype existing = allowSecondSetting ? -1 : VTIndexOfFontFeatureSettingType(list, type);
    if (existing >= 0)
        result[existing] = setting;
    else
        result.append(setting);
    return result;
}

QVariantList VeltoFontFeaturesByRemoving(const QVariantList &list, quint32 type)
{
    const qsizetype index = VTIndexOfFontFeatureSettingType(list, type);
    return index < 0 ? list : removingAt(list, index);
}

bool VeltoFontFeatures_GetValueForFeature(const QVariantList &list, quint32 type, qint64 *selector)
{
    const qsizetype index = VTIndexOfFontFeatureSettingType(list, type);
    if (index < 0)
        return false;
    if (selector)
        *selector = selectorAt(list, index);
    return true;
}

bool VeltoFontFeatureValue_ChangeCaseIsValid(quint64 changeCase)
{
    return changeCase <= 4 || changeCase == SecondSmallCapsSelector;
}

quint32 VeltoFontFeatureValue_ChangeCaseForFeatureValue(qint32 type, quint64 selector)
{
    if (type == qint32(VeltoFontFeatureType_LetterCase) && VeltoFontFeatureValue_ChangeCaseIsValid(selector))
        return selector == SecondSmallCapsSelector ? VeltoFontChangeCase_SmallCaps : quint32(selector);
    if (type == qint32(VeltoFontFeatureType_LowerCase) && selector == 1)
        return VeltoFontChangeCase_SmallCaps;
    return VeltoFontChangeCase_None;
}

quint32 VeltoFontFeaturesChangeCaseValueForFeatures(const QVariantList &list, QVariantList *remaining)
{
    // A letter-case setting whose selector is no change-case value does not end the search.
    for (const quint32 type : {VeltoFontFeatureType_LetterCase, VeltoFontFeatureType_LowerCase}) {
        const qsizetype index = VTIndexOfFontFeatureSettingType(list, type);
        if (index < 0)
            continue;
        const qint64 selector = selectorAt(list, index);
        const quint32 changeCase =
            selector < 0 ? VeltoFontChangeCase_None : VeltoFontFeatureValue_ChangeCaseForFeatureValue(qint32(type), quint64(selector));
        if (changeCase == VeltoFontChangeCase_None)
            continue;
        if (remaining)
            *remaining = removingAt(list, index);
        return changeCase;
    }
    return VeltoFontChangeCase_None;
}

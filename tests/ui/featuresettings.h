// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Feature lists written as (type, selector) pairs, for the font tests.

#include "VeltoFontFeatures.h"

#include <QList>
#include <QVariantMap>

#include <utility>

using Settings = QList<std::pair<qint64, qint64>>;

/// listOf: the settings as a feature list of maps holding plain numbers.
inline QVariantList listOf(const Settings &settings)
{
    QVariantList list;
    for (const auto &[type, selector] : settings)
        list.append(QVariantMap{{VeltoFontFeatureKey_Type, type}, {VeltoFontFeatureKey_Value, selector}});
    return list;
}

/// settingsOf: the (type, selector) pairs of a list, whatever number types they are stored in.
inline Settings settingsOf(const QVariantList &list)
{
    Settings settings;
    for (const QVariant &setting : list) {
        const QVariantMap map = setting.toMap();
        settings.append({map.value(VeltoFontFeatureKey_Type).toLongLong(), map.value(VeltoFontFeatureKey_Value).toLongLong()});
    }
    return settings;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "UserDefaults+VeltoFonts.h"

#include "UserDefaults+VeltoAdditions.h"
#include "VTFontLookup_p.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr float DefaultPointSize = 12.0f;

QString nameKey(const QString &key)
{
    return key + u".name"_s;
}

QString sizeKey(const QString &key)
{
    return key + u".size"_s;
}

} // namespace

std::optional<QFont> fontForKey(const VeltoUserDefaults &defaults, const QString &key)
{
    return fontForKey(defaults, key, std::nullopt);
}

std::optional<QFont> fontForKey(const VeltoUserDefaults &defaults, const QString &key,
                                const std::optional<QFont> &defaultValue)
{
    const QVariant name = defaults.objectForKey(nameKey(key));
    if (!name.isValid())
        return defaultValue;
    const QString family = VTInstalledFamily(name.typeId() == QMetaType::QString ? name.toString() : QString());
    if (family.isNull())
        return defaultValue;
    QFont font(family);
    font.setPointSizeF(VTUsablePointSize(floatForKey(defaults, sizeKey(key), DefaultPointSize)));
    return font;
}

bool setFont(VeltoUserDefaults &defaults, const std::optional<QFont> &font, const QString &key, VeltoError *error)
{
    if (!font)
        return defaults.removeObjectForKey(nameKey(key), error) && defaults.removeObjectForKey(sizeKey(key), error);
    return defaults.setObject(font->family(), nameKey(key), error)
        && defaults.setObject(QVariant(float(VTPointSizeOf(*font))), sizeKey(key), error);
}

} // namespace velto

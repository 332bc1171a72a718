#include "UserDefaults+VeltoFonts.h"

#include "UserDefaults+VeltoAdditions.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <cmath>

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

// The installed family of that name as the font database spells it, else null. An exact test:
// QFontDatabase::hasFamily() would also accept aliases that fontconfig resolves ("sans-serif").
QString installedFamily(const QString &family)
{
    if (family.isEmpty())
        return {};
    const QStringList families = QFontDatabase::families();
    const qsizetype at = families.indexOf(family);
    if (at >= 0)
        return families.at(at);
    for (const QString &installed : families) {
        if (installed.compare(family, Qt::CaseInsensitive) == 0)
            return installed;
    }
    return {};
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
    const QString family = installedFamily(name.typeId() == QMetaType::QString ? name.toString() : QString());
    if (family.isNull())
        return defaultValue;
    float size = floatForKey(defaults, sizeKey(key), DefaultPointSize);
    if (!(size > 0.0f) || !std::isfinite(size))
        size = DefaultPointSize;
    QFont font(family);
    font.setPointSizeF(size);
    return font;
}

bool setFont(VeltoUserDefaults &defaults, const std::optional<QFont> &font, const QString &key, VeltoError *error)
{
    if (!font)
        return defaults.removeObjectForKey(nameKey(key), error) && defaults.removeObjectForKey(sizeKey(key), error);
    const qreal points = font->pointSizeF() > 0 ? font->pointSizeF() : QFontInfo(*font).pointSizeF();
    return defaults.setObject(font->family(), nameKey(key), error)
        && defaults.setObject(QVariant(float(points)), sizeKey(key), error);
}

} // namespace velto

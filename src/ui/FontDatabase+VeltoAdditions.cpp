// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FontDatabase+VeltoAdditions.h"

#include "Font+VeltoAdditions.h"
#include "VTFontFace_p.h"
#include "VTFontLookup_p.h"

#include <QFontDatabase>

namespace velto {

namespace {

QList<QFont> fontsCovering(char32_t character, double size, bool multiple)
{
    QList<QFont> covering;
    const QStringList families = QFontDatabase::families();
    for (const QString &family : families) {
        if (!VTFontconfig::regularFaceOfFamily(family).covers(character))
            continue;
        QFont font(family);
        font.setPointSizeF(VTUsablePointSize(size));
        covering.append(font);
        if (!multiple)
            break;
    }
    return covering;
}

} // namespace

std::optional<QFont> fontWithFamilyName(const QString &family)
{
    const QString installed = VTInstalledFamily(family);
    if (installed.isNull())
        return fontWithName(family, 12.0);
    QFont font(installed);
    font.setWeight(QFont::Normal);
    font.setItalic(false);
    font.setPointSizeF(12.0);
    return font;
}

std::optional<QFont> fontCoveringCharacter(char32_t character, double size)
{
    const QList<QFont> covering = fontsCovering(character, size, false);
    return covering.isEmpty() ? std::nullopt : std::optional<QFont>(covering.first());
}

std::optional<QFont> fontCoveringCharacter(char32_t character, double size, const QString &preferredFontName)
{
    if (const std::optional<QFont> preferred = fontWithName(preferredFontName, size)) {
        const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(*preferred);
        if (face && face->file().covers(character))
            return preferred;
    }
    return fontCoveringCharacter(character, size);
}

QList<QFont> fontsCoveringCharacter(char32_t character, double size)
{
    return fontsCovering(character, size, true);
}

} // namespace velto

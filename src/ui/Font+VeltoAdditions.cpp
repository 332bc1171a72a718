// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Font+VeltoAdditions.h"

#include "VTFontFace_p.h"
#include "VTFontLookup_p.h"
#include "VeltoException.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QFont sized(QFont font, double size)
{
    font.setPointSizeF(VTUsablePointSize(size));
    return font;
}

QFont systemFontOfSize(double size)
{
    return sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), size);
}

// The font for text the user writes: the application's default font.
QFont userFontOfSize(double size)
{
    return sized(QGuiApplication::font(), size);
}

// The first of names that is an installed font. The original names come first, so a machine that has
// the original font uses it; then the fonts Linux distributions carry in their place.
std::optional<QFont> firstNamedFont(std::initializer_list<QString> names, double size)
{
    for (const QString &name : names) {
        if (std::optional<QFont> font = fontWithName(name, size))
            return font;
    }
    return std::nullopt;
}

} // namespace

std::optional<QFont> fontWithName(const QString &name, double pointSize)
{
    const VTFontconfigFace face = VTFontconfig::faceWithPostScriptName(name);
    if (const QString family = VTInstalledFamily(face.family); face.isValid() && !family.isNull()) {
        // Qt reports the weight of a font matched by style name as normal, so the face is described by
        // its weight, slant and width instead.
        QFont font(family);
        font.setWeight(QFont::Weight(face.weight));
        font.setItalic(face.italic);
        font.setStretch(face.stretch);
        return sized(font, pointSize);
    }
    if (const QString family = VTInstalledFamily(name); !family.isNull())
        return sized(QFont(family), pointSize);
    return std::nullopt;
}

QString fontName(const QFont &font)
{
    const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font);
    return face && !face->file().postScriptName.isEmpty() ? face->file().postScriptName : font.family();
}

QFont lucidaGrandeFontOfSize(double size)
{
    return firstNamedFont({u"LucidaGrande"_s, u"DejaVu Sans"_s}, size).value_or(systemFontOfSize(size));
}

QFont boldLucidaGrandeFontOfSize(double size)
{
    return firstNamedFont({u"LucidaGrande-Bold"_s, u"Lucida Grande Bold"_s}, size)
        .value_or(convertedToBoldVelto(lucidaGrandeFontOfSize(size)));
}

QFont timesFontOfSize(double size)
{
    return firstNamedFont({u"TimesNewRomanPSMT"_s, u"Times-Roman"_s, u"Times"_s, u"Nimbus Roman"_s,
                           u"TeX Gyre Termes"_s, u"Liberation Serif"_s},
                          size)
        .value_or(userFontOfSize(size));
}

QFont helveticaFontOfSize(double size)
{
    return firstNamedFont({u"Helvetica"_s, u"Nimbus Sans"_s, u"TeX Gyre Heros"_s, u"Liberation Sans"_s}, size)
        .value_or(userFontOfSize(size));
}

QFont monospaceFontOfSize(double size)
{
    return firstNamedFont({u"Courier"_s, u"Courier New"_s, u"Monaco"_s, u"Nimbus Mono PS"_s, u"TeX Gyre Cursor"_s,
                           u"Liberation Mono"_s, u"DejaVu Sans Mono"_s},
                          size)
        .value_or(systemFontOfSize(size));
}

QFont menuItemFont()
{
    return systemFontOfSize(14.0);
}

QFont convertedToBoldVelto(QFont font)
{
    font.setStyleName(QString());
    font.setBold(true);
    return font;
}

QList<quint32> glyphsForCharactersInString(const QFont &font, const QString &string, VeltoRange range)
{
    const quint64 length = quint64(string.size());
    if (range.location > length || range.length > length - range.location)
        throw VeltoException(VeltoRangeException,
                             u"velto::glyphsForCharactersInString: range {%1, %2} out of bounds; string length %3"_s
                                 .arg(range.location)
                                 .arg(range.length)
                                 .arg(length));
    const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font);
    if (!face)
        return {};
    return face->nominalGlyphs(QStringView(string).sliced(qsizetype(range.location), qsizetype(range.length)));
}

bool isHyphenationGlyph(const QFont &font, quint32 glyph, VeltoHyphenGlyphCache &cache)
{
    const QString name = fontName(font);
    if (const auto known = cache.constFind(name); known != cache.constEnd())
        return known->contains(glyph);
    // The entry is made first, so a font without hyphens is not searched again.
    QSet<quint32> &hyphens = cache[name];
    hyphens.reserve(2);
    for (const quint32 hyphen : glyphsForCharactersInString(font, u"-"_s, VeltoMakeRange(0, 1))) {
        if (hyphen != 0)
            hyphens.insert(hyphen);
    }
    if (const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font)) {
        if (const quint32 named = face->glyphNamed("hyphen"))
            hyphens.insert(named);
    }
    return hyphens.contains(glyph);
}

QString fontFilePathVelto(const QFont &font)
{
    const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font);
    return face ? face->file().file : QString();
}

QStringList layoutFeatureTagsVelto(const QFont &font)
{
    QStringList names;
    if (const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font)) {
        const QList<quint32> tags = face->layoutFeatureTags();
        std::transform(tags.begin(), tags.end(), std::back_inserter(names), &VTFontFace::tagName);
    }
    return names;
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFontconfig_p.h"

#include <QHash>

#include <fontconfig/fontconfig.h>

#include <cstdlib>

namespace {

using PatternPointer = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using FontSetPointer = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

QString stringOf(const FcPattern *pattern, const char *object, int n = 0)
{
    FcChar8 *value = nullptr;
    if (FcPatternGetString(pattern, object, n, &value) != FcResultMatch)
        return {};
    return QString::fromUtf8(reinterpret_cast<const char *>(value));
}

int intOf(const FcPattern *pattern, const char *object, int fallback)
{
    int value = fallback;
    FcPatternGetInteger(pattern, object, 0, &value);
    return value;
}

VTFontconfigFace faceFrom(const FcPattern *pattern)
{
    VTFontconfigFace face;
    face.file = stringOf(pattern, FC_FILE);
    face.index = intOf(pattern, FC_INDEX, 0);
    face.family = stringOf(pattern, FC_FAMILY);
    face.style = stringOf(pattern, FC_STYLE);
    face.postScriptName = stringOf(pattern, FC_POSTSCRIPT_NAME);
    face.weight = FcWeightToOpenType(intOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR));
    face.italic = intOf(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    face.stretch = intOf(pattern, FC_WIDTH, FC_WIDTH_NORMAL);
    FcCharSet *characters = nullptr;
    if (FcPatternGetCharSet(pattern, FC_CHARSET, 0, &characters) == FcResultMatch)
        face.characters.reset(FcCharSetCopy(characters), FcCharSetDestroy);
    return face;
}

FcObjectSet *faceObjects()
{
    return FcObjectSetBuild(FC_FILE, FC_INDEX, FC_FAMILY, FC_STYLE, FC_POSTSCRIPT_NAME, FC_CHARSET, FC_WEIGHT,
                            FC_SLANT, FC_WIDTH, nullptr);
}

// The configuration Qt's font database was read from. Passing it explicitly (rather than null) keeps
// fontconfig from reloading its configuration behind Qt's back every 30 seconds, which would also leak.
FcConfig *configuration()
{
    return FcConfigGetCurrent();
}

// Every face fontconfig lists that matches pattern, in fontconfig's order.
FontSetPointer listed(FcPattern *pattern)
{
    FcObjectSet *objects = faceObjects();
    FontSetPointer faces(FcFontList(configuration(), pattern, objects), FcFontSetDestroy);
    FcObjectSetDestroy(objects);
    return faces;
}

VTFontconfigFace firstListed(FcPattern *pattern)
{
    const FontSetPointer faces = listed(pattern);
    return faces && faces->nfont > 0 ? faceFrom(faces->fonts[0]) : VTFontconfigFace();
}

// How far a face is from the regular one of its family: slant first, then weight and width.
int distanceFromRegular(const FcPattern *pattern)
{
    return (intOf(pattern, FC_SLANT, FC_SLANT_ROMAN) == FC_SLANT_ROMAN ? 0 : 1000)
        + std::abs(intOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR) - FC_WEIGHT_REGULAR)
        + std::abs(intOf(pattern, FC_WIDTH, FC_WIDTH_NORMAL) - FC_WIDTH_NORMAL);
}

QHash<QString, VTFontconfigFace> readRegularFaces()
{
    QHash<QString, VTFontconfigFace> faces;
    QHash<QString, int> distances;
    const PatternPointer all(FcPatternCreate(), FcPatternDestroy);
    const FontSetPointer listedFaces = listed(all.get());
    for (int i = 0; listedFaces && i < listedFaces->nfont; ++i) {
        const FcPattern *pattern = listedFaces->fonts[i];
        const int distance = distanceFromRegular(pattern);
        for (int n = 0;; ++n) {
            const QString family = stringOf(pattern, FC_FAMILY, n).toCaseFolded();
            if (family.isEmpty())
                break;
            const auto known = distances.constFind(family);
            if (known == distances.constEnd() || distance < *known) {
                distances.insert(family, distance);
                faces.insert(family, faceFrom(pattern));
            }
        }
    }
    return faces;
}

} // namespace

bool VTFontconfigFace::covers(char32_t character) const
{
    return characters && FcCharSetHasChar(characters.get(), character);
}

VTFontconfigFace VTFontconfig::faceOf(const QString &family, const QString &style, int weight, bool italic)
{
    const QByteArray familyBytes = family.toUtf8();
    const QByteArray styleBytes = style.toUtf8();
    const PatternPointer named(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(named.get(), FC_FAMILY, reinterpret_cast<const FcChar8 *>(familyBytes.constData()));
    if (!style.isEmpty()) {
        FcPatternAddString(named.get(), FC_STYLE, reinterpret_cast<const FcChar8 *>(styleBytes.constData()));
        if (const VTFontconfigFace face = firstListed(named.get()); face.isValid())
            return face;
        FcPatternDel(named.get(), FC_STYLE);
    }
    FcPatternAddInteger(named.get(), FC_WEIGHT, FcWeightFromOpenType(weight));
    FcPatternAddInteger(named.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(configuration(), named.get(), FcMatchPattern);
    FcDefaultSubstitute(named.get());
    FcResult result = FcResultNoMatch;
    const PatternPointer matched(FcFontMatch(configuration(), named.get(), &result), FcPatternDestroy);
    // A match from another family means fontconfig does not know this one.
    if (!matched || stringOf(matched.get(), FC_FAMILY).compare(family, Qt::CaseInsensitive) != 0)
        return {};
    return faceFrom(matched.get());
}

VTFontconfigFace VTFontconfig::faceWithPostScriptName(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QByteArray nameBytes = name.toUtf8();
    const PatternPointer named(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(named.get(), FC_POSTSCRIPT_NAME, reinterpret_cast<const FcChar8 *>(nameBytes.constData()));
    const FontSetPointer faces = listed(named.get());
    // fontconfig compares strings ignoring case; a PostScript name is exact.
    for (int i = 0; faces && i < faces->nfont; ++i) {
        if (stringOf(faces->fonts[i], FC_POSTSCRIPT_NAME) == name)
            return faceFrom(faces->fonts[i]);
    }
    return {};
}

VTFontconfigFace VTFontconfig::regularFaceOfFamily(const QString &family)
{
    static const QHash<QString, VTFontconfigFace> faces = readRegularFaces();
    return faces.value(family.toCaseFolded());
}

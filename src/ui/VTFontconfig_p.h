// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// What fontconfig knows about the installed faces: the file behind a face Qt draws with, faces by
// PostScript name, each family's regular face, and the characters a face covers. Qt's own font
// database is filled from fontconfig, so the names Qt gives a face (QRawFont::familyName(),
// styleName()) are the ones listed here. Faces that only Qt knows (QFontDatabase::addApplicationFont)
// are not found.

#include "veltocoregui_export.h"

#include <QString>

#include <memory>

struct _FcCharSet;

/// One face as fontconfig lists it.
struct VTFontconfigFace
{
    QString file;           ///< empty: no such face
    int index = 0;          ///< the face's index in its file (collections hold several)
    QString family;         ///< the first family name, as Qt lists the family
    QString style;          ///< "Regular", "Bold Italic", …
    QString postScriptName; ///< "LinLibertineO", empty when the face has none
    int weight = 400;       ///< on QFont's (OpenType's) scale
    bool italic = false;    ///< italic or oblique
    int stretch = 100;      ///< QFont's stretch: 100 is normal width
    std::shared_ptr<_FcCharSet> characters;

    [[nodiscard]] bool isValid() const { return !file.isEmpty(); }
    /// covers: whether the face has a glyph for the code point \a character.
    [[nodiscard]] VELTOCOREGUI_TESTS_EXPORT bool covers(char32_t character) const;
};

class VELTOCOREGUI_TESTS_EXPORT VTFontconfig
{
public:
    /// faceOf: the face of \a family with the style \a style (names as Qt gives them); when no face has
    /// that style, the one fontconfig matches to the family, \a weight (QFont's scale) and \a italic.
    [[nodiscard]] static VTFontconfigFace faceOf(const QString &family, const QString &style, int weight, bool italic);
    /// faceWithPostScriptName: the face whose PostScript name is \a name (letter case counts); invalid when none.
    [[nodiscard]] static VTFontconfigFace faceWithPostScriptName(const QString &name);
    /// regularFaceOfFamily: the family's face nearest to regular weight, upright and normal width; invalid
    /// when fontconfig lists no such family. The table is read once per process.
    [[nodiscard]] static VTFontconfigFace regularFaceOfFamily(const QString &family);
};

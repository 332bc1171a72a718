// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTFontFace: the OpenType face a QFont is drawn with, opened with HarfBuzz from the file fontconfig
// lists for it. It answers what Qt 6.4 cannot: which layout features the face has, its glyph names,
// its character-to-glyph map, and shaping with chosen features. Faces are shared and kept in a
// process-wide cache keyed by the face Qt resolved (family, style, weight, slant), so two QFonts that
// differ only in size share one. Main thread only, like the rest of Qt's font services.

#include "VTFontconfig_p.h"
#include "veltocoregui_export.h"

#include <QFont>
#include <QList>
#include <QPointF>

#include <memory>

struct hb_face_t;
struct hb_font_t;

/// VTOpenTypeTag: the tag of a four-letter OpenType name, VTOpenTypeTag("smcp").
[[nodiscard]] constexpr quint32 VTOpenTypeTag(const char (&name)[5])
{
    return quint32(quint8(name[0])) << 24 | quint32(quint8(name[1])) << 16 | quint32(quint8(name[2])) << 8
        | quint32(quint8(name[3]));
}

class VELTOCOREGUI_TESTS_EXPORT VTFontFace
{
public:
    /// Glyphs and their pen positions (in font design units, y down) from shaping.
    struct Shaped
    {
        QList<quint32> glyphs;
        QList<QPointF> positions;
        QPointF advance; ///< where the next glyph would go
    };

    /// faceForFont: the face Qt draws \a font with; null when Qt has no face for it or fontconfig lists no file.
    [[nodiscard]] static std::shared_ptr<const VTFontFace> faceForFont(const QFont &font);

    VTFontFace(const VTFontconfigFace &file, hb_face_t *face);
    ~VTFontFace();
    VTFontFace(const VTFontFace &) = delete;
    VTFontFace &operator=(const VTFontFace &) = delete;

    /// file: the face's file, index and names as fontconfig lists them.
    [[nodiscard]] const VTFontconfigFace &file() const { return m_file; }
    [[nodiscard]] int unitsPerEm() const;
    /// hasLayoutFeature: whether the GSUB or GPOS table lists \a tag for the Latin script (or for the
    /// default script the face falls back to), under the default language: what shaping Latin text applies.
    [[nodiscard]] bool hasLayoutFeature(quint32 tag) const;
    /// layoutFeatureTags: every feature tag of the GSUB and GPOS tables, for any script, sorted, each once.
    [[nodiscard]] QList<quint32> layoutFeatureTags() const;
    /// glyphNamed: the glyph with that name in the post or CFF table; 0 when there is none.
    [[nodiscard]] quint32 glyphNamed(QByteArrayView name) const;
    /// nominalGlyphs: the face's own glyph for each character of \a text (a surrogate pair is one character),
    /// from its character map, without shaping; 0 for characters it lacks.
    [[nodiscard]] QList<quint32> nominalGlyphs(QStringView text) const;
    /// shape: \a text shaped by HarfBuzz with the default features and \a featureTags switched on.
    [[nodiscard]] Shaped shape(QStringView text, const QList<quint32> &featureTags) const;

    /// tagName: "smcp" for the tag 'smcp'.
    [[nodiscard]] static QString tagName(quint32 tag);

private:
    VTFontconfigFace m_file;
    hb_face_t *m_face;
    hb_font_t *m_font;
};

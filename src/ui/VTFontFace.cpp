// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFontFace_p.h"

#include "VeltoCache.h"

#include <QFile>
#include <QRawFont>
#include <QVarLengthArray>

#include <hb-ot.h>
#include <hb.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using FaceCache = VeltoCache<std::shared_ptr<const VTFontFace>>;

// Qt resolves a QFont to one face; faces differing only in size share the cache entry.
QString resolvedFaceKey(const QRawFont &raw)
{
    return raw.familyName() + u'\n' + raw.styleName() + u'\n' + QString::number(raw.weight()) + u'\n'
        + QString::number(int(raw.style()));
}

std::shared_ptr<const VTFontFace> openFace(const QRawFont &raw)
{
    const VTFontconfigFace file = VTFontconfig::faceOf(raw.familyName(), raw.styleName(), raw.weight(),
                                                       raw.style() != QFont::StyleNormal);
    if (!file.isValid())
        return nullptr;
    hb_blob_t *blob = hb_blob_create_from_file_or_fail(QFile::encodeName(file.file).constData());
    if (!blob)
        return nullptr;
    hb_face_t *face = hb_face_create(blob, unsigned(file.index));
    hb_blob_destroy(blob);
    if (hb_face_get_glyph_count(face) == 0) { // not a font HarfBuzz can read
        hb_face_destroy(face);
        return nullptr;
    }
    return std::make_shared<const VTFontFace>(file, face);
}

} // namespace

std::shared_ptr<const VTFontFace> VTFontFace::faceForFont(const QFont &font)
{
    // Layout asks about one font glyph after glyph, so the last answer is kept per thread before the
    // resolution through Qt and the cache. Neither is ever destroyed: faces may be asked for until the
    // very end of the process, and a QFont must not be destroyed after Qt's font database is gone.
    struct LastAnswer
    {
        QFont font;
        std::shared_ptr<const VTFontFace> face;
    };
    thread_local LastAnswer *const last = new LastAnswer{QFont(), nullptr};
    static FaceCache *const faces = FaceCache::newStaticCacheVeltoWithName(u"fontFaces"_s).release();
    if (last->face && last->font == font)
        return last->face;
    // The face is resolved at a fixed size: sizes do not change the face, and Qt resolves a tiny size
    // (0.155 pt) to an engine without a family, on which QRawFont::familyName() crashes.
    QFont atResolvingSize = font;
    atResolvingSize.setPointSizeF(12);
    const QRawFont raw = QRawFont::fromFont(atResolvingSize);
    if (!raw.isValid())
        return nullptr;
    const QString key = resolvedFaceKey(raw);
    if (const std::optional<std::shared_ptr<const VTFontFace>> known = faces->objectForKey(key)) {
        *last = {font, *known};
        return *known;
    }
    std::shared_ptr<const VTFontFace> face = openFace(raw);
    faces->setObject(face, key);
    *last = {font, face};
    return face;
}

VTFontFace::VTFontFace(const VTFontconfigFace &file, hb_face_t *face)
    : m_file(file), m_face(face), m_font(hb_font_create(face))
{
}

VTFontFace::~VTFontFace()
{
    hb_font_destroy(m_font);
    hb_face_destroy(m_face);
}

int VTFontFace::unitsPerEm() const
{
    return int(hb_face_get_upem(m_face));
}

bool VTFontFace::hasLayoutFeature(quint32 tag) const
{
    hb_tag_t scriptTags[HB_OT_MAX_TAGS_PER_SCRIPT];
    unsigned int scriptCount = HB_OT_MAX_TAGS_PER_SCRIPT;
    hb_ot_tags_from_script_and_language(HB_SCRIPT_LATIN, HB_LANGUAGE_INVALID, &scriptCount, scriptTags, nullptr, nullptr);
    for (const hb_tag_t table : {HB_OT_TAG_GSUB, HB_OT_TAG_GPOS}) {
        // Selects as shaping does: the script's own tags, else DFLT, dflt or latn.
        unsigned int scriptIndex = HB_OT_LAYOUT_NO_SCRIPT_INDEX;
        hb_tag_t chosenScript = HB_TAG_NONE;
        hb_ot_layout_table_select_script(m_face, table, scriptCount, scriptTags, &scriptIndex, &chosenScript);
        unsigned int featureIndex = 0;
        if (scriptIndex != HB_OT_LAYOUT_NO_SCRIPT_INDEX
            && hb_ot_layout_language_find_feature(m_face, table, scriptIndex, HB_OT_LAYOUT_DEFAULT_LANGUAGE_INDEX,
                                                  tag, &featureIndex))
            return true;
    }
    return false;
}

QList<quint32> VTFontFace::layoutFeatureTags() const
{
    QList<quint32> tags;
    for (const hb_tag_t table : {HB_OT_TAG_GSUB, HB_OT_TAG_GPOS}) {
        hb_tag_t page[64];
        unsigned int start = 0;
        unsigned int count = std::size(page);
        do {
            count = std::size(page);
            hb_ot_layout_table_get_feature_tags(m_face, table, start, &count, page);
            tags.append(QList<quint32>(page, page + count));
            start += count;
        } while (count == std::size(page));
    }
    std::sort(tags.begin(), tags.end());
    tags.erase(std::unique(tags.begin(), tags.end()), tags.end());
    return tags;
}

quint32 VTFontFace::glyphNamed(QByteArrayView name) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_glyph_from_name(m_font, name.data(), int(name.size()), &glyph) ? glyph : 0;
}

QList<quint32> VTFontFace::nominalGlyphs(QStringView text) const
{
    const QList<uint> characters = text.toUcs4();
    QList<quint32> glyphs(characters.size(), 0);
    // HarfBuzz stops at the first character the face lacks; that one keeps glyph 0.
    for (qsizetype done = 0; done < characters.size(); ++done) {
        done += hb_font_get_nominal_glyphs(m_font, unsigned(characters.size() - done), characters.constData() + done,
                                           sizeof(uint), glyphs.data() + done, sizeof(quint32));
    }
    return glyphs;
}

VTFontFace::Shaped VTFontFace::shape(QStringView text, const QList<quint32> &featureTags) const
{
    QVarLengthArray<hb_feature_t, 4> features;
    for (const quint32 tag : featureTags)
        features.append({tag, 1, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    hb_buffer_t *buffer = hb_buffer_create();
    hb_buffer_add_utf16(buffer, reinterpret_cast<const uint16_t *>(text.utf16()), int(text.size()), 0, int(text.size()));
    hb_buffer_guess_segment_properties(buffer);
    hb_shape(m_font, buffer, features.data(), unsigned(features.size()));

    unsigned int count = 0;
    const hb_glyph_info_t *infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t *positions = hb_buffer_get_glyph_positions(buffer, &count);
    Shaped shaped;
    shaped.glyphs.reserve(count);
    shaped.positions.reserve(count);
    QPointF pen;
    for (unsigned int i = 0; i < count; ++i) {
        shaped.glyphs.append(infos[i].codepoint);
        // HarfBuzz measures y upwards, Qt downwards.
        shaped.positions.append(pen + QPointF(positions[i].x_offset, -positions[i].y_offset));
        pen += QPointF(positions[i].x_advance, -positions[i].y_advance);
    }
    shaped.advance = pen;
    hb_buffer_destroy(buffer);
    return shaped;
}

QString VTFontFace::tagName(quint32 tag)
{
    char name[4];
    hb_tag_to_string(tag, name);
    return QString::fromLatin1(name, 4);
}

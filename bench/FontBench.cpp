// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The font services on their hot paths, in Linux Libertine O (fonts-linuxlibertine):
// - the glyphs of a 10,000-character string (velto::glyphsForCharactersInString, a character-map
//   lookup through the face cache) against HarfBuzz shaping the same string directly with an hb_font
//   opened once on the same file (what a caller without our call would run to get glyphs);
// - the hyphen test with a warm cache (the face lookup for the font's name, then the caller's hash and
//   set) against a QSet<quint32> lookup of the same glyphs, the floor of any such test.

#include "BenchRatio.h"

#include "Font+VeltoAdditions.h"

#include <QFile>
#include <QGuiApplication>
#include <QSet>

#include <hb.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

const QFont &benchFont()
{
    static const QFont font = [] {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "FontBench";
        static char *argv[] = {name, nullptr};
        new QGuiApplication(argc, argv); // lives for the whole run
        const QFont libertine(u"Linux Libertine O"_s, 12);
        if (velto::fontFilePathVelto(libertine).isEmpty()) {
            std::fputs("FontBench needs fonts-linuxlibertine (scripts/install-deps)\n", stderr);
            std::abort();
        }
        return libertine;
    }();
    return font;
}

const QString &tenThousandCharacters()
{
    static const QString text = [] {
        const QString sentence = u"Sphinx of black quartz, judge my vow: d\u00e9j\u00e0 vu, na\u00efve caf\u00e9s \u2014 1,234.56 \u20ac! "_s;
        QString built;
        while (built.size() < 10000)
            built += sentence;
        return built.left(10000);
    }();
    return text;
}

void BM_GlyphsForCharacters(benchmark::State &state)
{
    const QFont &font = benchFont();
    const QString &text = tenThousandCharacters();
    for (auto _ : state)
        benchmark::DoNotOptimize(velto::glyphsForCharactersInString(font, text, VeltoMakeRange(0, text.size())).constData());
    state.SetItemsProcessed(state.iterations() * text.size());
}

void BM_Baseline_HarfBuzzShape(benchmark::State &state)
{
    hb_blob_t *blob = hb_blob_create_from_file(QFile::encodeName(velto::fontFilePathVelto(benchFont())).constData());
    hb_face_t *face = hb_face_create(blob, 0);
    hb_font_t *font = hb_font_create(face);
    hb_buffer_t *buffer = hb_buffer_create();
    const QString &text = tenThousandCharacters();
    for (auto _ : state) {
        hb_buffer_clear_contents(buffer);
        hb_buffer_add_utf16(buffer, reinterpret_cast<const uint16_t *>(text.utf16()), int(text.size()), 0, int(text.size()));
        hb_buffer_guess_segment_properties(buffer);
        hb_shape(font, buffer, nullptr, 0);
        benchmark::DoNotOptimize(hb_buffer_get_glyph_infos(buffer, nullptr));
    }
    state.SetItemsProcessed(state.iterations() * text.size());
    hb_buffer_destroy(buffer);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
}

// Glyphs of "A-b-" repeated: every other one a hyphen.
const QList<quint32> &probeGlyphs()
{
    static const QList<quint32> glyphs = velto::glyphsForCharactersInString(benchFont(), u"A-b-"_s, VeltoMakeRange(0, 4));
    return glyphs;
}

void BM_HyphenTestWarmCache(benchmark::State &state)
{
    const QFont &font = benchFont();
    velto::VeltoHyphenGlyphCache cache;
    (void)velto::isHyphenationGlyph(font, 0, cache);
    qsizetype index = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(velto::isHyphenationGlyph(font, probeGlyphs().at(index++ & 3), cache));
}

void BM_Baseline_QSetContains(benchmark::State &state)
{
    const QSet<quint32> hyphens{probeGlyphs().at(1)};
    qsizetype index = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(hyphens.contains(probeGlyphs().at(index++ & 3)));
}

BENCHMARK(BM_GlyphsForCharacters)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_HarfBuzzShape)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HyphenTestWarmCache);
BENCHMARK(BM_Baseline_QSetContains);

VELTO_BENCHMARK_RATIO("BM_GlyphsForCharacters", "BM_Baseline_HarfBuzzShape");
VELTO_BENCHMARK_RATIO("BM_HyphenTestWarmCache", "BM_Baseline_QSetContains");

} // namespace

VELTO_BENCHMARK_MAIN()

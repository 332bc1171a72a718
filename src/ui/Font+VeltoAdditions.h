// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Font+VeltoAdditions.h
 * \brief Additions to QFont: fonts by name and by well-known family with fixed fallbacks, the menu
 * font, the glyphs a font gives a string, a cached hyphen-glyph test, and what the font's file holds.
 *
 * \code
 * const QFont body = velto::timesFontOfSize(13);            // Times, or the nearest installed serif
 * velto::VeltoHyphenGlyphCache hyphens;
 * const QList<quint32> glyphs = velto::glyphsForCharactersInString(body, text, VeltoMakeRange(0, text.size()));
 * const bool breakable = velto::isHyphenationGlyph(body, glyphs.value(0), hyphens);
 * \endcode
 *
 * Fonts are read from the face Qt draws a QFont with, opened from its file (HarfBuzz on the file
 * fontconfig lists for it). A face only Qt knows (QFontDatabase::addApplicationFont) has no file here:
 * it gives no glyphs, no feature tags and no hyphens. Needs a QGuiApplication; main thread only.
 * Font features (small capitals and the like) are VeltoFont's.
 */

#include "VeltoRange.h"
#include "veltocoregui_export.h"

#include <QFont>
#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

#include <optional>

namespace velto {

/**
 * \brief fontWithName: the installed face whose PostScript name is \a name ("LinLibertineOB",
 * "LiberationSerif-Bold"), else the installed family called \a name (letter case ignored), at
 * \a pointSize (12 when it is not a positive number). Nothing when neither exists; aliases that
 * fontconfig resolves ("serif") are not names of fonts.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontWithName(const QString &name, double pointSize);
/// fontName: the PostScript name of the face \a font is drawn with ("LinLibertineO"); its family when the face has none.
[[nodiscard]] VELTOCOREGUI_EXPORT QString fontName(const QFont &font);

/// lucidaGrandeFontOfSize: Lucida Grande, else DejaVu Sans, else the system font (docs/platform-mapping.md lists each step).
[[nodiscard]] VELTOCOREGUI_EXPORT QFont lucidaGrandeFontOfSize(double size);
/// boldLucidaGrandeFontOfSize: Lucida Grande Bold by either of its names, else lucidaGrandeFontOfSize() made bold.
[[nodiscard]] VELTOCOREGUI_EXPORT QFont boldLucidaGrandeFontOfSize(double size);
/// timesFontOfSize: Times New Roman or Times, else Nimbus Roman, TeX Gyre Termes or Liberation Serif, else the user font, else the system font.
[[nodiscard]] VELTOCOREGUI_EXPORT QFont timesFontOfSize(double size);
/// helveticaFontOfSize: Helvetica, else Nimbus Sans, TeX Gyre Heros or Liberation Sans, else the user font, else the system font.
[[nodiscard]] VELTOCOREGUI_EXPORT QFont helveticaFontOfSize(double size);
/**
 * \brief monospaceFontOfSize: Courier, Courier New or Monaco, else Nimbus Mono PS, TeX Gyre Cursor,
 * Liberation Mono or DejaVu Sans Mono, else the system font (never the user font).
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QFont monospaceFontOfSize(double size);
/// menuItemFont: the system font (QFontDatabase::GeneralFont) at 14 points.
[[nodiscard]] VELTOCOREGUI_EXPORT QFont menuItemFont();
/// convertedToBoldVelto: \a font in its family's bold face (its style name cleared so that the weight counts).
[[nodiscard]] VELTOCOREGUI_EXPORT QFont convertedToBoldVelto(QFont font);

/**
 * \brief glyphsForCharactersInString: the glyph the font has for each character of \a range of
 * \a string, from the font's character map, without shaping (no ligatures, no features): one glyph per
 * character, a surrogate pair being one character; 0 for a character the font lacks. Empty when the
 * font has no file (see above).
 * \throws VeltoException NSRangeException when \a range reaches past the end of \a string.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QList<quint32> glyphsForCharactersInString(const QFont &font, const QString &string,
                                                                            VeltoRange range);

/// A caller's cache for isHyphenationGlyph(): font name to the glyphs that are hyphens in that font.
using VeltoHyphenGlyphCache = QHash<QString, QSet<quint32>>;

/**
 * \brief isHyphenationGlyph: whether \a glyph is one of the font's hyphens: the glyph it gives "-" or
 * the glyph named "hyphen".
 *
 * The hyphens of a font are found once and kept in \a cache under fontName(\a font); an entry is never
 * refreshed, and the caller decides how long the cache lives.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT bool isHyphenationGlyph(const QFont &font, quint32 glyph, VeltoHyphenGlyphCache &cache);

/// fontFilePathVelto: the file of the face \a font is drawn with; empty when fontconfig lists none.
[[nodiscard]] VELTOCOREGUI_EXPORT QString fontFilePathVelto(const QFont &font);
/// layoutFeatureTagsVelto: the OpenType feature tags of the face's GSUB and GPOS tables ("c2sc", "kern", …), sorted, each once.
[[nodiscard]] VELTOCOREGUI_EXPORT QStringList layoutFeatureTagsVelto(const QFont &font);

} // namespace velto

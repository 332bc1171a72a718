// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFont.h
 * \brief VeltoFont: a QFont with the typographic feature settings it is drawn with (small capitals,
 * petite capitals, titling capitals, …), which a QFont cannot carry in Qt 6.4.
 *
 * A VeltoFont only ever holds settings its face honours: fontByAddingFontFeautures() checks that the
 * face's OpenType layout tables have the feature each setting stands for (for Latin text) and answers
 * nothing otherwise, so that the caller can fall back. Settings map onto OpenType feature tags as
 * docs/platform-mapping.md lists (letter case 3 selector 3, its second encoding 12 and lower case 37
 * selector 1 are all "smcp"). Qt's text layout does not apply them: draw the text with glyphRunForString().
 *
 * \code
 * const VeltoFont body(velto::timesFontOfSize(13));
 * const VeltoFont caps = body.fontByAddingChangeCaseFontFeature(VeltoFontChangeCase_SmallCaps).value_or(body);
 * painter.drawGlyphRun(QPointF(10, 40), caps.glyphRunForString(u"Small Capitals"_s));
 * settings->setObject(caps.propertyListRepresentation(), u"headingFont"_s);
 * \endcode
 *
 * The property-list form is {"fontName": the face's PostScript name, "pointSize": a 32-bit float}, and
 * "fontFeatures" (the feature list) when there are settings. Needs a QGuiApplication; main thread only.
 */

#include "VeltoError.h"
#include "veltocoregui_export.h"

#include <QFont>
#include <QGlyphRun>
#include <QSharedDataPointer>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class VeltoFontData;

class VELTOCOREGUI_EXPORT VeltoFont
{
public:
    /// VeltoFont: \a font with no feature settings.
    VeltoFont(const QFont &font = QFont()); // implicit: every QFont is a VeltoFont without settings
    VeltoFont(const VeltoFont &other);
    VeltoFont &operator=(const VeltoFont &other);
    ~VeltoFont();

    /// font: the QFont, without the settings.
    [[nodiscard]] QFont font() const;
    /// fontFeatures: the feature list, in the order the settings were added; empty when there are none.
    [[nodiscard]] QVariantList fontFeatures() const;
    /// hasFontFeature: whether a setting of \a type is held; its selector is stored through \a selector when given.
    [[nodiscard]] bool hasFontFeature(quint32 type, qint64 *selector = nullptr) const;

    /**
     * \brief fontByAddingFontFeautures: this font with \a additions appended to its settings; this font
     * itself when \a additions is empty; nothing when the face does not honour every setting of the
     * combined list (a setting with no OpenType counterpart is never honoured).
     */
    [[nodiscard]] std::optional<VeltoFont> fontByAddingFontFeautures(const QVariantList &additions) const;
    /// fontByAddingFontFeature: fontByAddingFontFeautures() with the one setting {\a type, \a selector}.
    [[nodiscard]] std::optional<VeltoFont> fontByAddingFontFeature(quint32 type, quint64 selector) const;
    /**
     * \brief fontByAddingChangeCaseFontFeature: this font showing the change-case value \a changeCase:
     * itself for 0; otherwise with letter case \a changeCase, and for small capitals (3) also tried as
     * letter case 12 and lower case 1. Nothing when the face honours none of them. All capitals, all
     * lower case and initial capitals (1, 2, 4) have no OpenType feature: use QFont::setCapitalization().
     */
    [[nodiscard]] std::optional<VeltoFont> fontByAddingChangeCaseFontFeature(quint32 changeCase) const;

    /// propertyListRepresentation: {"fontName", "pointSize"} and, when there are settings, "fontFeatures".
    [[nodiscard]] QVariantMap propertyListRepresentation() const;
    /**
     * \brief initWithPropertyListRepresentation: the font \a plist describes: the font named "fontName"
     * (velto::fontWithName()) at "pointSize" (12 when missing or not positive), else the user font
     * (the application font) of that size; with the settings of "fontFeatures" when the face honours them.
     *
     * Always a font. A value of the wrong kind, a setting that is not a map of two numbers, or settings
     * the face does not honour leave the settings out and are reported through \a error (code 4 for the
     * kinds, 1 otherwise).
     */
    [[nodiscard]] static VeltoFont initWithPropertyListRepresentation(const QVariantMap &plist, VeltoError *error = nullptr);

    /**
     * \brief glyphRunForString: \a text shaped with HarfBuzz in this font's face with its settings (and
     * the default features: kerning, ligatures), as a glyph run whose positions are relative to the
     * start of the baseline. One line, one face: characters the face lacks show as its missing glyph.
     * Empty when the face has no file (see Font+VeltoAdditions.h).
     */
    [[nodiscard]] QGlyphRun glyphRunForString(const QString &text) const;

    bool operator==(const VeltoFont &other) const;
    bool operator!=(const VeltoFont &other) const { return !(*this == other); }

private:
    VeltoFont(const QFont &font, const QVariantList &features);

    QSharedDataPointer<VeltoFontData> d;
};

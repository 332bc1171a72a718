// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file FontDatabase+VeltoAdditions.h
 * \brief Additions to the font database (the font manager): a family's regular face, and the fonts
 * that cover a character.
 *
 * \code
 * if (const std::optional<QFont> font = velto::fontCoveringCharacter(U'→', 12, editorFontName))
 *     label->setFont(*font);
 * \endcode
 *
 * The available fonts are QFontDatabase::families() in its order (alphabetical); a family covers a
 * character when the character set fontconfig read from its regular face (the one nearest to regular
 * weight, upright and normal width) holds it. The sets are read once per process. Needs a
 * QGuiApplication; main thread only.
 */

#include "veltocoregui_export.h"

#include <QFont>
#include <QList>

#include <optional>

namespace velto {

/**
 * \brief fontWithFamilyName: the regular (not bold, not italic, normal weight) face of the installed
 * family \a family at 12 points; else the font whose name is \a family (velto::fontWithName()) at 12
 * points; nothing when there is neither.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontWithFamilyName(const QString &family);
/// fontCoveringCharacter: the first available font that covers \a character, at \a size points; nothing when none does.
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontCoveringCharacter(char32_t character, double size);
/**
 * \brief fontCoveringCharacter: the font named \a preferredFontName (velto::fontWithName()) when it
 * exists and its face covers \a character; otherwise the first available font that covers it.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontCoveringCharacter(char32_t character, double size,
                                                                            const QString &preferredFontName);
/// fontsCoveringCharacter: every available font that covers \a character, in the order of the list, at \a size points; empty when none does.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<QFont> fontsCoveringCharacter(char32_t character, double size);

} // namespace velto

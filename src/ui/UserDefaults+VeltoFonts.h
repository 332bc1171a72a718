// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file UserDefaults+VeltoFonts.h
 * \brief Additions to VeltoUserDefaults: a font kept as two entries, its family under key + ".name" and
 * its point size (a float) under key + ".size".
 *
 * \code
 * velto::setFont(*defaults, editor->font(), u"editorFont"_s);
 * if (const std::optional<QFont> font = velto::fontForKey(*defaults, u"editorFont"_s))
 *     editor->setFont(*font);
 * \endcode
 *
 * A font is found when its family is one of QFontDatabase::families() (compared case-insensitively, as
 * fontconfig does; aliases such as "sans-serif" are not families). Needs a QGuiApplication.
 */

#include "VeltoUserDefaults.h"
#include "veltocoregui_export.h"

#include <QFont>

#include <optional>

namespace velto {

/// fontForKey: fontForKey(defaults, key, std::nullopt).
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontForKey(const VeltoUserDefaults &defaults,
                                                                  const QString &key);
/**
 * fontForKey: \a defaultValue when key + ".name" has no value; else the font of that family with the
 * point size under key + ".size" (12.0 when there is none, or when it is not a positive number), with
 * the family spelled as the font database does, or \a defaultValue when no installed font has that family.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT std::optional<QFont> fontForKey(const VeltoUserDefaults &defaults,
    const QString &key, const std::optional<QFont> &defaultValue);
/**
 * setFont: stores \a font's family under key + ".name" and its point size as a float under key + ".size"
 * (for a font sized in pixels, the point size it has on the primary screen); an empty \a font removes
 * both keys. \return false, with \a error, when the user defaults could not be written.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT bool setFont(VeltoUserDefaults &defaults, const std::optional<QFont> &font,
                                               const QString &key, VeltoError *error = nullptr);

} // namespace velto

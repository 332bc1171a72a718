// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Small rules the font services share: which installed family a name means, and the point size a font
// is stored and read with.

#include "veltocoregui_export.h"

#include <QFont>
#include <QString>

/// VTInstalledFamily: the installed family called \a name as the font database spells it (letter case
/// ignored, as fontconfig does); null when there is none. Aliases that fontconfig resolves
/// ("sans-serif") are not families, so they are not found.
[[nodiscard]] VELTOCOREGUI_TESTS_EXPORT QString VTInstalledFamily(const QString &name);
/// VTPointSizeOf: \a font's point size; for a font sized in pixels, the one it has on the primary screen.
[[nodiscard]] double VTPointSizeOf(const QFont &font);
/// VTUsablePointSize: \a size when it is a positive finite number, else 12.0: the size of a stored font
/// whose size is missing or unusable.
[[nodiscard]] double VTUsablePointSize(double size);

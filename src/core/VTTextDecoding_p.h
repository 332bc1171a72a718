// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTStringFromUtf8ThenAscii: how the library reads bytes that came from outside as text (a tool's
// output, an extended attribute): as UTF-8, then as ASCII.

#include <QByteArrayView>
#include <QString>

/**
 * VTStringFromUtf8ThenAscii: \a bytes read as UTF-8 with nothing replaced, else as ASCII, else a null
 * string. ASCII is a subset of UTF-8, so the second reading can accept nothing the first refused: the
 * result is the strict UTF-8 reading, and a null string for any malformed sequence. A leading byte-order
 * mark is kept as U+FEFF. Empty input gives an empty, non-null string.
 */
[[nodiscard]] QString VTStringFromUtf8ThenAscii(QByteArrayView bytes);

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The rules behind two URL additions, as functions of their inputs alone, so that tests and fuzzers can
// drive them without a sandbox: the loose-text rule and the container-to-real-file mapping.

#include "veltocore_export.h"

#include <QString>
#include <QUrl>

/// VTURLFromString: the loose-text rule of velto::URLWithVeltoValidatedString() for one line of text.
[[nodiscard]] VELTOCORE_TESTS_EXPORT QUrl VTURLFromString(const QString &text);

/**
 * VTRealFileForContainerURL: for \a url inside \a containerDataFolder, the same relative path inside
 * \a homeFolder when that is the same file; \a url otherwise.
 */
[[nodiscard]] VELTOCORE_TESTS_EXPORT QUrl VTRealFileForContainerURL(const QUrl &url, const QString &containerDataFolder,
                                                                    const QString &homeFolder);

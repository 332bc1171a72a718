// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The checked-in table behind VeltoUTI: the common public type identifiers with their MIME type (the
// clipboard type on Linux desktops) and, where the shared MIME database has no file-name extension for
// that type, the extension. Rows are in order of preference: the first row for a MIME type or an
// extension is the identifier it converts to.

#include "veltocore_export.h"

#include <span>

struct VTTypeIdentifierRow
{
    const char *identifier;
    const char *mimeType;  ///< may carry parameters ("text/plain;charset=utf-8"); empty when there is none
    const char *extension; ///< empty: the MIME database's preferred extension of mimeType
};

class VELTOCORE_TESTS_EXPORT VTTypeIdentifierTable
{
public:
    VTTypeIdentifierTable() = delete;

    /// Every row, in order of preference.
    static std::span<const VTTypeIdentifierRow> rows();
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTPasswordEntry: the password database's entry for the process's real user id, read with getpwuid_r
// (getpwuid() would share one static buffer with every other caller in the process).

#include <QByteArray>

#include <optional>

struct VTPasswordEntry
{
    QByteArray name;       ///< the login name, as stored (not decoded)
    QByteArray homeFolder; ///< the home folder, as stored (not decoded); HOME may differ
};

/// VTPasswordEntryForRealUser: the entry of getuid(), or nothing when the database has none.
[[nodiscard]] std::optional<VTPasswordEntry> VTPasswordEntryForRealUser();

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTPasswordEntry_p.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

std::optional<VTPasswordEntry> VTPasswordEntryForRealUser()
{
    long bufferSize = sysconf(_SC_GETPW_R_SIZE_MAX);
    if (bufferSize <= 0)
        bufferSize = 16384;
    std::vector<char> buffer(static_cast<size_t>(bufferSize));
    struct passwd entry;
    struct passwd *result = nullptr;
    int status = 0;
    while ((status = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &result)) == ERANGE
           && buffer.size() < 1024 * 1024) {
        buffer.resize(buffer.size() * 2);
    }
    if (status != 0 || !result)
        return std::nullopt;
    return VTPasswordEntry{QByteArray(result->pw_name ? result->pw_name : ""),
                           QByteArray(result->pw_dir ? result->pw_dir : "")};
}

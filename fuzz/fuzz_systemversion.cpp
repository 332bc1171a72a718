// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Version parsing takes any text: it never fails for a real record and printing never crashes.

#include "VeltoSystemVersions.h"

#include <QString>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    VeltoSystemVersion version{};
    if (!VeltoSystemVersion_GetFromString(&version, text))
        std::abort();
    (void)VeltoSystemVersion_ToString(&version);
    return 0;
}

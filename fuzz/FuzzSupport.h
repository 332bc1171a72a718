// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// What the fuzz targets share: a check that aborts (libFuzzer reports an abort as a crash with the
// input), and fuzz bytes read as UTF-16 text.

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <cstring>

/// fuzzCheck: aborts when \a condition is false.
inline void fuzzCheck(bool condition)
{
    if (!condition)
        std::abort();
}

/// fuzzUtf16Text: the input as UTF-16 units, two bytes each (an odd last byte left out), unpaired
/// surrogates and all. The bytes need not be aligned for UTF-16, so they are copied.
inline QString fuzzUtf16Text(const uint8_t *data, size_t size)
{
    QString text(qsizetype(size / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data, size / 2 * 2);
    return text;
}

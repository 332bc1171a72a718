// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Snapshots of the non-owning collections: a plain buffer of addresses filled in one walk. An allocation
// failure gives no buffer rather than an exception.

#include <memory>
#include <new>

template<typename Range, typename Address>
std::unique_ptr<void *[]> VTSnapshotBuffer(const Range &range, qsizetype count, Address address)
{
    std::unique_ptr<void *[]> buffer(new (std::nothrow) void *[size_t(count > 0 ? count : 1)]);
    if (!buffer)
        return nullptr;
    qsizetype i = 0;
    for (auto it = range.begin(); it != range.end() && i < count; ++it)
        buffer[size_t(i++)] = const_cast<void *>(static_cast<const void *>(address(it)));
    return buffer;
}

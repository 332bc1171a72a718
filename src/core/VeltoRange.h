// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoRange.h
 * \brief VeltoRange: a (location, length) pair of unsigned 64-bit words, counted in UTF-16 units
 * wherever it refers to text; end = location + length.
 */

#include <QtGlobal>

/// The location of "not found"; the range "no range" is {VeltoNotFound, 0}.
inline constexpr quint64 VeltoNotFound = 0x7FFFFFFFFFFFFFFFULL;

/// VeltoRange: a half-open span [location, location + length).
struct VeltoRange
{
    quint64 location = 0;
    quint64 length = 0;

    /// end: location + length (wraps like unsigned arithmetic does).
    [[nodiscard]] constexpr quint64 end() const noexcept { return location + length; }
    constexpr bool operator==(const VeltoRange &) const noexcept = default;
};

/// VeltoMakeRange: the range (location, length).
[[nodiscard]] constexpr VeltoRange VeltoMakeRange(quint64 location, quint64 length) noexcept
{
    return VeltoRange{location, length};
}

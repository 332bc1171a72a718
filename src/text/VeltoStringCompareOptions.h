// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoStringCompareOptions.h
 * \brief VeltoStringCompareOptions: how the library's string searches and comparisons match text.
 *
 * The values are fixed (they are stored by callers and passed through match callbacks), so new options
 * take new bits. Comparison is always by UTF-16 unit: Literal is accepted and is what every search does.
 */

#include <QFlags>

enum class VeltoStringCompareOption : unsigned {
    CaseInsensitive = 1, ///< letters match regardless of case (Unicode simple case folding)
    Literal = 2,         ///< unit by unit; the only comparison the library makes, so always in effect
    Backwards = 4,       ///< the match nearest the end of the range wins
    Anchored = 8,        ///< the match must start at the range's start (or end there when Backwards)
    Numeric = 64,        ///< in comparisons, digit runs compare by numeric value
};
Q_DECLARE_FLAGS(VeltoStringCompareOptions, VeltoStringCompareOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoStringCompareOptions)

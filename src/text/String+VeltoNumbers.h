// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoNumbers.h
 * \brief Numbers as short display text without a formatter: six decimals, or at most a given number of
 * decimals with trailing zeros dropped and the user's decimal separator.
 *
 * \code
 * velto::stringWithVeltoFloat(2.5);       // "2.500000"
 * velto::stringWithVeltoFloat(2.5, 3);    // "2.5" ("2,5" where the separator is a comma)
 * \endcode
 *
 * For grouping, rounding or units use VeltoNumberFormatter instead.
 */

#include "veltocore_export.h"

#include <QString>

namespace velto {

/// stringWithVeltoFloat: \a value as printf's "%f" writes it in the C locale: six decimals ("2.500000",
/// "-0.000000", "inf", "nan").
[[nodiscard]] VELTOCORE_EXPORT QString stringWithVeltoFloat(double value);

/**
 * stringWithVeltoFloat: "%f" of \a value cut (not rounded) to at most \a maxDecimalCount decimals, trailing
 * zeros dropped, and the separator with them when no decimal is left: 2.5 with 3 → "2.5", 2.0 with 3 →
 * "2", 1.239 with 2 → "1.23". When decimals remain, the "." becomes
 * VeltoNumberFormatter::localizedDecimalSeparatorVelto() (fixed at its first use in the process). Text
 * without a "." ("inf") is returned as "%f" wrote it.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringWithVeltoFloat(double value, quint64 maxDecimalCount);

} // namespace velto

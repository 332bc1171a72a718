// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoRandom.h
 * \brief A small pseudo-random number service over the C library's random(), seeded from the clock
 * on first use.
 *
 * Good enough for shuffling and sampling in the interface; not for anything that needs secrecy
 * (use QRandomGenerator::system() for that) or statistical quality (use QRandomGenerator or <random>).
 *
 * The first draw (any function below except VeltoRandom_ResetSeed) seeds the generator once with the
 * current time in seconds. VeltoRandom_ResetSeed() does not count as that seeding: a seed set before
 * the first draw is replaced by the time seed at that draw. To get a repeatable sequence, draw once
 * and then reset the seed.
 *
 * \code
 * (void)VeltoRandom_Int();          // seeds from the clock
 * VeltoRandom_ResetSeed(42);        // from here on the sequence repeats for every run
 * const quint64 die = VeltoRandom_UIntegerBetween(1, 6);
 * \endcode
 *
 * Thread safety: the one-time seeding is thread-safe; the draws share the C library's generator and
 * add no locking of their own.
 */

#include "veltocore_export.h"

#include "VeltoRange.h"

#include <QtGlobal>

/// VeltoRandom_ResetSeed: seeds the generator with \a seed (srandom). Does not mark it as seeded.
VELTOCORE_EXPORT void VeltoRandom_ResetSeed(quint32 seed);

/// VeltoRandom_Int: the next random() value, 0 to 2,147,483,647.
[[nodiscard]] VELTOCORE_EXPORT int VeltoRandom_Int();

/// VeltoRandom_Integer: the same draw as VeltoRandom_Int(), as a signed word.
[[nodiscard]] VELTOCORE_EXPORT qint64 VeltoRandom_Integer();

/**
 * VeltoRandom_UIntegerBetween: low + random() modulo (high - low + 1), a value from \a low to \a high,
 * both included. The count high - low + 1 is computed modulo 2^64: with \a high below \a low it wraps
 * to a large count and the result is low + random(). The full range (a count that wraps to 0, such as
 * 0 to the largest quint64) is a programming error.
 * \throws VeltoException named VeltoInvalidArgumentException when high - low + 1 is 0; nothing is
 * drawn then.
 */
[[nodiscard]] VELTOCORE_EXPORT quint64 VeltoRandom_UIntegerBetween(quint64 low, quint64 high);

/**
 * VeltoRandom_LocationInRange: a location inside \a range: its location, without drawing, when its
 * length is 0; otherwise VeltoRandom_UIntegerBetween(location, location + length - 1).
 */
[[nodiscard]] VELTOCORE_EXPORT quint64 VeltoRandom_LocationInRange(VeltoRange range);

/// VeltoRandom_Float: random() / 2,147,483,647.0, a double from 0 to 1 with both ends possible.
[[nodiscard]] VELTOCORE_EXPORT double VeltoRandom_Float();

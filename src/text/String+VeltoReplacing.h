// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoReplacing.h
 * \brief Replace-all operations on QString: a copy with every match replaced, or an edit of the caller's
 * string, built on VeltoStringReplacer.
 *
 * \code
 * const QString unix = velto::stringByReplacingAllLineEndingsWithString(text, u"\n"_s);
 * velto::removeCharactersInSet(name, VeltoCharacterSet::gremlinCharacterSet());
 * \endcode
 *
 * The returning forms give the receiver itself (sharing its data, nothing copied) when nothing matches.
 * Searching resumes after each match, never inside inserted text. Strings longer than
 * VeltoStringReplacer::BufferedPassThreshold units are rebuilt in one pass; if memory runs out there, the
 * receiver comes back unchanged. Use VeltoStringReplacer directly to chain passes or limit one to a range.
 */

#include "VeltoCharacterSet.h"
#include "VeltoStringReplacer.h"
#include "veltocore_export.h"

#include <QString>

namespace velto {

/// stringByReplacingAllOccurrencesOfString: \a string with every occurrence of \a target replaced by
/// \a replacement; \a string itself when there is none (an empty target never matches).
[[nodiscard]] VELTOCORE_EXPORT QString stringByReplacingAllOccurrencesOfString(const QString &string,
    const QString &target, const QString &replacement);

/// stringByReplacingAllOccurrencesOfCharactersInSet: \a string with each member of \a set replaced by its own
/// copy of \a replacement (runs are not coalesced; a surrogate pair whose code point is a member is one match).
[[nodiscard]] VELTOCORE_EXPORT QString stringByReplacingAllOccurrencesOfCharactersInSet(const QString &string,
    const VeltoCharacterSet &set, const QString &replacement);

/**
 * stringByReplacingAllLineEndingsWithString: \a string with every CR LF pair, lone CR and lone LF replaced by
 * \a replacement. A one-unit replacement leaves the endings already equal to it as they are.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByReplacingAllLineEndingsWithString(const QString &string,
    const QString &replacement);

/// stringByReplacingAllVeltoUsing: \a string with every match of \a block replaced (see
/// VeltoStringReplacer::MatchBlock); \a string itself when nothing matches or \a block is empty.
[[nodiscard]] VELTOCORE_EXPORT QString stringByReplacingAllVeltoUsing(const QString &string,
    const VeltoStringReplacer::MatchBlock &block);

/// replaceAllOccurrencesOfString: replaces every occurrence of \a target in \a string by \a replacement;
/// returns whether anything was replaced (\a string is untouched when not).
VELTOCORE_EXPORT bool replaceAllOccurrencesOfString(QString &string, const QString &target,
    const QString &replacement);

/// replaceAllOccurrencesOfCharactersInSet: replaces each member of \a set in \a string by \a replacement
/// (not coalesced); returns the number of replacements.
VELTOCORE_EXPORT quint64 replaceAllOccurrencesOfCharactersInSet(QString &string, const VeltoCharacterSet &set,
    const QString &replacement);

/// removeCharactersInSet: removes every member of \a set from \a string.
VELTOCORE_EXPORT void removeCharactersInSet(QString &string, const VeltoCharacterSet &set);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file String+VeltoURLAdditions.h
 * \brief Percent-encoding of text for URLs, with the library's set of characters left as they are, and
 * its strict reverse.
 *
 * \code
 * velto::stringByAddingVeltoPercentEncoding(u"a b|ü"_s);          // "a%20b%7C%C3%BC"
 * velto::stringByRemovingVeltoPercentEncoding(u"a%20b"_s);         // "a b"
 * velto::stringByRemovingVeltoPercentEncoding(u"100%"_s);          // null: "%" must start an escape
 * \endcode
 */

#include "VeltoCharacterSet.h"
#include "veltocore_export.h"

#include <QString>

namespace velto {

/**
 * allowedPercentEncodedCharacterSetVelto: the characters percent-encoding leaves as they are, made once:
 * "!*'();:@&=+$,/?%#[]_~" and the code points 35 to 59, 63 to 91 and 97 to 122 (so letters, digits,
 * "-" and "." too). Space, '"', "<", ">", "\", "^", "`", "{", "|", "}", control characters and everything
 * beyond ASCII are encoded. "%" is in the set: text that is already encoded stays as it is.
 */
[[nodiscard]] VELTOCORE_EXPORT const VeltoCharacterSet &allowedPercentEncodedCharacterSetVelto();

/**
 * stringByAddingVeltoPercentEncoding: \a text with every character outside
 * allowedPercentEncodedCharacterSetVelto() replaced by "%XX" for each byte of its UTF-8 form (upper-case
 * hexadecimal digits). A null string for text that has no UTF-8 form (an unpaired surrogate); empty for
 * empty text.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByAddingVeltoPercentEncoding(const QString &text);

/**
 * stringByRemovingVeltoPercentEncoding: \a text with every "%XX" (two hexadecimal digits, either case)
 * replaced by the byte it stands for, the bytes then read as UTF-8. A null string when a "%" is not
 * followed by two hexadecimal digits, when the bytes are not valid UTF-8 (an escaped "%C3" alone, say),
 * or when \a text has an unpaired surrogate. Text without "%" comes back as it is.
 */
[[nodiscard]] VELTOCORE_EXPORT QString stringByRemovingVeltoPercentEncoding(const QString &text);

} // namespace velto

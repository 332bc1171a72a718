// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Percent-decoding reads escapes from outside text. A decoding must be valid text, text without "%" must
// come back unchanged, and encoding must give only allowed characters that decode back to the original.
// Anything else aborts.

#include "String+VeltoURLAdditions.h"

#include <QString>

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void checkText(const QString &text)
{
    const QString decoded = velto::stringByRemovingVeltoPercentEncoding(text);
    if (!decoded.isNull())
        check(decoded.isValidUtf16() && decoded.size() <= text.size());
    if (!text.contains(u'%') && text.isValidUtf16())
        check(decoded == text);

    const QString encoded = velto::stringByAddingVeltoPercentEncoding(text);
    if (!text.isValidUtf16()) {
        check(encoded.isNull());
        return;
    }
    const VeltoCharacterSet &allowed = velto::allowedPercentEncodedCharacterSetVelto();
    for (QChar unit : encoded)
        check(allowed.contains(unit.unicode()));
    if (!text.contains(u'%'))
        check(velto::stringByRemovingVeltoPercentEncoding(encoded) == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const char *bytes = reinterpret_cast<const char *>(data);
    // Once as UTF-8 text, once with every byte a character, so that any escape sequence can occur.
    checkText(QString::fromUtf8(bytes, qsizetype(size)));
    checkText(QString::fromLatin1(bytes, qsizetype(size)));
    return 0;
}

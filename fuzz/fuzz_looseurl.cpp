// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The loose-text URL rule takes whatever a person types or pastes. Whatever it makes must be a valid URL
// of one of the kinds the rule names, the one-line rule and the full rule must agree on one-line text,
// and the forms shown to users must not fail. Anything else aborts.

#include "Url+VeltoAdditions.h"
#include "VTURLRules_p.h"

#include <QString>

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

bool hasLineBreak(const QString &text)
{
    for (QChar unit : text) {
        const char16_t value = unit.unicode();
        if ((value >= 0x0A && value <= 0x0D) || value == 0x85 || value == 0x2028 || value == 0x2029)
            return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QUrl url = velto::URLWithVeltoValidatedString(text);
    if (text.size() > 600)
        check(url.isEmpty());
    if (!hasLineBreak(text))
        check(url == VTURLFromString(text));
    if (url.isEmpty())
        return 0;
    check(url.isValid());
    const QString scheme = url.scheme();
    if (text.startsWith(u'/') && !hasLineBreak(text))
        check(scheme == u"file");
    check(scheme.isEmpty() || !url.toString().isEmpty());
    (void)velto::filePathForUserDisplay(url);
    (void)velto::filePathForDebugDisplay(url);
    (void)velto::veltoFilePath(url);
    (void)velto::veltoStringifyWithoutPercentEncoding(url);
    return 0;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoURLAdditions.h"

#include "VTTextDecoding_p.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

} // namespace

const VeltoCharacterSet &allowedPercentEncodedCharacterSetVelto()
{
    static const VeltoCharacterSet allowed = [] {
        VeltoCharacterSet set = VeltoCharacterSet::characterSetWithCharactersInString(u"!*'();:@&=+$,/?%#[]_~");
        set.addCharactersInRange(VeltoMakeRange(35, 59 - 35 + 1));
        set.addCharactersInRange(VeltoMakeRange(63, 91 - 63 + 1));
        set.addCharactersInRange(VeltoMakeRange(97, 122 - 97 + 1));
        return set;
    }();
    return allowed;
}

QString stringByAddingVeltoPercentEncoding(const QString &text)
{
    if (text.isEmpty() || !text.isValidUtf16())
        return text.isEmpty() ? text : QString();
    // Bytes of characters beyond ASCII are never in the set, so a table of the ASCII members decides.
    static const std::array<bool, 128> kept = [] {
        std::array<bool, 128> table{};
        for (char32_t unit = 0; unit < 128; ++unit)
            table[unit] = allowedPercentEncodedCharacterSetVelto().contains(unit);
        return table;
    }();
    static constexpr char digits[] = "0123456789ABCDEF";
    const QByteArray utf8 = text.toUtf8();
    QByteArray encoded(utf8.size() * 3, Qt::Uninitialized);
    char *out = encoded.data();
    for (const char byte : utf8) {
        const uchar value = uchar(byte);
        if (value < 0x80 && kept[value]) {
            *out++ = byte;
        } else {
            *out++ = '%';
            *out++ = digits[value >> 4];
            *out++ = digits[value & 0xF];
        }
    }
    encoded.truncate(out - encoded.constData());
    return QString::fromLatin1(encoded);
}

QString stringByRemovingVeltoPercentEncoding(const QString &text)
{
    if (!text.contains(u'%'))
        return text.isValidUtf16() ? (text.isNull() ? u""_s : text) : QString();
    if (!text.isValidUtf16())
        return QString();
    const QByteArray bytes = text.toUtf8();
    QByteArray decoded;
    decoded.reserve(bytes.size());
    for (qsizetype index = 0; index < bytes.size(); ++index) {
        if (bytes[index] != '%') {
            decoded += bytes[index];
            continue;
        }
        const int high = index + 2 < bytes.size() ? hexValue(bytes[index + 1]) : -1;
        const int low = high >= 0 ? hexValue(bytes[index + 2]) : -1;
        if (low < 0)
            return QString();
        decoded += char(high << 4 | low);
        index += 2;
    }
    return VTStringFromUtf8ThenAscii(decoded);
}

} // namespace velto

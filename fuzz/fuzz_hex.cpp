// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Hex text comes from users and files. The fast reader (a table over slices) and the slow one
// (character by character) must agree on every text, valid or not, and bytes written as hex must read
// back unchanged. The input is read as UTF-16 (two bytes a unit, unpaired surrogates included) so that
// every white-space and non-ASCII character can occur. Anything else aborts.

#include "ByteArray+VeltoAdditions.h"
#include "FuzzSupport.h"

#include <QString>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzUtf16Text(data, size);
    const QByteArray fast = velto::initWithHexStringFast(text);
    const QByteArray slow = velto::initWithHexStringSlow(text);
    fuzzCheck(fast == slow && fast.isNull() == slow.isNull());
    const QString latin1 = QString::fromLatin1(reinterpret_cast<const char *>(data), qsizetype(size));
    fuzzCheck(velto::initWithHexStringSlow(latin1) == velto::dataWithHexStringVelto(latin1));

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    fuzzCheck(velto::dataWithHexStringVelto(velto::lowercaseHexString(bytes)) == bytes);
    fuzzCheck(velto::initWithHexStringSlow(velto::unadornedLowercaseHexString(bytes)) == bytes);
    return 0;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Base64 text comes from files and the clipboard. The reader skips every character outside the
// alphabet, so on any text it must give what Qt's own decoder gives for the alphabet's characters alone;
// and bytes written as base64, with any line length, must read back unchanged. Anything else aborts.

#include "ByteArray+VeltoAdditions.h"
#include "FuzzSupport.h"

#include <QString>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzUtf16Text(data, size);
    QByteArray alphabetOnly;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if ((unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9')
            || unit == u'+' || unit == u'/')
            alphabetOnly += char(unit);
    }
    fuzzCheck(velto::initWithBase64String(text) == QByteArray::fromBase64(alphabetOnly));

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const quint64 lineLength = size == 0 ? 0 : data[0];
    fuzzCheck(velto::dataWithBase64String(QString::fromLatin1(velto::base64DataWithLineLength(bytes, lineLength))) == bytes);
    return 0;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTTextDecoding_p.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

QString VTStringFromUtf8ThenAscii(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return u""_s;
    // A byte-order mark at the start is a character like any other here: nothing is dropped.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString() : text;
}

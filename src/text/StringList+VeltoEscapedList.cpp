// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "StringList+VeltoEscapedList.h"

#include <utility>

namespace velto {

namespace {

void appendEscaped(QString &out, const QString &element, char16_t separator, char16_t escape)
{
    for (QChar c : element) {
        if (c == separator || c == escape)
            out += QChar(escape);
        out += c;
    }
}

} // namespace

QString componentsJoinedByCharacter(const QStringList &list, char16_t separator, char16_t escape)
{
    QString joined;
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (i > 0)
            joined += QChar(separator);
        appendEscaped(joined, list.at(i), separator, escape);
    }
    return joined;
}

QStringList componentsSeparatedByCharactersInSet(const QString &string, const VeltoCharacterSet &separators,
                                                 char16_t escape)
{
    QStringList components;
    QString current;
    const qsizetype size = string.size();
    qsizetype pieceStart = 0; // first unit not yet copied into current
    bool endsWithSeparator = false;
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = string[i].unicode();
        if (unit == escape) {
            const bool escapesNext = i + 1 < size
                && (string[i + 1] == escape || separators.contains(string[i + 1].unicode()));
            if (i + 1 == size || escapesNext) {
                current += QStringView(string).sliced(pieceStart, i - pieceStart);
                current += string[escapesNext ? i + 1 : i];
                i += escapesNext ? 1 : 0;
                pieceStart = i + 1;
            } else {
                ++i; // an escape before an ordinary unit keeps both, copied with the piece later
            }
            endsWithSeparator = false;
        } else if (separators.contains(unit)) {
            current += QStringView(string).sliced(pieceStart, i - pieceStart);
            components.append(std::exchange(current, QString()));
            pieceStart = i + 1;
            endsWithSeparator = true;
        } else {
            endsWithSeparator = false;
        }
    }
    if (!endsWithSeparator) {
        current += QStringView(string).sliced(pieceStart);
        components.append(current);
    }
    return components;
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTDecimalTrimming_p.h"

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Adds one to the number ending just before position `from`, walking left. Digits after the separator
// that become zero at the end of the text are dropped rather than kept as a trailing zero.
void roundUp(QString &s, qsizetype from)
{
    bool inIntegerPart = false;
    qsizetype lastZeroed = -1;
    for (qsizetype i = from - 1; i >= 0; --i) {
        const QChar c = s.at(i);
        if (!isDigit(c)) {
            inIntegerPart = true;
            continue;
        }
        if (c != u'9') {
            s[i] = QChar(c.unicode() + 1);
            return;
        }
        if (inIntegerPart) {
            s[i] = u'0';
            lastZeroed = i;
        } else if (i + 1 < s.size() && isDigit(s.at(i + 1))) {
            s[i] = u'0';
            lastZeroed = i;
        } else if (i > 0 && isDigit(s.at(i - 1))) {
            s.remove(i, 1);
        } else {
            s[i] = u'0';
            lastZeroed = i;
        }
    }
    // Every digit was a 9 (99.997 → 00.0): the carry becomes a new leading 1.
    if (lastZeroed >= 0)
        s.insert(lastZeroed, u'1');
}

} // namespace

QString VTDecimalTrimming::trimmedText(const QString &text, QStringView separator, quint64 maximumDigits)
{
    if (maximumDigits == 0 || separator.isEmpty())
        return text;
    const qsizetype separatorAt = text.indexOf(separator);
    if (separatorAt < 0)
        return text;
    const qsizetype first = separatorAt + separator.size();
    if (first >= text.size())
        return text;

    qsizetype digits = 0;
    while (first + digits < text.size() && isDigit(text.at(first + digits)))
        ++digits;
    const qsizetype kept = qsizetype(qMin(quint64(digits), maximumDigits));
    // The run of zeros that ends the kept digits, if any.
    qsizetype zeroStart = 0;
    qsizetype zeroLength = 0;
    for (qsizetype i = first; i < first + kept; ++i) {
        if (text.at(i) == u'0') {
            if (zeroLength == 0)
                zeroStart = i;
            ++zeroLength;
        } else {
            zeroLength = 0;
        }
    }
    const qsizetype excess = digits - kept;
    const qsizetype excessStart = first + kept;

    qsizetype deleteStart = 0;
    qsizetype deleteEnd = 0;
    if (zeroLength > 0) {
        deleteStart = zeroStart;
        deleteEnd = excess == 0 ? zeroStart + zeroLength : excessStart + excess;
    } else if (excess > 0) {
        deleteStart = excessStart;
        deleteEnd = excessStart + excess;
    } else {
        return text;
    }
    if (deleteStart == first)
        deleteStart = separatorAt;

    // Only a 7, 8 or 9 as the first removed character rounds up; a removed zero run or separator never does.
    const QChar firstRemoved = text.at(deleteStart);
    QString result = text;
    result.remove(deleteStart, deleteEnd - deleteStart);
    if (firstRemoved >= u'7' && firstRemoved <= u'9')
        roundUp(result, deleteStart);
    return result;
}

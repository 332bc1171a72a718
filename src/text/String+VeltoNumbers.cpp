// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoNumbers.h"

#include "VeltoNumberFormatter.h"

namespace velto {

QString stringWithVeltoFloat(double value)
{
    // Qt's asprintf formats numbers in the C locale, whatever the process's C library locale is.
    return QString::asprintf("%f", value);
}

QString stringWithVeltoFloat(double value, quint64 maxDecimalCount)
{
    QString text = stringWithVeltoFloat(value);
    const qsizetype point = text.indexOf(u'.');
    if (point < 0)
        return text;
    const qsizetype lastCharacter = text.size() - 1;
    qsizetype last = maxDecimalCount >= quint64(lastCharacter - point) ? lastCharacter
                                                                      : point + qsizetype(maxDecimalCount);
    while (last > point && text.at(last) == u'0')
        --last;
    if (last == point)
        return text.left(point);
    text.truncate(last + 1);
    if (const QString separator = VeltoNumberFormatter::localizedDecimalSeparatorVelto(); !separator.isNull())
        text.replace(point, 1, separator);
    return text;
}

} // namespace velto

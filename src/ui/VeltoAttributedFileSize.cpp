// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAttributedFileSize.h"

namespace velto {

QColor fileSizeUnitColor()
{
    return QColor(Qt::gray);
}

VeltoAttributedFileSize attributedStringForObjectValue(const VeltoFileSizeFormatter &formatter, const QVariant &value,
                                                       const QTextCharFormat &defaultAttributes)
{
    VeltoAttributedFileSize result;
    result.string = formatter.stringForObjectValue(value);
    if (result.string.isEmpty())
        return result;
    VeltoRange unit;
    (void)VeltoFileSizeFormatter::unitForString(result.string, &unit);
    const int unitStart = int(unit.location);
    if (unitStart > 0)
        result.formats.append({0, unitStart, defaultAttributes});
    if (unit.length > 0) {
        QTextCharFormat gray = defaultAttributes;
        gray.setForeground(fileSizeUnitColor());
        result.formats.append({unitStart, int(unit.length), gray});
    }
    return result;
}

} // namespace velto

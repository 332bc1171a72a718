// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFontLookup_p.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include <cmath>

QString VTInstalledFamily(const QString &name)
{
    if (name.isEmpty())
        return {};
    // An exact test: QFontDatabase::hasFamily() would also accept the aliases fontconfig resolves.
    const QStringList families = QFontDatabase::families();
    const qsizetype at = families.indexOf(name);
    if (at >= 0)
        return families.at(at);
    for (const QString &installed : families) {
        if (installed.compare(name, Qt::CaseInsensitive) == 0)
            return installed;
    }
    return {};
}

double VTPointSizeOf(const QFont &font)
{
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

double VTUsablePointSize(double size)
{
    return size > 0 && std::isfinite(size) ? size : 12.0;
}

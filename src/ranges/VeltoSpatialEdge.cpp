// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSpatialEdge.h"

#include <cstdio>

QString VeltoSpatialEdge_ToString(VeltoSpatialEdge edge)
{
    // C's printf, not QString::asprintf: "%.f" rounds halves to even there (2.5 gives "2"), Qt's rounds them up.
    char text[768];
    const int length = std::snprintf(text, sizeof text, "{loc=%.f, len=%.f}", edge.location, edge.length);
    return QString::fromLatin1(text, qMin(length, int(sizeof text) - 1));
}

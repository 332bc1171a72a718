// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Helpers shared by the range tests: readable failure output for ranges and an array's ranges as a list
// (with tests/support/veltotest.h for exceptions and seeded random values).

#include "VeltoAbstractRangeArray.h"
#include "rangetostring.h"
#include "veltotest.h"

#include <QList>
#include <QTest>

inline QList<VeltoRange> rangesOf(const VeltoAbstractRangeArray &array)
{
    QList<VeltoRange> ranges;
    array.enumerateRangesVeltoUsing([&ranges](VeltoRange range, quint64, bool *) { ranges.append(range); });
    return ranges;
}

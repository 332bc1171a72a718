// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Readable QCOMPARE failure output for ranges, shared by every test that compares them.

#include "VeltoRangeUtil.h"

#include <QTest>

inline char *toString(const VeltoRange &range)
{
    return QTest::toString(VeltoRange_ToString(range));
}

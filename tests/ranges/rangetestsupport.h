#pragma once

// Helpers shared by the range tests: readable failure output for ranges, an array's ranges as a list,
// and catching the exception an expression throws.

#include "VeltoAbstractRangeArray.h"
#include "VeltoException.h"
#include "rangetostring.h"

#include <QList>
#include <QRandomGenerator>
#include <QTest>

#include <optional>

inline QList<VeltoRange> rangesOf(const VeltoAbstractRangeArray &array)
{
    QList<VeltoRange> ranges;
    array.enumerateRangesVeltoUsing([&ranges](VeltoRange range, quint64, bool *) { ranges.append(range); });
    return ranges;
}

/// The exception \a expression throws, or nothing.
template <typename Expression>
std::optional<VeltoException> thrown(Expression &&expression)
{
    try {
        expression();
    } catch (const VeltoException &exception) {
        return exception;
    }
    return std::nullopt;
}

/// Compares the VeltoException thrown by \a expression with the expected name and reason.
#define VELTO_COMPARE_THROWN(expression, expectedName, expectedReason)                                     \
    do {                                                                                                 \
        const auto caught = thrown([&] { expression; });                                                 \
        QVERIFY2(caught.has_value(), "no VeltoException was thrown");                                    \
        QCOMPARE(caught->name(), QString(expectedName));                                                 \
        QCOMPARE(caught->reason(), QString(expectedReason));                                             \
    } while (false)

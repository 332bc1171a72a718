// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "List+VeltoCore.h"

#include "VeltoException.h"

#include "Object+VeltoDispatch.h"

using namespace Qt::StringLiterals;

namespace velto::internal {

void throwIndexBeyondBounds(quint64 index, quint64 count)
{
    const QString reason = count == 0 ? u"*** index %1 beyond bounds for empty array"_s.arg(index)
                                      : u"*** index %1 beyond bounds [0 .. %2]"_s.arg(index).arg(count - 1);
    throw VeltoException(VeltoRangeException, reason);
}

qint64 intForPerformSelector(QObject *receiver, const char *selector, QObject *argument)
{
    // A compare method the receiver lacks is a programming error here, not a quiet 0.
    if (!velto::respondsToSelectorVelto(receiver, selector)) {
        throw VeltoException(VeltoInvalidArgumentException,
                             u"-[%1 %2]: unrecognized selector sent to instance 0x%3"_s
                                 .arg(QLatin1StringView(receiver->metaObject()->className()), QLatin1StringView(selector))
                                 .arg(quintptr(receiver), 0, 16));
    }
    return velto::intForPerformSelector(receiver, selector, QVariant::fromValue(argument));
}

} // namespace velto::internal

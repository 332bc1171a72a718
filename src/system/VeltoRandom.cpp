// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoRandom.h"

#include "VeltoException.h"

#include <cstdlib>
#include <ctime>
#include <mutex>

namespace {

std::once_flag timeSeeded;

// Only the first draw seeds; VeltoRandom_ResetSeed() deliberately leaves the flag alone, so a seed
// set before any draw is overwritten here.
long nextRandom()
{
    std::call_once(timeSeeded, [] { srandom(static_cast<unsigned>(time(nullptr))); });
    return random();
}

} // namespace

void VeltoRandom_ResetSeed(quint32 seed)
{
    srandom(seed);
}

int VeltoRandom_Int()
{
    return int(nextRandom());
}

qint64 VeltoRandom_Integer()
{
    return qint64(nextRandom());
}

quint64 VeltoRandom_UIntegerBetween(quint64 low, quint64 high)
{
    const quint64 count = high - low + 1;
    if (count == 0) {
        throw VeltoException(VeltoInvalidArgumentException,
                             QStringLiteral("VeltoRandom_UIntegerBetween: the range %1 to %2 holds every "
                                            "64-bit value, which cannot be counted")
                                 .arg(low)
                                 .arg(high));
    }
    return low + quint64(nextRandom()) % count;
}

quint64 VeltoRandom_LocationInRange(VeltoRange range)
{
    if (range.length == 0)
        return range.location;
    return VeltoRandom_UIntegerBetween(range.location, range.location + range.length - 1);
}

double VeltoRandom_Float()
{
    return double(nextRandom()) / 2147483647.0;
}

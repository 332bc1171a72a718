// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogging.h"

#include <time.h>

namespace {

// Seconds from the Unix epoch to 2001-01-01 00:00:00 UTC.
constexpr double ReferenceDateOffset = 978307200.0;
constexpr double BurstGap = 5.0;
constexpr quint32 BurstLimit = 13;
constexpr double MuteDuration = 10.0;

} // namespace

double VeltoLog_CurrentTime() noexcept
{
    // Flood control works in seconds; the coarse clock (a few milliseconds of resolution) is read
    // without touching the hardware counter and costs a fraction of the precise one.
    timespec now{};
    if (clock_gettime(CLOCK_REALTIME_COARSE, &now) != 0)
        clock_gettime(CLOCK_REALTIME, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9 - ReferenceDateOffset;
}

bool VeltoLog_ShouldLogWithFloodControlData(VeltoLogFloodControlData *data)
{
    return VeltoLog_ShouldLogWithFloodControlDataAtTime(data, VeltoLog_CurrentTime());
}

bool VeltoLog_ShouldLogWithFloodControlDataAtTime(VeltoLogFloodControlData *data, double now)
{
    if (data == nullptr)
        return true;
    // The last time moves on every call, muted or not, so a statement that keeps firing stays in its burst.
    const double previous = data->lastTime;
    data->lastTime = now;
    if (previous == 0)
        return true;
    if (data->disabledUntil > now)
        return false;
    data->disabledUntil = 0;
    if (now - previous < BurstGap) {
        if (++data->burstCount >= BurstLimit) {
            VeltoLogSink::write(VeltoLogFloodControlMessage);
            data->disabledUntil = now + MuteDuration;
            return false;
        }
        return true;
    }
    data->burstCount = 0;
    return true;
}

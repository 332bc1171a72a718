// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogging.h
 * \brief The test every logging statement makes, and flood control for statements that fire too often.
 *
 * A logging statement tests its domain's enabled variable (one relaxed load of a bool) and, when on,
 * asks its own flood-control record whether it may write now:
 *
 * \code
 * static bool layoutLogging = false;                 // bound to a VeltoLogDomain named "Layout"
 * VELTO_LOG(layoutLogging, u"laid out %1 lines"_s.arg(count));
 * \endcode
 *
 * Flood control: a statement called more than 13 times with less than 5 seconds between calls is muted
 * for 10 seconds, with the warning "*** logging flood control enacted, disabling this log statement for
 * 10 seconds". The burst count survives the mute; only a pause of 5 seconds or more clears it.
 */

#include "VeltoLogSink.h"
#include "veltocore_export.h"

#include <QtGlobal>

#include <atomic>

/// Flood-control state of one logging statement; zero-initialised static storage owned by the statement.
struct VeltoLogFloodControlData
{
    double lastTime = 0;      ///< seconds since 2001-01-01 UTC of the previous call; 0 = never called
    double disabledUntil = 0; ///< muted while the time is before this; 0 = not muted
    quint32 burstCount = 0;   ///< consecutive calls each less than 5 seconds after its predecessor
};

/// The warning written when a statement is muted.
inline constexpr QLatin1StringView VeltoLogFloodControlMessage{
    "*** logging flood control enacted, disabling this log statement for 10 seconds"};

/// VeltoLog_IsEnabled: reads a domain's enabled variable (a relaxed atomic load, safe on any thread).
[[nodiscard]] inline bool VeltoLog_IsEnabled(const bool &enabledVariable) noexcept
{
    return std::atomic_ref<bool>(const_cast<bool &>(enabledVariable)).load(std::memory_order_relaxed);
}

/// VeltoLog_CurrentTime: the flood-control clock, seconds since 2001-01-01 00:00:00 UTC, to a few milliseconds.
[[nodiscard]] VELTOCORE_EXPORT double VeltoLog_CurrentTime() noexcept;

/**
 * VeltoLog_ShouldLogWithFloodControlData: whether the statement owning \a data may write its line now.
 * Updates the record on every call, muted or not. A null record always allows.
 */
[[nodiscard]] VELTOCORE_EXPORT bool VeltoLog_ShouldLogWithFloodControlData(VeltoLogFloodControlData *data);

/// VeltoLog_ShouldLogWithFloodControlDataAtTime: the same decision taken at time \a now (same clock).
[[nodiscard]] VELTOCORE_EXPORT bool VeltoLog_ShouldLogWithFloodControlDataAtTime(VeltoLogFloodControlData *data,
                                                                                 double now);

/// VELTO_LOG: writes the QString \a ... through VeltoLogSink when \a enabledVariable is on and the
/// statement is not muted by flood control. The message is only built when it will be written.
#define VELTO_LOG(enabledVariable, ...)                                                                \
    do {                                                                                               \
        if (VeltoLog_IsEnabled(enabledVariable)) {                                                     \
            static VeltoLogFloodControlData veltoFloodControl_;                                        \
            if (VeltoLog_ShouldLogWithFloodControlData(&veltoFloodControl_))                           \
                VeltoLogSink::write(__VA_ARGS__);                                                      \
        }                                                                                              \
    } while (false)

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWeakTargetTimer.h
 * \brief VeltoWeakTargetTimer: a repeating or one-shot event-loop timer that does not keep its target
 * alive, so the target can own the timer and still be destroyed normally.
 *
 * On each firing the target's method is called, by name, with the VeltoWeakTargetTimer as its one argument
 * (a `VeltoWeakTargetTimer *` or `QObject *` parameter). The target is not owned: invalidate the timer (or
 * destroy it) before the target goes. Created, fired and invalidated on one thread, whose event loop runs it.
 *
 * \code
 * m_poll = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(0.5, this, "poll", true);
 * // slot: void poll(VeltoWeakTargetTimer *timer);
 * \endcode
 */

#include "VeltoObjectDealloc.h"
#include "veltocore_export.h"

#include <QObject>

#include <memory>

class VELTOCORE_EXPORT VeltoWeakTargetTimer : public QObject
{
    Q_OBJECT
    VELTO_OBJECT_DEALLOC(VeltoWeakTargetTimer)

public:
    /// newScheduledTimerWithTimeInterval: a new timer, already started, owned by the caller.
    [[nodiscard]] static std::unique_ptr<VeltoWeakTargetTimer>
    newScheduledTimerWithTimeInterval(double seconds, QObject *target, const char *selector, bool repeats);

    /**
     * Schedules a timer on the current thread's event loop that calls \a selector on \a target every
     * \a seconds (negative intervals count as 0), once or repeatedly.
     */
    VeltoWeakTargetTimer(double seconds, QObject *target, const char *selector, bool repeats);
    /// Invalidates the timer.
    ~VeltoWeakTargetTimer() override;

    /// invalidate: stops and forgets the timer and the target; nothing is sent afterwards. Safe to repeat.
    void invalidate();
    /// isValid: whether the timer is still held (a fired one-shot timer stays held until invalidate()).
    [[nodiscard]] bool isValid() const;
    /// target: the target, or null after invalidate().
    [[nodiscard]] QObject *target() const;

    /// timerDidFire: sends the target's method with this object as the argument; nothing after invalidate().
    void timerDidFire();

private:
    class Private;
    std::unique_ptr<Private> const d;
};

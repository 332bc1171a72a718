// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWeakTargetTimer.h"

#include "Object+VeltoDispatch.h"

#include <QTimer>

#include <cmath>

class VeltoWeakTargetTimer::Private
{
public:
    QObject *target = nullptr;
    QByteArray selector;
    std::unique_ptr<QTimer> timer;
};

std::unique_ptr<VeltoWeakTargetTimer>
VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(double seconds, QObject *target, const char *selector,
                                                        bool repeats)
{
    return std::make_unique<VeltoWeakTargetTimer>(seconds, target, selector, repeats);
}

VeltoWeakTargetTimer::VeltoWeakTargetTimer(double seconds, QObject *target, const char *selector, bool repeats)
    : d(std::make_unique<Private>())
{
    d->target = target;
    d->selector = QByteArray(selector);
    d->timer = std::make_unique<QTimer>();
    d->timer->setSingleShot(!repeats);
    d->timer->setTimerType(Qt::PreciseTimer);
    const double milliseconds = std::isfinite(seconds) ? std::clamp(seconds * 1000.0, 0.0, double(INT_MAX)) : 0.0;
    d->timer->setInterval(int(std::lround(milliseconds)));
    connect(d->timer.get(), &QTimer::timeout, this, &VeltoWeakTargetTimer::timerDidFire);
    d->timer->start();
}

VeltoWeakTargetTimer::~VeltoWeakTargetTimer()
{
    invalidate();
}

void VeltoWeakTargetTimer::invalidate()
{
    if (std::unique_ptr<QTimer> timer = std::move(d->timer))
        timer->stop();
    d->target = nullptr;
}

bool VeltoWeakTargetTimer::isValid() const
{
    return d->timer != nullptr;
}

QObject *VeltoWeakTargetTimer::target() const
{
    return d->target;
}

void VeltoWeakTargetTimer::timerDidFire()
{
    if (d->target)
        velto::performSelectorIfResponds(d->target, d->selector.constData(), QVariant::fromValue(this));
}

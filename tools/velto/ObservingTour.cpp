// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The observation stop of `velto tour`: a broadcast through an observer set, and a timer that does not
// keep its target alive.

#include "Commands.h"
#include "Tour.h"

#include "VeltoObserverSet.h"
#include "VeltoWeakTargetTimer.h"

#include <QEventLoop>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

class TourListener : public QObject
{
    Q_OBJECT

public:
    TourListener(Tour &tour, const QString &name) : tour(tour) { setObjectName(name); }
    Tour &tour;
    int ticks = 0;

public slots:
    void documentDidChange(QObject *document)
    {
        tour.say(u"%1 heard that %2 changed"_s.arg(objectName(), document->objectName()));
    }
    void tick(VeltoWeakTargetTimer *timer)
    {
        tour.say(u"%1 got tick %2 from the timer it owns"_s.arg(objectName()).arg(++ticks));
        if (ticks == 3)
            timer->invalidate();
    }
};

// Stands for an observer that has no interest in this message: the broadcast passes it by.
class TourBystander : public QObject
{
    Q_OBJECT
};

void observingStop(Tour &tour)
{
    tour.stop(u"Observer sets and a weak-target timer"_s);
    QObject document;
    document.setObjectName(u"report.txt"_s);
    TourListener outline(tour, u"outline"_s), ruler(tour, u"ruler"_s);
    TourBystander bystander;
    const auto observers = VeltoObserverSet::create();
    observers->addObserver(&outline);
    observers->addObserver(&ruler);
    observers->addObserver(&bystander);
    tour.say(u"3 observers registered (one does not implement documentDidChange); broadcasting:"_s);
    observers->makeObserversPerformSelector("documentDidChange", QVariant::fromValue(&document));
    observers->removeObserver(&ruler);
    tour.say(u"ruler removed; broadcasting again:"_s);
    observers->makeObserversPerformSelector("documentDidChange", QVariant::fromValue(&document));

    auto *owner = new TourListener(tour, u"poller"_s);
    auto timer = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(0.01, owner, "tick", true);
    QEventLoop loop;
    QTimer::singleShot(200, &loop, &QEventLoop::quit);
    loop.exec();
    tour.say(u"after 0.2 s: %1 ticks, timer %2; the poller can be deleted while the timer object lives on"_s
                 .arg(owner->ticks).arg(timer->isValid() ? u"still running"_s : u"invalidated"_s));
    delete owner;
}

const bool observingStopRegistered = registerTourStop(400, observingStop);

} // namespace

#include "ObservingTour.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoObserverSetImpl.h"

#include "VeltoWeakObjectSet.h"

class VeltoObserverSetImpl::Private
{
public:
    std::unique_ptr<VeltoWeakObjectSet> observers = std::make_unique<VeltoWeakObjectSet>();
    quint64 removals = 0;
};

VeltoObserverSetImpl::VeltoObserverSetImpl() : d(std::make_unique<Private>()) {}
VeltoObserverSetImpl::~VeltoObserverSetImpl() = default;

void VeltoObserverSetImpl::invalidate()
{
    ++d->removals;
    d->observers.reset();
}

quint64 VeltoObserverSetImpl::count() const
{
    return d->observers ? d->observers->count() : 0;
}

QList<QObject *> VeltoObserverSetImpl::copyObserversArray() const
{
    return d->observers ? d->observers->copyAllObjects() : QList<QObject *>();
}

void VeltoObserverSetImpl::addObserver(QObject *observer)
{
    if (d->observers)
        d->observers->addObject(observer);
}

void VeltoObserverSetImpl::removeObserver(const QObject *observer)
{
    ++d->removals;
    if (d->observers)
        d->observers->removeObject(observer);
}

bool VeltoObserverSetImpl::containsObserver(const QObject *observer) const
{
    return d->observers && d->observers->containsObject(observer);
}

void VeltoObserverSetImpl::takeSnapshot(Snapshot &snapshot) const
{
    // Straight into the snapshot's own storage: no list, and no allocation up to 32 observers. Its size
    // is count(), the number of members, so it is filled exactly.
    if (d->observers)
        d->observers->copyObjectsInto(snapshot.data(), snapshot.size());
}

quint64 VeltoObserverSetImpl::removalCount() const
{
    return d->removals;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoKVOHelper.h"

#include "Object+VeltoAssociatedObjects.h"
#include "Object+VeltoKVOHelper.h"

namespace {

const char helperKey = 0; // the association under which an observer keeps its helper

} // namespace

class VeltoKVOHelper::Private
{
public:
    QObject *observer;
    QList<VeltoKVORegistration *> registrations;
};

VeltoKVOHelper *VeltoKVOHelper::helperForObserver(QObject *observer, bool create)
{
    if (!observer)
        return nullptr;
    if (auto *helper = static_cast<VeltoKVOHelper *>(velto::associatedObjectForKey(observer, &helperKey)))
        return helper;
    if (!create)
        return nullptr;
    auto *helper = new VeltoKVOHelper(observer);
    velto::setAssociatedObject(observer, &helperKey, helper);
    return helper;
}

VeltoKVOHelper::VeltoKVOHelper(QObject *observer) : d(std::make_unique<Private>())
{
    d->observer = observer;
}

VeltoKVOHelper::~VeltoKVOHelper()
{
    for (qsizetype i = d->registrations.size() - 1; i >= 0; --i)
        stopWatchingRegistration(d->registrations.at(i), i);
}

QObject *VeltoKVOHelper::observer() const
{
    return d->observer;
}

QList<VeltoKVORegistration *> VeltoKVOHelper::registrations() const
{
    return d->registrations;
}

VeltoKVORegistration *VeltoKVOHelper::registrationForWatchedObject(QObject *object, const QString &keyPath,
                                                                   qsizetype *index, bool create)
{
    for (qsizetype i = 0; i < d->registrations.size(); ++i) {
        VeltoKVORegistration *registration = d->registrations.at(i);
        if (registration->watchedObject() == object && registration->keyPath() == keyPath) {
            if (index)
                *index = i;
            return registration;
        }
    }
    if (!create)
        return nullptr;
    if (index)
        *index = d->registrations.size();
    d->registrations.append(new VeltoKVORegistration(this, object, keyPath));
    return d->registrations.constLast();
}

void VeltoKVOHelper::startWatching(QObject *object, const QString &keyPath, VeltoKeyValueObservingOptions options,
                                   const char *selector)
{
    VeltoKVORegistration *registration = registrationForWatchedObject(object, keyPath, nullptr, true);
    if (registration->registerCount() == 0) {
        registration->setNotifySelector(selector);
        (void)registration->connectToWatchedObject(options); // a property it cannot watch was warned about
    }
    registration->setRegisterCount(registration->registerCount() + 1);
}

void VeltoKVOHelper::startWatchingNotifyBlock(QObject *object, const QString &keyPath,
                                              VeltoKeyValueObservingOptions options, const VeltoKVONotifyBlock &block)
{
    VeltoKVORegistration *registration = registrationForWatchedObject(object, keyPath, nullptr, true);
    const quint64 before = registration->registerCount();
    registration->setRegisterCount(before + 1);
    if (before == 0) {
        registration->setNotifyBlock(block);
        (void)registration->connectToWatchedObject(options); // a property it cannot watch was warned about
    }
}

void VeltoKVOHelper::stopWatching(QObject *object, const QString &keyPath)
{
    qsizetype index = -1;
    VeltoKVORegistration *registration = registrationForWatchedObject(object, keyPath, &index, false);
    if (!registration)
        return;
    const quint64 before = registration->registerCount();
    registration->setRegisterCount(before > 0 ? before - 1 : 0);
    if (before == 1)
        stopWatchingRegistration(registration, index);
}

void VeltoKVOHelper::stopWatchingRegistration(VeltoKVORegistration *registration, qsizetype index)
{
    registration->disconnectFromWatchedObject();
    d->registrations.removeAt(index);
    delete registration;
}

void VeltoKVOHelper::observeValueForKeyPath(const QString &, QObject *, const QVariantMap &change,
                                            VeltoKVORegistration *context)
{
    context->notifyObserver(d->observer, change);
}

namespace velto {

void addObserverVelto(QObject *watched, QObject *observer, const QString &keyPath,
                      VeltoKeyValueObservingOptions options, const char *selector)
{
    if (watched && observer)
        VeltoKVOHelper::helperForObserver(observer, true)->startWatching(watched, keyPath, options, selector);
}

void addObserverVeltoNotifyUsing(QObject *watched, QObject *observer, const QString &keyPath,
                                 VeltoKeyValueObservingOptions options, const VeltoKVONotifyBlock &block)
{
    if (watched && observer)
        VeltoKVOHelper::helperForObserver(observer, true)->startWatchingNotifyBlock(watched, keyPath, options, block);
}

bool hasObserverVelto(QObject *watched, QObject *observer, const QString &keyPath)
{
    VeltoKVOHelper *helper = VeltoKVOHelper::helperForObserver(observer, false);
    return helper && helper->registrationForWatchedObject(watched, keyPath, nullptr, false);
}

void removeObserverVelto(QObject *watched, QObject *observer, const QString &keyPath)
{
    if (VeltoKVOHelper *helper = VeltoKVOHelper::helperForObserver(observer, false))
        helper->stopWatching(watched, keyPath);
}

} // namespace velto

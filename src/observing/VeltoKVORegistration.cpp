// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoKVORegistration.h"

#include "Object+VeltoDispatch.h"
#include "VeltoKVOHelper.h"
#include "VeltoLogSink.h"

#include <QMetaProperty>

using namespace Qt::StringLiterals;

class VeltoKVORegistration::Private
{
public:
    VeltoKVOHelper *helper;
    QObject *watchedObject;
    QString keyPath;
    quint64 registerCount = 0;
    NotifyType notifyType = NotifyNone;
    QByteArray selector;
    VeltoKVONotifyBlock block;

    QMetaProperty property;
    VeltoKeyValueObservingOptions options;
    QVariant lastValue; // what "old" reports at the next change
    QMetaObject::Connection connection;
};

VeltoKVORegistration::VeltoKVORegistration(VeltoKVOHelper *helper, QObject *watchedObject, const QString &keyPath)
    : QObject(helper), d(std::make_unique<Private>())
{
    d->helper = helper;
    d->watchedObject = watchedObject;
    d->keyPath = keyPath;
}

VeltoKVORegistration::~VeltoKVORegistration()
{
    disconnectFromWatchedObject();
}

QObject *VeltoKVORegistration::watchedObject() const { return d->watchedObject; }
QString VeltoKVORegistration::keyPath() const { return d->keyPath; }
quint64 VeltoKVORegistration::registerCount() const { return d->registerCount; }
void VeltoKVORegistration::setRegisterCount(quint64 count) { d->registerCount = count; }
VeltoKVORegistration::NotifyType VeltoKVORegistration::notifyType() const { return d->notifyType; }

QByteArray VeltoKVORegistration::notifySelector() const
{
    return d->notifyType == NotifySelector ? d->selector : QByteArray();
}

void VeltoKVORegistration::setNotifySelector(const char *selector)
{
    clearNotifyData();
    d->notifyType = NotifySelector;
    d->selector = QByteArray(selector);
}

void VeltoKVORegistration::setNotifyBlock(const VeltoKVONotifyBlock &block)
{
    clearNotifyData();
    d->notifyType = NotifyBlock;
    d->block = block;
}

void VeltoKVORegistration::clearNotifyData()
{
    d->notifyType = NotifyNone;
    d->selector.clear();
    d->block = nullptr;
}

void VeltoKVORegistration::notifyObserver(QObject *observer, const QVariantMap &change)
{
    switch (d->notifyType) {
    case NotifyNone:
        return;
    case NotifyBlock:
        d->block(observer, d->watchedObject, change);
        return;
    case NotifySelector:
        break;
    }
    const char *selector = d->selector.constData();
    const QVariant watched = QVariant::fromValue(d->watchedObject);
    switch (velto::parameterCountForSelectorVelto(observer, selector)) {
    case 0:
        velto::performSelectorIfResponds(observer, selector);
        break;
    case 1:
        velto::performSelectorIfResponds(observer, selector, watched);
        break;
    case 2:
        velto::performSelectorIfResponds(observer, selector, watched, change);
        break;
    default:
        break; // not implemented, or more than two parameters: nothing is sent
    }
}

bool VeltoKVORegistration::connectToWatchedObject(VeltoKeyValueObservingOptions options)
{
    const QMetaObject *klass = d->watchedObject->metaObject();
    d->property = klass->property(klass->indexOfProperty(d->keyPath.toUtf8().constData()));
    if (!d->property.isValid() || !d->property.hasNotifySignal()) {
        VeltoLogSink::warn(u"VeltoKVOHelper: %1 has no property \"%2\" with a NOTIFY signal; its changes cannot be observed"_s
                               .arg(QLatin1StringView(klass->className()), d->keyPath));
        return false;
    }
    d->options = options;
    d->lastValue = d->property.read(d->watchedObject);
    const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("watchedPropertyChanged()"));
    d->connection = connect(d->watchedObject, d->property.notifySignal(), this, slot);
    if (options & VeltoKeyValueObservingOptionInitial) {
        QVariantMap change{{VeltoKeyValueChangeKindKey, 1}};
        if (options & VeltoKeyValueObservingOptionNew)
            change.insert(VeltoKeyValueChangeNewKey, d->lastValue);
        d->helper->observeValueForKeyPath(d->keyPath, d->watchedObject, change, this);
    }
    return true;
}

void VeltoKVORegistration::disconnectFromWatchedObject()
{
    if (d->connection)
        disconnect(d->connection);
    d->connection = {};
}

bool VeltoKVORegistration::isConnected() const
{
    return bool(d->connection);
}

void VeltoKVORegistration::watchedPropertyChanged()
{
    const QVariant newValue = d->property.read(d->watchedObject);
    QVariantMap change{{VeltoKeyValueChangeKindKey, 1}};
    if (d->options & VeltoKeyValueObservingOptionNew)
        change.insert(VeltoKeyValueChangeNewKey, newValue);
    if (d->options & VeltoKeyValueObservingOptionOld)
        change.insert(VeltoKeyValueChangeOldKey, d->lastValue);
    d->lastValue = newValue;
    d->helper->observeValueForKeyPath(d->keyPath, d->watchedObject, change, this);
}

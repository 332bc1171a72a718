// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoKeyedObserverSet.h"

#include "Object+VeltoDispatch.h"
#include "VeltoException.h"
#include "VeltoWeakKeyDictionary.h"

using namespace Qt::StringLiterals;

namespace {

// An observer's actions, with a count of changes so that a visit notices being changed under it.
struct Actions
{
    QList<VeltoKeyedObserverAction> list;
    quint64 mutations = 0;
};
using ActionsPointer = std::shared_ptr<Actions>;

// A null key stands for "no key" and matches nothing, not even the empty key, which QString's == takes as
// equal to it; a null member of \a keys (the one that stands in the set for both) matches nothing either.
bool isKeyIn(const QString &key, const QSet<QString> &keys)
{
    if (key.isNull())
        return false;
    const auto found = keys.constFind(key);
    return found != keys.constEnd() && !found->isNull();
}

} // namespace

class VeltoKeyedObserverSet::Private
{
public:
    ActionsPointer actionsOf(const QObject *observer) const
    {
        return map ? map->objectForKey(observer).value<ActionsPointer>() : nullptr;
    }

    std::unique_ptr<VeltoWeakKeyDictionary> map = std::make_unique<VeltoWeakKeyDictionary>();
};

std::shared_ptr<VeltoKeyedObserverSet> VeltoKeyedObserverSet::create()
{
    return std::make_shared<VeltoKeyedObserverSet>();
}

VeltoKeyedObserverSet::VeltoKeyedObserverSet() : d(std::make_unique<Private>()) {}
VeltoKeyedObserverSet::~VeltoKeyedObserverSet() = default;

void VeltoKeyedObserverSet::invalidate()
{
    d->map.reset();
}

quint64 VeltoKeyedObserverSet::count() const
{
    return d->map ? d->map->count() : 0;
}

QList<QObject *> VeltoKeyedObserverSet::copyObserversArray() const
{
    QList<QObject *> observers;
    if (!d->map)
        return observers;
    observers.reserve(qsizetype(d->map->count()));
    d->map->enumerateUsingBlock([&](const void *observer, const QVariant &, bool *) {
        observers.append(static_cast<QObject *>(const_cast<void *>(observer)));
    });
    return observers;
}

void VeltoKeyedObserverSet::addObserver(QObject *observer)
{
    addObserver(observer, QString(), nullptr);
}

void VeltoKeyedObserverSet::addObserver(QObject *observer, const QString &key, const char *selector)
{
    if (!d->map || !observer)
        return;
    ActionsPointer actions = d->actionsOf(observer);
    if (!actions) {
        actions = std::make_shared<Actions>();
        d->map->setObject(QVariant::fromValue(actions), observer);
    }
    actions->list.append({key, QByteArray(selector)});
    ++actions->mutations;
}

void VeltoKeyedObserverSet::removeObserver(const QObject *observer)
{
    if (d->map)
        d->map->removeObjectForKey(observer);
}

bool VeltoKeyedObserverSet::containsObserver(const QObject *observer) const
{
    return d->map && d->map->objectForKey(observer).isValid();
}

QList<VeltoKeyedObserverAction> VeltoKeyedObserverSet::actionsForObserver(const QObject *observer) const
{
    const ActionsPointer actions = d->actionsOf(observer);
    return actions ? actions->list : QList<VeltoKeyedObserverAction>();
}

void VeltoKeyedObserverSet::visitObserversForKeys(const QSet<QString> &keys,
                                                  const std::function<void(QObject *, const char *)> &visitor)
{
    if (count() == 0)
        return;
    const QList<QObject *> snapshot = copyObserversArray();
    const std::shared_ptr<VeltoObserverSet> alive = keepAlive();
    for (QObject *observer : snapshot) {
        // Held for the visit: the observer may be removed by its own handler, and its actions still run.
        const ActionsPointer actions = d->actionsOf(observer);
        if (!actions)
            continue;
        const quint64 mutations = actions->mutations;
        for (qsizetype i = 0; i < actions->list.size(); ++i) {
            const VeltoKeyedObserverAction &action = actions->list.at(i);
            if (!isKeyIn(action.key, keys))
                continue;
            visitor(observer, action.selector.constData());
            if (actions->mutations != mutations)
                throw VeltoException(VeltoGenericException,
                                     u"*** Collection <VeltoKeyedObserverAction list: 0x%1> was mutated while being enumerated."_s
                                         .arg(quintptr(actions.get()), 0, 16));
        }
    }
}

QSet<QObject *> VeltoKeyedObserverSet::observersForKey(const QString &key) const
{
    QSet<QObject *> observers;
    if (!d->map)
        return observers;
    const QSet<QString> keys{key};
    d->map->enumerateUsingBlock([&](const void *observer, const QVariant &value, bool *) {
        const auto &list = value.value<ActionsPointer>()->list;
        if (std::any_of(list.begin(), list.end(), [&](const auto &action) { return isKeyIn(action.key, keys); }))
            observers.insert(static_cast<QObject *>(const_cast<void *>(observer)));
    });
    return observers;
}

void VeltoKeyedObserverSet::notifyObserversForKey(const QString &key, const QVariant &object)
{
    notifyObserversForKeys(QSet<QString>{key}, object);
}

void VeltoKeyedObserverSet::notifyObserversForKeys(const QSet<QString> &keys, const QVariant &object)
{
    visitObserversForKeys(keys, [&](QObject *observer, const char *selector) {
        velto::performSelectorIfResponds(observer, selector, object);
    });
}

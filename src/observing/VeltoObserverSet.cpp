// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoObserverSet.h"

#include "VTInvocation_p.h"
#include "VeltoObserverSetImpl.h"

#include <QDebug>

#include <algorithm>

using namespace Qt::StringLiterals;

std::shared_ptr<VeltoObserverSet> VeltoObserverSet::create()
{
    return std::make_shared<VeltoObserverSetImpl>();
}

VeltoObserverSet::VeltoObserverSet() = default;
VeltoObserverSet::~VeltoObserverSet() = default;

void VeltoObserverSet::invalidate() {}
quint64 VeltoObserverSet::count() const { return 0; }
QList<QObject *> VeltoObserverSet::copyObserversArray() const { return {}; }
void VeltoObserverSet::addObserver(QObject *) {}
void VeltoObserverSet::removeObserver(const QObject *) {}
bool VeltoObserverSet::containsObserver(const QObject *) const { return false; }
quint64 VeltoObserverSet::removalCount() const { return UnknownRemovalCount; }

void VeltoObserverSet::takeSnapshot(Snapshot &snapshot) const
{
    const QList<QObject *> observers = copyObserversArray();
    snapshot.resize(observers.size());
    std::copy(observers.cbegin(), observers.cend(), snapshot.begin());
}

std::shared_ptr<VeltoObserverSet> VeltoObserverSet::keepAlive()
{
    if (m_self.expired()) // not taken yet, or the set had no owner then
        m_self = weak_from_this();
    return m_self.lock();
}

// Callers return early for an empty set, before preparing anything, and pass the count they read.
template<typename Visitor>
void VeltoObserverSet::visit(quint64 observerCount, Visitor &&visitor)
{
    // Sized up front: QVarLengthArray's size constructor is inline, a resize is a call.
    Snapshot snapshot(static_cast<qsizetype>(observerCount));
    takeSnapshot(snapshot);
    // A handler may release the set's last owner; the set lives until the pass is over.
    const std::shared_ptr<VeltoObserverSet> alive = keepAlive();
    // Nothing has run before the first call, so only later observers can have been removed meanwhile.
    const quint64 removals = snapshot.size() > 1 ? removalCount() : UnknownRemovalCount;
    for (qsizetype i = 0; i < snapshot.size(); ++i) {
        QObject *observer = snapshot[i];
        const bool removedSinceSnapshot = i > 0 && (removals == UnknownRemovalCount || removalCount() != removals);
        if (!removedSinceSnapshot || containsObserver(observer))
            visitor(observer);
    }
}

void VeltoObserverSet::visitObserversUsing(const std::function<void(QObject *observer)> &visitor)
{
    visitObserversRespondingToSelector(nullptr, visitor);
}

void VeltoObserverSet::visitObserversRespondingToSelector(const char *selector,
                                                          const std::function<void(QObject *observer)> &visitor)
{
    const quint64 observerCount = count();
    if (observerCount == 0)
        return;
    visit(observerCount, [&](QObject *observer) {
        if (!selector || VTMethod::resolve(observer->metaObject(), selector, m_lastMethod).index >= 0)
            visitor(observer);
    });
}

// The emptiness test comes first, before any preparation: an empty set is the common case.
void VeltoObserverSet::makeObserversPerformSelector(const char *selector)
{
    if (const quint64 observerCount = count())
        broadcast(observerCount, selector, {});
}

void VeltoObserverSet::makeObserversPerformSelector(const char *selector, const QVariant &first,
                                                    const QVariant &second, const QVariant &third)
{
    if (const quint64 observerCount = count())
        broadcast(observerCount, selector, {&first, &second, &third});
}

void VeltoObserverSet::broadcast(quint64 observerCount, const char *selector,
                                 const std::array<const QVariant *, 3> &arguments)
{
    // One prepared call for the whole pass: it is rebound only when the observer's class changes, and
    // rebinding to the class of the set's last broadcast reuses that broadcast's method.
    VTInvocation invocation(selector, arguments);
    visit(observerCount, [&](QObject *observer) {
        if (invocation.bindToClassOf(observer, &m_lastMethod))
            invocation.invoke(observer);
    });
}

QString VeltoObserverSet::description() const
{
    QString text = u"VeltoObserverSet {\n"_s;
    Snapshot snapshot(static_cast<qsizetype>(count()));
    if (!snapshot.isEmpty())
        takeSnapshot(snapshot);
    for (QObject *observer : snapshot) {
        QString shown;
        QDebug(&shown).nospace() << observer;
        text += u"\t%1\n"_s.arg(shown);
    }
    return text + u"}"_s;
}

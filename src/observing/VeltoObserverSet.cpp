#include "VeltoObserverSet.h"

#include "VTInvocation_p.h"
#include "VeltoObserverSetImpl.h"

#include <QDebug>

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
    snapshot.append(observers.constData(), observers.size());
}

template<typename Visitor>
void VeltoObserverSet::visit(Visitor &&visitor)
{
    if (count() == 0)
        return;
    Snapshot snapshot;
    takeSnapshot(snapshot);
    // A handler may release the set's last owner; the set lives until the pass is over.
    const std::shared_ptr<VeltoObserverSet> keepAlive = weak_from_this().lock();
    const quint64 removals = removalCount();
    for (QObject *observer : snapshot) {
        const bool removedSinceSnapshot = removals == UnknownRemovalCount || removalCount() != removals;
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
    visit([&](QObject *observer) {
        if (!selector || VTInvocation::methodIndex(observer->metaObject(), selector) >= 0)
            visitor(observer);
    });
}

void VeltoObserverSet::makeObserversPerformSelector(const char *selector, const QVariant &first,
                                                    const QVariant &second, const QVariant &third)
{
    if (count() == 0)
        return;
    // One prepared call for the whole pass: it is rebound only when the observer's class changes.
    VTInvocation invocation(selector, first, second, third);
    visit([&](QObject *observer) {
        if (invocation.bindToClassOf(observer))
            invocation.invoke(observer);
    });
}

QString VeltoObserverSet::description() const
{
    QString text = u"VeltoObserverSet {\n"_s;
    Snapshot snapshot;
    if (count() > 0)
        takeSnapshot(snapshot);
    for (QObject *observer : snapshot) {
        QString shown;
        QDebug(&shown).nospace() << observer;
        text += u"\t%1\n"_s.arg(shown);
    }
    return text + u"}"_s;
}

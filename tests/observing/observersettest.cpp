// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoException.h"
#include "VeltoKeyedObserverSet.h"
#include "VeltoObserverSetImpl.h"
#include "veltotest.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

// Records every call; an optional reaction runs inside the handler (to change the set mid-pass).
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(QStringList *log, const QString &name) : log(log) { setObjectName(name); }
    QStringList *log;
    std::function<void()> reaction;

public slots:
    void changed() { record(u"changed"_s); }
    void moved(QObject *from, const QVariant &to, QObject *by)
    {
        record(u"moved %1 %2 %3"_s.arg(from ? from->objectName() : u"null"_s, to.toString(),
                                        by ? by->objectName() : u"null"_s));
    }
    void titleChanged(QObject *document) { record(u"title %1"_s.arg(document ? document->objectName() : u"null"_s)); }
    void sizeChanged(QObject *) { record(u"size"_s); }

private:
    void record(const QString &what)
    {
        log->append(objectName() + u": "_s + what);
        if (reaction)
            reaction();
    }
};

// Another class with the same method, and one without it.
class OtherListener : public Listener
{
    Q_OBJECT

public:
    using Listener::Listener;
};

class Mute : public QObject
{
    Q_OBJECT
};

class ObserverSetTest : public QObject
{
    Q_OBJECT

private slots:
    void broadcastSkipsObserversWithoutTheMethod();
    void removedDuringPassIsNotCalled();
    void addedDuringPassIsCalledNextTime();
    void ownerReleasedFromHandler();
    void nestedBroadcast();
    void repeatedBroadcastGoesByName();
    void invalidatedSetReachesNobody();
    void descriptions();
    void keyedRegistrations();
    void keyedRemovalDuringPass();
    void observerWithoutKeyIsNotFoundUnderTheEmptyKey();
    void keyedRegistrationDuringOwnVisitThrows();
};

void ObserverSetTest::broadcastSkipsObserversWithoutTheMethod()
{
    QStringList log;
    Listener a(&log, u"a"_s);
    OtherListener b(&log, u"b"_s);
    Mute mute;
    QObject document;
    document.setObjectName(u"doc"_s);
    const auto set = VeltoObserverSet::create();
    for (QObject *observer : std::initializer_list<QObject *>{&a, &mute, &b})
        set->addObserver(observer);
    set->addObserver(&a);
    QCOMPARE(set->count(), 3u);
    set->makeObserversPerformSelector("moved", QVariant::fromValue(&document), 7);
    log.sort();
    QCOMPARE(log, QStringList({u"a: moved doc 7 null"_s, u"b: moved doc 7 null"_s}));

    QList<QObject *> visited;
    set->visitObserversRespondingToSelector("changed", [&](QObject *observer) { visited << observer; });
    QCOMPARE(visited.size(), 2);
    QVERIFY(!visited.contains(&mute));
    visited.clear();
    set->visitObserversUsing([&](QObject *observer) { visited << observer; });
    QCOMPARE(visited.size(), 3);
}

void ObserverSetTest::removedDuringPassIsNotCalled()
{
    QStringList log;
    const auto set = VeltoObserverSet::create();
    std::vector<std::unique_ptr<Listener>> listeners;
    for (int i = 0; i < 5; ++i) {
        listeners.push_back(std::make_unique<Listener>(&log, QString::number(i)));
        set->addObserver(listeners.back().get());
    }
    // Whoever is called first removes (and destroys) every other observer.
    for (auto &listener : listeners) {
        listener->reaction = [&, self = listener.get()] {
            for (auto &other : listeners) {
                if (other && other.get() != self) {
                    set->removeObserver(other.get());
                    other.reset();
                }
            }
        };
    }
    set->makeObserversPerformSelector("changed");
    QCOMPARE(log.size(), 1);
    QCOMPARE(set->count(), 1u);
}

void ObserverSetTest::addedDuringPassIsCalledNextTime()
{
    QStringList log;
    Listener first(&log, u"first"_s), late(&log, u"late"_s);
    const auto set = VeltoObserverSet::create();
    set->addObserver(&first);
    first.reaction = [&] { set->addObserver(&late); };
    set->makeObserversPerformSelector("changed");
    QCOMPARE(log, QStringList{u"first: changed"_s});
    first.reaction = nullptr;
    log.clear();
    set->makeObserversPerformSelector("changed");
    log.sort();
    QCOMPARE(log, QStringList({u"first: changed"_s, u"late: changed"_s}));
}

void ObserverSetTest::ownerReleasedFromHandler()
{
    QStringList log;
    Listener a(&log, u"a"_s), b(&log, u"b"_s);
    auto owner = VeltoObserverSet::create();
    std::weak_ptr<VeltoObserverSet> watch = owner;
    owner->addObserver(&a);
    owner->addObserver(&b);
    a.reaction = b.reaction = [&] { owner.reset(); };
    watch.lock()->makeObserversPerformSelector("changed");
    QCOMPARE(log.size(), 2); // the pass finished on the released set
    QVERIFY(watch.expired());
}

void ObserverSetTest::nestedBroadcast()
{
    QStringList log;
    Listener a(&log, u"a"_s);
    const auto set = VeltoObserverSet::create();
    set->addObserver(&a);
    a.reaction = [&] {
        a.reaction = nullptr;
        set->makeObserversPerformSelector("titleChanged");
    };
    set->makeObserversPerformSelector("changed");
    QCOMPARE(log, QStringList({u"a: changed"_s, u"a: title null"_s}));
}

void ObserverSetTest::repeatedBroadcastGoesByName()
{
    // The set remembers the method of its last broadcast; another name in the same buffer is another method.
    QStringList log;
    Listener a(&log, u"a"_s);
    const auto set = VeltoObserverSet::create();
    set->addObserver(&a);
    char selector[16] = "changed";
    set->makeObserversPerformSelector(selector);
    qstrcpy(selector, "moved");
    set->makeObserversPerformSelector(selector); // no arguments: null objects and an invalid QVariant
    QCOMPARE(log, QStringList({u"a: changed"_s, u"a: moved null  null"_s}));
}

void ObserverSetTest::invalidatedSetReachesNobody()
{
    QStringList log;
    Listener a(&log, u"a"_s);
    const auto plain = VeltoObserverSet::create();
    const auto keyed = VeltoKeyedObserverSet::create();
    plain->addObserver(&a);
    keyed->addObserver(&a, u"title"_s, "titleChanged");
    plain->invalidate();
    keyed->invalidate();
    plain->addObserver(&a);
    keyed->addObserver(&a, u"title"_s, "titleChanged");
    QCOMPARE(plain->count() + keyed->count(), 0u);
    QVERIFY(!plain->containsObserver(&a));
    plain->makeObserversPerformSelector("changed");
    keyed->notifyObserversForKey(u"title"_s, {});
    QVERIFY(log.isEmpty());
}

void ObserverSetTest::descriptions()
{
    QStringList log;
    Listener a(&log, u"a"_s);
    const auto set = VeltoObserverSet::create();
    QCOMPARE(set->description(), u"VeltoObserverSet {\n}"_s);
    set->addObserver(&a);
    QVERIFY(set->description().startsWith(u"VeltoObserverSet {\n\tListener(0x"_s));
    QVERIFY(set->description().endsWith(u"\")\n}"_s));
    const auto keyed = VeltoKeyedObserverSet::create();
    keyed->addObserver(&a);
    QCOMPARE(keyed->description(), set->description());
}

void ObserverSetTest::keyedRegistrations()
{
    QStringList log;
    Listener silent(&log, u"silent"_s), twice(&log, u"twice"_s), both(&log, u"both"_s);
    QObject document;
    document.setObjectName(u"doc"_s);
    const auto set = VeltoKeyedObserverSet::create();
    set->addObserver(&silent);
    set->addObserver(&twice, u"title"_s, "titleChanged");
    set->addObserver(&twice, u"title"_s, "titleChanged");
    set->addObserver(&both, u"size"_s, "sizeChanged");
    set->addObserver(&both, u"title"_s, "titleChanged");
    QCOMPARE(set->count(), 3u);
    QVERIFY(set->containsObserver(&silent));
    QCOMPARE(set->observersForKey(u"title"_s), (QSet<QObject *>{&twice, &both}));
    QVERIFY(set->observersForKey(QString()).isEmpty());

    set->notifyObserversForKeys({u"title"_s, u"size"_s}, QVariant::fromValue(&document));
    log.sort(); // observers come in address order; each observer's own calls in registration order
    QCOMPARE(log, QStringList({u"both: size"_s, u"both: title doc"_s, u"twice: title doc"_s, u"twice: title doc"_s}));
    QCOMPARE(set->actionsForObserver(&both).constFirst().key, u"size"_s);

    set->removeObserver(&twice);
    log.clear();
    set->notifyObserversForKey(u"title"_s, {});
    QCOMPARE(log, QStringList{u"both: title null"_s});
}

void ObserverSetTest::observerWithoutKeyIsNotFoundUnderTheEmptyKey()
{
    // The null key of addObserver() alone means "no key"; QString's == takes it as equal to the empty key.
    QStringList log;
    Listener silent(&log, u"silent"_s), empty(&log, u"empty"_s);
    const auto set = VeltoKeyedObserverSet::create();
    set->addObserver(&silent);
    QVERIFY(set->observersForKey(u""_s).isEmpty());
    set->addObserver(&empty, u""_s, "changed");
    QCOMPARE(set->observersForKey(u""_s), QSet<QObject *>{&empty});
    QVERIFY(set->observersForKey(QString()).isEmpty());
    set->notifyObserversForKey(QString(), {});
    QVERIFY(log.isEmpty());
    set->notifyObserversForKey(u""_s, {});
    QCOMPARE(log, QStringList{u"empty: changed"_s});
}

void ObserverSetTest::keyedRemovalDuringPass()
{
    QStringList log;
    Listener a(&log, u"a"_s), b(&log, u"b"_s);
    const auto set = VeltoKeyedObserverSet::create();
    set->addObserver(&a, u"k"_s, "changed");
    set->addObserver(&b, u"k"_s, "changed");
    a.reaction = [&] { set->removeObserver(&b); };
    b.reaction = [&] { set->removeObserver(&a); };
    set->notifyObserversForKey(u"k"_s, {});
    QCOMPARE(log.size(), 1);
    QCOMPARE(set->count(), 1u);
}

void ObserverSetTest::keyedRegistrationDuringOwnVisitThrows()
{
    QStringList log;
    Listener a(&log, u"a"_s), other(&log, u"other"_s);
    const auto set = VeltoKeyedObserverSet::create();
    set->addObserver(&a, u"k"_s, "changed");
    a.reaction = [&] { set->addObserver(&other, u"k"_s, "changed"); }; // another observer: allowed
    set->notifyObserversForKey(u"k"_s, {});
    a.reaction = [&] { set->addObserver(&a, u"k"_s, "changed"); };
    const auto caught = veltoThrown([&] { set->notifyObserversForKey(u"k"_s, {}); });
    QVERIFY2(caught, "the change went unnoticed");
    QCOMPARE(caught->name(), VeltoGenericException);
    QVERIFY(caught->reason().endsWith(u"was mutated while being enumerated."_s));
    QCOMPARE(set->actionsForObserver(&a).size(), 2);
}

QTEST_GUILESS_MAIN(ObserverSetTest)
#include "observersettest.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoNotificationCenter.h"

#include <QPointer>
#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

class Receiver : public QObject
{
    Q_OBJECT

public:
    QStringList heard;

public slots:
    void noted(const VeltoNotification &notification)
    {
        heard << u"%1 %2"_s.arg(notification.name(), notification.userInfo().value(u"n"_s).toString());
    }
    void notedAsVariant(const QVariant &value) { heard << value.value<VeltoNotification>().name(); }
    void notedWithoutArgument() { heard << u"poke"_s; }
};

class NotificationCenterTest : public QObject
{
    Q_OBJECT

private slots:
    void matchesNameAndSender_data();
    void matchesNameAndSender();
    void receiverMethodsTakeTheNotificationInAnyForm();
    void observersHearInTheOrderAdded();
    void destroyedReceiverEndsItsRegistrations();
    void removalByReceiverNameAndSender();
    void tokensEndOneRegistration();
    void nothingIsRegisteredWithoutAnObserver();
    void removalDuringAPostStopsLaterCalls();
    void additionDuringAPostWaitsForTheNextPost();
    void observerMayPostAgain();
    void postsFromManyThreadsWhileObserversComeAndGo();
    void defaultCenterIsOneObject();
};

void NotificationCenterTest::matchesNameAndSender_data()
{
    QTest::addColumn<QString>("observedName");
    QTest::addColumn<int>("observedSender"); // 0 none, 1 first, 2 second
    QTest::addColumn<QString>("postedName");
    QTest::addColumn<int>("postedSender");
    QTest::addColumn<bool>("heard");

    QTest::newRow("same name, any sender") << u"Saved"_s << 0 << u"Saved"_s << 1 << true;
    QTest::newRow("same name, no sender posted") << u"Saved"_s << 0 << u"Saved"_s << 0 << true;
    QTest::newRow("other name") << u"Saved"_s << 0 << u"Closed"_s << 1 << false;
    QTest::newRow("names differ in case") << u"Saved"_s << 0 << u"saved"_s << 1 << false;
    QTest::newRow("any name, any sender") << QString() << 0 << u"Closed"_s << 2 << true;
    QTest::newRow("any name, that sender") << QString() << 1 << u"Closed"_s << 1 << true;
    QTest::newRow("any name, other sender") << QString() << 1 << u"Closed"_s << 2 << false;
    QTest::newRow("that sender, posted without one") << u"Saved"_s << 1 << u"Saved"_s << 0 << false;
    QTest::newRow("name and sender") << u"Saved"_s << 2 << u"Saved"_s << 2 << true;
}

void NotificationCenterTest::matchesNameAndSender()
{
    QFETCH(QString, observedName);
    QFETCH(int, observedSender);
    QFETCH(QString, postedName);
    QFETCH(int, postedSender);
    QFETCH(bool, heard);

    QObject first, second;
    QObject *senders[] = {nullptr, &first, &second};
    VeltoNotificationCenter center;
    Receiver receiver;
    int calls = 0;
    (void)center.addObserverForName(observedName, senders[observedSender], [&](const VeltoNotification &) { ++calls; });
    center.addObserver(&receiver, "noted", observedName, senders[observedSender]);
    center.postNotificationName(postedName, senders[postedSender], {{u"n"_s, 1}});
    QCOMPARE(calls, heard ? 1 : 0);
    QCOMPARE(receiver.heard, heard ? QStringList{postedName + u" 1"_s} : QStringList());
}

void NotificationCenterTest::receiverMethodsTakeTheNotificationInAnyForm()
{
    VeltoNotificationCenter center;
    Receiver receiver;
    QObject sender;
    center.addObserver(&receiver, "notedAsVariant", u"A"_s);
    center.addObserver(&receiver, "notedWithoutArgument", u"A"_s);
    center.addObserver(&receiver, "noSuchMethod", u"A"_s); // skipped, like any object lacking the method
    VeltoNotification seen;
    (void)center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &n) { seen = n; });
    center.postNotificationName(u"A"_s, &sender, {{u"path"_s, u"/tmp/x"_s}});
    QCOMPARE(receiver.heard, (QStringList{u"A"_s, u"poke"_s}));
    QCOMPARE(seen.name(), u"A"_s);
    QCOMPARE(seen.sender(), &sender);
    QCOMPARE(seen.userInfo().value(u"path"_s).toString(), u"/tmp/x"_s);
}

void NotificationCenterTest::observersHearInTheOrderAdded()
{
    VeltoNotificationCenter center;
    QStringList order;
    for (const QString &name : {u"one"_s, u"two"_s, u"three"_s})
        (void)center.addObserverForName({}, nullptr, [&order, name](const VeltoNotification &) { order << name; });
    center.postNotificationName(u"X"_s, nullptr);
    QCOMPARE(order, (QStringList{u"one"_s, u"two"_s, u"three"_s}));
}

void NotificationCenterTest::destroyedReceiverEndsItsRegistrations()
{
    VeltoNotificationCenter center;
    int blockCalls = 0;
    auto *receiver = new Receiver;
    center.addObserver(receiver, "noted", u"A"_s);
    center.addObserver(receiver, "noted", u"B"_s);
    (void)center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { ++blockCalls; }, receiver);
    QCOMPARE(center.observerCount(), 3);
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(blockCalls, 1);
    delete receiver;
    QCOMPARE(center.observerCount(), 0);
    center.postNotificationName(u"A"_s, nullptr); // would touch freed memory if the registration had stayed
    QCOMPARE(blockCalls, 1);
}

void NotificationCenterTest::removalByReceiverNameAndSender()
{
    VeltoNotificationCenter center;
    Receiver receiver;
    QObject first, second;
    center.addObserver(&receiver, "noted", u"A"_s, &first);
    center.addObserver(&receiver, "noted", u"A"_s, &second);
    center.addObserver(&receiver, "noted", u"B"_s, &first);
    (void)center.addObserverForName(u"B"_s, nullptr, [](const VeltoNotification &) {}, &receiver);

    center.removeObserver(&receiver, u"A"_s, &second);
    QCOMPARE(center.observerCount(), 3);
    center.postNotificationName(u"A"_s, &second);
    center.postNotificationName(u"A"_s, &first, {{u"n"_s, 1}});
    QCOMPARE(receiver.heard, QStringList{u"A 1"_s});

    center.removeObserver(&receiver, u"B"_s);
    QCOMPARE(center.observerCount(), 1);
    center.removeObserver(&receiver);
    QCOMPARE(center.observerCount(), 0);
    center.removeObserver(&receiver); // nothing left: harmless
    center.removeObserver(nullptr);
}

void NotificationCenterTest::tokensEndOneRegistration()
{
    VeltoNotificationCenter center;
    int first = 0, second = 0;
    const auto a = center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { ++first; });
    const auto b = center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { ++second; });
    QVERIFY(a != b);
    center.removeObserver(a);
    center.removeObserver(a);
    center.removeObserver(VeltoNotificationCenter::Token::None);
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(first, 0);
    QCOMPARE(second, 1);
    center.removeObserver(b);
    QCOMPARE(center.observerCount(), 0);
}

void NotificationCenterTest::nothingIsRegisteredWithoutAnObserver()
{
    VeltoNotificationCenter center;
    Receiver receiver;
    center.addObserver(nullptr, "noted", u"A"_s);
    center.addObserver(&receiver, nullptr, u"A"_s);
    center.addObserver(&receiver, "", u"A"_s);
    QCOMPARE(center.addObserverForName(u"A"_s, nullptr, {}), VeltoNotificationCenter::Token::None);
    QCOMPARE(center.observerCount(), 0);
}

void NotificationCenterTest::removalDuringAPostStopsLaterCalls()
{
    VeltoNotificationCenter center;
    QStringList calls;
    VeltoNotificationCenter::Token first{}, second{}, third{};
    first = center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) {
        calls << u"first"_s;
        center.removeObserver(first); // itself
        center.removeObserver(second); // one not yet called in this post
    });
    second = center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { calls << u"second"_s; });
    third = center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { calls << u"third"_s; });
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(calls, (QStringList{u"first"_s, u"third"_s}));
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(calls, (QStringList{u"first"_s, u"third"_s, u"third"_s}));

    // A receiver destroyed by an earlier observer of the same post is not called.
    auto *doomed = new Receiver;
    const auto killer = center.addObserverForName(u"B"_s, nullptr, [&](const VeltoNotification &) { delete doomed; });
    center.addObserver(doomed, "noted", u"B"_s);
    center.postNotificationName(u"B"_s, nullptr);
    center.removeObserver(killer);
    center.removeObserver(third);
    QCOMPARE(center.observerCount(), 0);
}

void NotificationCenterTest::additionDuringAPostWaitsForTheNextPost()
{
    VeltoNotificationCenter center;
    int late = 0;
    bool added = false;
    (void)center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) {
        if (!std::exchange(added, true))
            (void)center.addObserverForName(u"A"_s, nullptr, [&](const VeltoNotification &) { ++late; });
    });
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(late, 0);
    center.postNotificationName(u"A"_s, nullptr);
    QCOMPARE(late, 1);
}

void NotificationCenterTest::observerMayPostAgain()
{
    VeltoNotificationCenter center;
    QStringList calls;
    (void)center.addObserverForName({}, nullptr, [&](const VeltoNotification &n) {
        calls << n.name();
        if (n.name() == u"outer")
            center.postNotificationName(u"inner"_s, nullptr);
    });
    center.postNotificationName(u"outer"_s, nullptr);
    QCOMPARE(calls, (QStringList{u"outer"_s, u"inner"_s}));
}

void NotificationCenterTest::postsFromManyThreadsWhileObserversComeAndGo()
{
    // Posting threads, and threads adding and removing observers (some removing themselves mid-post), run
    // at once; the steady observer hears every post exactly once. Run under ThreadSanitizer too.
    VeltoNotificationCenter center;
    std::atomic<int> steady{0};
    const auto steadyToken = center.addObserverForName(u"tick"_s, nullptr, [&](const VeltoNotification &) { ++steady; });
    constexpr int posters = 3, postsEach = 2000, churners = 2, churnEach = 1000;
    std::vector<std::thread> threads;
    for (int i = 0; i < posters; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < postsEach; ++n)
                center.postNotificationName(u"tick"_s, nullptr, {{u"n"_s, n}});
        });
    }
    for (int i = 0; i < churners; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < churnEach; ++n) {
                using Token = VeltoNotificationCenter::Token;
                auto token = std::make_shared<std::atomic<Token>>(Token::None);
                token->store(center.addObserverForName(u"tick"_s, nullptr, [&center, token](const VeltoNotification &) {
                    center.removeObserver(token->load());
                }));
                center.removeObserver(token->load());
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(steady.load(), posters * postsEach);
    QCOMPARE(center.observerCount(), 1);
    center.removeObserver(steadyToken);
}

void NotificationCenterTest::defaultCenterIsOneObject()
{
    QVERIFY(VeltoNotificationCenter::defaultCenter());
    QCOMPARE(VeltoNotificationCenter::defaultCenter(), VeltoNotificationCenter::defaultCenter());
}

QTEST_GUILESS_MAIN(NotificationCenterTest)
#include "notificationcentertest.moc"

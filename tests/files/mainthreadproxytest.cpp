// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FWMainThreadProxy.h"
#include "Object+FWMainThreadProxy.h"
#include "VeltoException.h"

#include "watchertestsupport.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

class Target : public QObject
{
    Q_OBJECT

public:
    std::atomic<int> calls{0};
    std::atomic<bool> offMainThread{false};

public slots:
    QString greet(const QString &name)
    {
        record();
        return u"hello "_s + name;
    }
    void fail()
    {
        record();
        throw std::runtime_error("the target failed");
    }

private:
    void record()
    {
        ++calls;
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            offMainThread = true;
    }
};

// Runs \a work on a thread of its own; joined when destroyed.
class Worker
{
public:
    explicit Worker(std::function<void()> work) : thread([this, work = std::move(work)] {
        started = true;
        work();
        done = true;
    })
    {
    }
    ~Worker() { thread.join(); }

    // Returns once the work has begun, without running the main thread's event loop.
    void waitUntilStarted() const
    {
        while (!started)
            QThread::yieldCurrentThread();
    }

    std::atomic<bool> started{false};
    std::atomic<bool> done{false};

private:
    std::thread thread;
};

class MainThreadProxyTest : public QObject
{
    Q_OBJECT

private slots:
    void callsFromAnotherThreadRunOnTheMainThread();
    void callsOnTheMainThreadAreDirect();
    void unrecognizedSelectorsThrow();
    void exceptionsComeBackToTheCaller();
    void invalidationReleasesAWaitingCaller();
    void aTargetGoneBeforeItsCallIsSkipped();
    void aProxyIsNeverWrappedTwice();
};

void MainThreadProxyTest::callsFromAnotherThreadRunOnTheMainThread()
{
    Target target;
    FWMainThreadProxy proxy(&target);
    QStringList results;
    {
        Worker worker([&] {
            for (int i = 0; i < 100; ++i)
                results << proxy.performSelector("greet", u"world %1"_s.arg(i)).toString();
        });
        QVERIFY(runEventLoopUntil([&] { return worker.done.load(); }));
    }
    QCOMPARE(target.calls.load(), 100);
    QVERIFY(!target.offMainThread);
    QCOMPARE(results.size(), 100);
    QCOMPARE(results.first(), u"hello world 0"_s);
    QCOMPARE(results.last(), u"hello world 99"_s);
}

void MainThreadProxyTest::callsOnTheMainThreadAreDirect()
{
    Target target;
    FWMainThreadProxy proxy(&target);
    QCOMPARE(proxy.performSelector("greet", u"you"_s).toString(), u"hello you"_s); // no event loop needed
    QCOMPARE(target.calls.load(), 1);
    QVERIFY(proxy.respondsToSelector("greet"));
    QVERIFY(!proxy.respondsToSelector("wave"));
    QCOMPARE(proxy.target(), &target);

    FWMainThreadProxy empty(nullptr);
    QVERIFY(!empty.performSelector("greet").isValid());
    QVERIFY(!empty.respondsToSelector("greet"));
}

void MainThreadProxyTest::unrecognizedSelectorsThrow()
{
    Target target;
    target.setObjectName(u"t"_s);
    FWMainThreadProxy proxy(&target);
    const QString reason = u"-[Target wave]: unrecognized selector sent to instance 0x%1"_s.arg(quintptr(&target), 0, 16);
    try {
        proxy.performSelector("wave");
        QFAIL("no exception on the main thread");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.name(), u"NSInvalidArgumentException"_s);
        QCOMPARE(exception.reason(), reason);
    }
    QString caught;
    {
        Worker worker([&] {
            try {
                proxy.performSelector("wave");
            } catch (const VeltoException &exception) {
                caught = exception.reason();
            }
        });
        QVERIFY(runEventLoopUntil([&] { return worker.done.load(); }));
    }
    QCOMPARE(caught, reason);
}

void MainThreadProxyTest::exceptionsComeBackToTheCaller()
{
    Target target;
    FWMainThreadProxy proxy(&target);
    QString caught;
    {
        Worker worker([&] {
            try {
                proxy.performSelector("fail");
            } catch (const std::runtime_error &error) {
                caught = QString::fromUtf8(error.what());
            }
        });
        QVERIFY(runEventLoopUntil([&] { return worker.done.load(); }));
    }
    QCOMPARE(caught, u"the target failed"_s);
    QCOMPARE(target.calls.load(), 1);
}

void MainThreadProxyTest::invalidationReleasesAWaitingCaller()
{
    // The main thread does not run its event loop, so the call waits; invalidating releases the caller
    // with no result, and the queued call never reaches the target.
    Target target;
    FWMainThreadProxy proxy(&target);
    QVariant result = u"untouched"_s;
    {
        Worker worker([&] { result = proxy.performSelector("greet", u"late"_s); });
        worker.waitUntilStarted();
        proxy.invalidate();
        proxy.invalidate();
        QVERIFY(!proxy.isValid());
    } // joined: the caller came back without the main thread's help
    QVERIFY(!result.isValid());
    QCoreApplication::processEvents();
    QCOMPARE(target.calls.load(), 0);
    QVERIFY(!proxy.performSelector("greet", u"after"_s).isValid());
}

void MainThreadProxyTest::aTargetGoneBeforeItsCallIsSkipped()
{
    auto *target = new Target;
    FWMainThreadProxy proxy(target);
    QVariant result = u"untouched"_s;
    Worker worker([&] { result = proxy.performSelector("greet", u"nobody"_s); });
    worker.waitUntilStarted();
    delete target; // before the main thread reaches the call
    QVERIFY(runEventLoopUntil([&] { return worker.done.load(); }));
    QVERIFY(!result.isValid());
}

void MainThreadProxyTest::aProxyIsNeverWrappedTwice()
{
    Target target;
    const auto proxy = velto::mainThreadProxy(&target);
    QCOMPARE(proxy->target(), &target);
    QCOMPARE(proxy->mainThreadProxy(), proxy.get());
    const auto owned = velto::copyMainThreadProxy(&target);
    QVERIFY(owned.get() != proxy.get());
    QCOMPARE(owned->performSelector("greet", u"again"_s).toString(), u"hello again"_s);
}

QTEST_GUILESS_MAIN(MainThreadProxyTest)
#include "mainthreadproxytest.moc"

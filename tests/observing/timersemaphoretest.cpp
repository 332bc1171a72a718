// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDeferToBaseRunLoop.h"
#include "VeltoSemaphore.h"
#include "VeltoWeakTargetTimer.h"

#include <QCoreApplication>
#include <QFile>
#include <QEventLoop>
#include <QPointer>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <unistd.h>
#include <mutex>

using namespace Qt::StringLiterals;

class TimerTarget : public QObject
{
    Q_OBJECT

public:
    QList<VeltoWeakTargetTimer *> ticks;
    std::unique_ptr<VeltoWeakTargetTimer> timer; // a target may own its timer
    bool deleteSelfOnTick = false;

public slots:
    void tick(VeltoWeakTargetTimer *firing)
    {
        ticks << firing;
        if (deleteSelfOnTick)
            delete this;
    }
};

class TimerSemaphoreTest : public QObject
{
    Q_OBJECT

private slots:
    void repeatingTimerPassesItselfUntilInvalidated()
    {
        TimerTarget target;
        auto timer = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(0.001, &target, "tick", true);
        QTRY_VERIFY(target.ticks.size() >= 3);
        QVERIFY(std::all_of(target.ticks.begin(), target.ticks.end(), [&](auto *t) { return t == timer.get(); }));
        timer->invalidate();
        timer->invalidate();
        QCOMPARE(timer->target(), nullptr);
        const auto fired = target.ticks.size();
        runEventLoopFor(30);
        QCOMPARE(target.ticks.size(), fired);
    }

    void oneShotTimerStaysHeldUntilInvalidated()
    {
        TimerTarget target;
        VeltoWeakTargetTimer timer(0, &target, "tick", false);
        QTRY_COMPARE(target.ticks.size(), 1);
        runEventLoopFor(20);
        QCOMPARE(target.ticks.size(), 1);
        QVERIFY(timer.isValid());
        timer.invalidate();
        QVERIFY(!timer.isValid());
    }

    void targetOwningItsTimerCanGo()
    {
        // Invalidated, then the owner goes: both are freed.
        QPointer<TimerTarget> owner = new TimerTarget;
        owner->timer = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(0.001, owner, "tick", true);
        QPointer<VeltoWeakTargetTimer> timer = owner->timer.get();
        owner->timer->invalidate();
        delete owner;
        QVERIFY(timer.isNull());

        // The owner destroys itself, and its timer, from inside the timer's own message.
        QPointer<TimerTarget> selfDeleting = new TimerTarget;
        selfDeleting->deleteSelfOnTick = true;
        selfDeleting->timer = VeltoWeakTargetTimer::newScheduledTimerWithTimeInterval(0.001, selfDeleting, "tick", true);
        QTRY_VERIFY(selfDeleting.isNull());
    }

    void deferredBlockWaitsForTheBaseLoop()
    {
        QEventLoop base;
        bool inNestedLoop = false, ran = false, ranInNestedLoop = false;
        QTimer::singleShot(0, &base, [&] {
            VeltoDeferToBaseRunLoop([&] {
                ran = true;
                ranInNestedLoop = inNestedLoop;
                base.quit();
            });
            // A modal loop: everything queued before its quit is handled inside it, except the deferred block.
            QEventLoop nested;
            QMetaObject::invokeMethod(&nested, &QEventLoop::quit, Qt::QueuedConnection);
            inNestedLoop = true;
            nested.exec();
            inNestedLoop = false;
        });
        QTimer::singleShot(5000, &base, &QEventLoop::quit);
        base.exec();
        QVERIFY(ran);
        QVERIFY(!ranInNestedLoop);
    }

    void semaphoreAcrossTwoProcesses()
    {
        const QString name = uniqueName("cross");
        VeltoError error;
        auto semaphore = VeltoSemaphore::initWithName(name, true, &error);
        QVERIFY2(semaphore, qPrintable(error.localizedDescription()));
        QVERIFY(!semaphore->tryWait());

        QProcess poster;
        poster.start(QStringLiteral(VELTO_SEMAPHORE_HELPER), {u"post"_s, name});
        QVERIFY(poster.waitForFinished(10000));
        QCOMPARE(poster.readAllStandardOutput(), "done"_ba);
        QVERIFY(semaphore->tryWait()); // the other process's post arrived

        QProcess waiter;
        waiter.start(QStringLiteral(VELTO_SEMAPHORE_HELPER), {u"wait"_s, name});
        QVERIFY(waiter.waitForStarted(10000));
        {
            std::unique_lock lock(*semaphore, std::defer_lock); // the semaphore serves as a lockable
            QVERIFY(!lock.try_lock());
        }
        semaphore->post();
        QVERIFY(waiter.waitForFinished(10000));
        QCOMPARE(waiter.exitCode(), 0);
        QVERIFY(semaphore->description().endsWith(u"> \"%1\""_s.arg(name)));
    }

    void semaphoreErrors_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("create");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("reason");
        QTest::newRow("opening a name that does not exist") << uniqueName("absent") << false << ENOENT << QString();
        QTest::newRow("a name too long") << u"/"_s + QString(252, u'n') << true << ENAMETOOLONG << u"name too long"_s;
        QTest::newRow("a name far too long") << u"/"_s + QString(300, u'n') << false << ENAMETOOLONG << u"name too long"_s;
    }

    void semaphoreErrors()
    {
        QFETCH(QString, name);
        QFETCH(bool, create);
        QFETCH(int, code);
        QFETCH(QString, reason);
        VeltoError error;
        QVERIFY(!VeltoSemaphore::initWithName(name, create, &error));
        QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
        QCOMPARE(error.code(), code);
        QCOMPARE(error.localizedDescription(), u"failed to create/open semaphore \"%1\", %2"_s.arg(name, reason));
        QCOMPARE(error.descriptionForUserVelto(), error.localizedDescription()); // no code appended
        QVERIFY(!VeltoSemaphore::initWithName(name, create)); // no out-parameter: just null
    }

    void onlyTheCreatorUnlinks()
    {
        const QString name = uniqueName("unlink");
        auto creator = VeltoSemaphore::initWithName(name, true);
        QVERIFY(creator);

        QProcess second;
        second.start(QStringLiteral(VELTO_SEMAPHORE_HELPER), {u"create"_s, name});
        QVERIFY(second.waitForFinished(10000));
        QCOMPARE(second.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(second.readAllStandardOutput()),
                 u"failed to create/open semaphore \"%1\", already exists"_s.arg(name));

        auto opener = VeltoSemaphore::initWithName(name, false);
        QVERIFY(opener && !opener->wasCreated());
        opener->close();
        opener->close();
        QVERIFY(!opener->isOpen());
        QVERIFY(VeltoSemaphore::initWithName(name, false)); // an opener's close left the name

        creator->close();
        creator->close();
        VeltoError error;
        QVERIFY(!VeltoSemaphore::initWithName(name, false, &error));
        QCOMPARE(error.code(), ENOENT);
    }

    void semaphoreAccessDenied()
    {
        const QString name = uniqueName("denied");
        auto owner = VeltoSemaphore::initWithName(name, true);
        QVERIFY(owner);
        QProcess other;
        if (geteuid() == 0) {
            // Root passes every permission check: the other process gives up root before it starts, and
            // the semaphore's mode (rw-rw-r--) leaves another user read access only.
            other.setChildProcessModifier([] {
                if (setgid(65534) != 0 || setuid(65534) != 0)
                    _exit(3);
            });
        } else {
            // A user can always open their own semaphore; take the permissions away from its file instead.
            QVERIFY(QFile::setPermissions(u"/dev/shm/sem."_s + name.mid(1), QFileDevice::Permissions()));
        }
        other.start(QStringLiteral(VELTO_SEMAPHORE_HELPER), {u"post"_s, name});
        QVERIFY(other.waitForFinished(10000));
        QCOMPARE(other.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(other.readAllStandardOutput()),
                 u"failed to create/open semaphore \"%1\", access denied"_s.arg(name));
    }

private:
    QString uniqueName(const char *what) const
    {
        return u"/velto-test-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(QLatin1StringView(what));
    }
    // Waits on a spy of a timer of its own, so that "no further firing" is seen over real event-loop turns.
    static void runEventLoopFor(int milliseconds)
    {
        QTimer sentinel;
        sentinel.setSingleShot(true);
        QSignalSpy fired(&sentinel, &QTimer::timeout);
        sentinel.start(milliseconds);
        QVERIFY(fired.wait(milliseconds + 5000));
    }
};

QTEST_GUILESS_MAIN(TimerSemaphoreTest)
#include "timersemaphoretest.moc"

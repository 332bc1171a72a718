// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FWFileWatcher.h"
#include "FWKQueue.h"
#include "VeltoNotificationCenter.h"

#include "watchertestsupport.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <mutex>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 EveryKind = 0x7f;

QString kindOf(const QString &notification)
{
    static const QHash<QString, QString> kinds{
        {FWFileWatcherRenameNotification, u"rename"_s},
        {FWFileWatcherWriteNotification, u"write"_s},
        {FWFileWatcherDeleteNotification, u"delete"_s},
        {FWFileWatcherAttributeChangeNotification, u"attributes"_s},
        {FWFileWatcherSizeIncreaseNotification, u"size"_s},
        {FWFileWatcherLinkCountChangeNotification, u"links"_s},
        {FWFileWatcherAccessRevocationNotification, u"revoked"_s},
    };
    return kinds.value(notification, notification);
}

// Bytes the kernel holds for the queue's thread to read.
int pendingBytes(const FWKQueue &queue)
{
    int bytes = 0;
    return ioctl(queue.queueFD(), FIONREAD, &bytes) == 0 ? bytes : -1;
}

// Sees every log line, on any thread, and passes it on (to QtTest, which checks ignored messages).
class MessageSpy
{
public:
    MessageSpy()
    {
        std::lock_guard lock(mutex);
        lines.clear();
        previous = qInstallMessageHandler(&MessageSpy::handle);
    }
    ~MessageSpy() { qInstallMessageHandler(previous); }

    bool contains(const QRegularExpression &pattern) const
    {
        std::lock_guard lock(mutex);
        return !lines.filter(pattern).isEmpty();
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        {
            std::lock_guard lock(mutex);
            lines << message;
        }
        previous(type, context, message);
    }

    static inline std::mutex mutex;
    static inline QStringList lines;
    static inline QtMessageHandler previous = nullptr;
};

} // namespace

// The delegate: records "kind file-name" for every notification, on the thread it runs on.
class Recorder : public QObject
{
    Q_OBJECT

public:
    QStringList heard;
    bool offMainThread = false;
    std::function<void(const QString &kind, const QString &path)> reaction;

    QStringList kindsFor(const QString &path) const
    {
        QStringList kinds;
        for (const QString &entry : heard) {
            if (entry.section(u' ', 1) == path)
                kinds << entry.section(u' ', 0, 0);
        }
        return kinds;
    }

public slots:
    void watcher(FWKQueue *, const QString &notification, const QString &path)
    {
        offMainThread = offMainThread || QThread::currentThread() != QCoreApplication::instance()->thread();
        heard << kindOf(notification) + u' ' + path;
        if (reaction)
            reaction(kindOf(notification), path);
    }
};

class FWKQueueTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void changeKinds_data();
    void changeKinds();
    void writeThenRenameReadTogetherPostsRenameFirst();
    void samePathTwiceIsTwoRegistrations();
    void atomicSavesAreFollowedOnlyWhenAsked_data();
    void atomicSavesAreFollowedOnlyWhenAsked();
    void unmountRevokesAccess();
    void unwatchablePathsAreRefusedWithAReason();
    void watchLimitAndInstanceLimitAreReported();

    void centreGetsNotificationsWithoutADelegateOrWhenAlwaysNotifying();
    void replacedDelegateHearsNothingMore();
    void delegateExceptionIsLoggedAndTheThreadGoesOn();
    void description();

    void thousandsOfWatchesSurviveAnOverflowingBurst();
    void destroyingWhileEventsArrive();

private:
    std::unique_ptr<FWKQueue> makeQueue(Recorder *delegate)
    {
        auto queue = FWKQueue::init();
        if (queue) {
            queue->setDelegate(delegate);
            // Destroying a running queue says so, as it always has.
            QTest::ignoreMessage(QtWarningMsg, "*** FWKQueue thread termination disabled!");
        }
        return queue;
    }
    // Changes the sentinel (watched last) and waits until its change is heard: every change made before
    // it has been delivered by then. The sentinel's own entries are dropped.
    [[nodiscard]] bool settle(FWKQueue &queue, Recorder &recorder)
    {
        if (!queue.watchedPaths().contains(sentinel) && !queue.addPathToQueue(sentinel, FWKQueue::NoteAttrib))
            return false;
        if (!runFileChanger({u"chmod"_s, sentinel, u"644"_s}).isEmpty())
            return false;
        const QString heard = u"attributes "_s + sentinel;
        const bool settled = runEventLoopUntil([&] { return recorder.heard.contains(heard); });
        recorder.heard.removeAll(heard);
        return settled;
    }
    QString path(const QString &name) const { return dir->filePath(name); }
    QString expand(const QString &argument) const
    {
        QString expanded = argument;
        return expanded.replace(u"%f"_s, watched).replace(u"%d"_s, dir->path());
    }

    std::unique_ptr<QTemporaryDir> dir; // a fresh one for each test
    QString watched, sentinel;
};

void FWKQueueTest::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    watched = path(u"watched.txt"_s);
    sentinel = path(u"sentinel"_s);
    for (const QString &file : {watched, sentinel}) {
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write("hello world\n");
    }
}

void FWKQueueTest::changeKinds_data()
{
    QTest::addColumn<QStringList>("before"); // made before watching
    QTest::addColumn<QStringList>("changes"); // made by the other process while watching
    QTest::addColumn<quint32>("mask");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("write in place") << QStringList() << QStringList{u"write"_s, u"%f"_s, u"HELLO"_s} << EveryKind
                                    << QStringList{u"write"_s};
    QTest::newRow("append") << QStringList() << QStringList{u"append"_s, u"%f"_s, u"more"_s} << EveryKind
                            << QStringList{u"write"_s, u"size"_s};
    QTest::newRow("truncate shorter") << QStringList() << QStringList{u"truncate"_s, u"%f"_s, u"3"_s} << EveryKind
                                      << QStringList{u"write"_s};
    QTest::newRow("truncate longer") << QStringList() << QStringList{u"truncate"_s, u"%f"_s, u"4096"_s} << EveryKind
                                     << QStringList{u"write"_s, u"size"_s};
    QTest::newRow("chmod") << QStringList() << QStringList{u"chmod"_s, u"%f"_s, u"600"_s} << EveryKind
                           << QStringList{u"attributes"_s};
    QTest::newRow("hard link made") << QStringList() << QStringList{u"link"_s, u"%f"_s, u"%d/other"_s} << EveryKind
                                    << QStringList{u"links"_s};
    QTest::newRow("hard link removed") << QStringList{u"link"_s, u"%f"_s, u"%d/other"_s}
                                       << QStringList{u"unlink"_s, u"%d/other"_s} << EveryKind << QStringList{u"links"_s};
    QTest::newRow("rename") << QStringList() << QStringList{u"rename"_s, u"%f"_s, u"%d/moved"_s} << EveryKind
                            << QStringList{u"rename"_s};
    QTest::newRow("delete") << QStringList() << QStringList{u"unlink"_s, u"%f"_s} << EveryKind
                            << QStringList{u"delete"_s, u"links"_s};
    QTest::newRow("delete one of two names") << QStringList{u"link"_s, u"%f"_s, u"%d/other"_s}
                                             << QStringList{u"unlink"_s, u"%f"_s} << EveryKind << QStringList{u"links"_s};
    QTest::newRow("replaced by an atomic save") << QStringList() << QStringList{u"save"_s, u"%f"_s, u"new"_s}
                                                << EveryKind << QStringList{u"delete"_s, u"links"_s};
    QTest::newRow("renamed, then written where it went")
        << QStringList() << QStringList{u"rename"_s, u"%f"_s, u"%d/moved"_s, u"append"_s, u"%d/moved"_s, u"x"_s}
        << EveryKind << QStringList{u"rename"_s, u"write"_s};
    QTest::newRow("default mask: no size, no links")
        << QStringList() << QStringList{u"append"_s, u"%f"_s, u"more"_s, u"link"_s, u"%f"_s, u"%d/other"_s}
        << FWKQueue::DefaultMask << QStringList{u"write"_s};
    QTest::newRow("write only") << QStringList()
                                << QStringList{u"chmod"_s, u"%f"_s, u"600"_s, u"append"_s, u"%f"_s, u"x"_s,
                                               u"rename"_s, u"%f"_s, u"%d/moved"_s}
                                << FWKQueue::NoteWrite << QStringList{u"write"_s};
    QTest::newRow("bits above revoke are ignored") << QStringList() << QStringList{u"append"_s, u"%f"_s, u"x"_s}
                                                   << quint32(0xff80) << QStringList();
}

void FWKQueueTest::changeKinds()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, changes);
    QFETCH(quint32, mask);
    QFETCH(QStringList, expected);

    if (!before.isEmpty()) {
        std::transform(before.begin(), before.end(), before.begin(), [&](const QString &a) { return expand(a); });
        QCOMPARE(runFileChanger(before), QString());
    }
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue);
    VeltoError error;
    QVERIFY2(queue->addPathToQueue(watched, mask, {}, &error), qPrintable(error.localizedDescription()));
    std::transform(changes.begin(), changes.end(), changes.begin(), [&](const QString &a) { return expand(a); });
    QCOMPARE(runFileChanger(changes), QString());
    QVERIFY(settle(*queue, recorder));
    // A file reported under the path it was added with, even after it moved.
    QCOMPARE(recorder.kindsFor(watched), expected);
    QCOMPARE(recorder.heard.size(), expected.size());
    QVERIFY(!recorder.offMainThread);
}

void FWKQueueTest::writeThenRenameReadTogetherPostsRenameFirst()
{
    // The thread reads a gate change and waits for the main thread, which is busy until the other
    // process has written and renamed the file: the thread then reads both at once and posts them in the
    // fixed order, rename first.
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue && queue->addPathToQueue(sentinel, FWKQueue::NoteAttrib) && queue->addPathToQueue(watched, EveryKind));
    QCOMPARE(runFileChanger({u"chmod"_s, sentinel, u"600"_s}), QString());
    const QDeadlineTimer deadline(30000);
    while (pendingBytes(*queue) > 0 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    QCOMPARE(pendingBytes(*queue), 0);
    QCOMPARE(runFileChanger({u"write"_s, watched, u"HELLO"_s, u"rename"_s, watched, path(u"moved"_s)}), QString());
    QVERIFY(runEventLoopUntil([&] { return recorder.heard.size() >= 3; }));
    QCOMPARE(recorder.heard, (QStringList{u"attributes "_s + sentinel, u"rename "_s + watched, u"write "_s + watched}));
}

void FWKQueueTest::samePathTwiceIsTwoRegistrations()
{
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue && queue->addPathToQueue(watched, FWKQueue::NoteWrite) && queue->addPath(watched));
    QCOMPARE(queue->watchedPaths(), (QStringList{watched, watched}));
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(recorder.kindsFor(watched), (QStringList{u"write"_s, u"write"_s}));

    // Removing the path ends its first registration (writes only): the default one stays.
    recorder.heard.clear();
    queue->removePathFromQueue(watched);
    queue->removePath(path(u"never-watched"_s));
    QCOMPARE(queue->watchedPaths(), (QStringList{watched, sentinel}));
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(recorder.kindsFor(watched), (QStringList{u"attributes"_s, u"write"_s}));

    queue->removeAllPathsFromQueue();
    QVERIFY(queue->watchedPaths().isEmpty());
    recorder.heard.clear();
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QVERIFY(recorder.heard.isEmpty());
}

void FWKQueueTest::atomicSavesAreFollowedOnlyWhenAsked_data()
{
    QTest::addColumn<bool>("follow");
    QTest::addColumn<QStringList>("expected"); // after the save, the append and the second save
    // Without following, the watch stays with the replaced file, which is gone; the new file is unwatched.
    QTest::newRow("not followed") << false << QStringList{u"delete links"_s, QString(), QString()};
    // Following, the watch moves to the new file, reports the save as a write, then hears the new file.
    QTest::newRow("followed") << true << QStringList{u"write"_s, u"write size"_s, u"write"_s};
}

void FWKQueueTest::atomicSavesAreFollowedOnlyWhenAsked()
{
    QFETCH(bool, follow);
    QFETCH(QStringList, expected);
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue);
    FWKQueue::WatchOptions options;
    options.setFlag(FWKQueue::WatchOption::FollowAtomicSaves, follow);
    QVERIFY(queue->addPathToQueue(watched, EveryKind, options));
    // Other entries of the folder come and go unheard. Each step is settled before the next, so that the
    // sizes read for the new file are the ones of that step.
    const QList<QStringList> steps{
        {u"save"_s, path(u"unrelated.txt"_s), u"x"_s, u"save"_s, watched, u"saved once"_s},
        {u"append"_s, watched, u" and appended"_s},
        {u"save"_s, watched, u"saved twice"_s},
    };
    QStringList heard;
    for (const QStringList &step : steps) {
        recorder.heard.clear();
        QCOMPARE(runFileChanger(step), QString());
        QVERIFY(settle(*queue, recorder));
        QCOMPARE(recorder.kindsFor(watched).size(), recorder.heard.size());
        heard << recorder.kindsFor(watched).join(u' ');
    }
    QCOMPARE(heard, expected);
}

void FWKQueueTest::unmountRevokesAccess()
{
    const QString mountPoint = path(u"volume"_s);
    QVERIFY(QDir().mkpath(mountPoint));
    if (::mount("tmpfs", QFile::encodeName(mountPoint).constData(), "tmpfs", 0, "size=1m") != 0)
        QSKIP(qPrintable(u"cannot mount a tmpfs here (%1): unmounting is not tested"_s.arg(QString::fromLocal8Bit(strerror(errno)))));
    const auto unmount = qScopeGuard([&] { ::umount2(QFile::encodeName(mountPoint).constData(), MNT_DETACH); });
    const QString onVolume = mountPoint + u"/file.txt"_s;
    QFile file(onVolume);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();

    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue && queue->addPathToQueue(onVolume, EveryKind));
    // The watch must not keep the volume busy: the other process can unmount it.
    QCOMPARE(runFileChanger({u"umount"_s, mountPoint}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(recorder.kindsFor(onVolume), QStringList{u"revoked"_s});
    QCOMPARE(recorder.heard.size(), 1);
}

void FWKQueueTest::unwatchablePathsAreRefusedWithAReason()
{
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue);
    VeltoError error;
    QVERIFY(!queue->addPathToQueue(path(u"missing"_s), EveryKind, {}, &error));
    QCOMPARE(error.domain(), VeltoPOSIXErrorDomain);
    QCOMPARE(error.code(), ENOENT);
    QVERIFY(!queue->addPath(QString(), &error));
    QCOMPARE(error.code(), ENOENT);
    QVERIFY(!queue->addPath(watched + u"/below-a-file"_s, &error));
    QCOMPARE(error.code(), ENOTDIR);
    // Following needs the folder: a folder that is not there refuses the whole watch.
    QVERIFY(!queue->addPathToQueue(path(u"missing/file"_s), EveryKind, FWKQueue::WatchOption::FollowAtomicSaves, &error));
    QVERIFY(queue->watchedPaths().isEmpty());
}

void FWKQueueTest::watchLimitAndInstanceLimitAreReported()
{
    // The probe enters a user namespace of its own and lowers the limits there, so that the rest of the
    // machine keeps its own.
    QStringList files;
    for (int i = 0; i < 3; ++i) {
        files << path(u"limited-%1"_s.arg(i));
        QFile file(files.last());
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QProcess probe;
    probe.start(QStringLiteral(VELTO_WATCH_LIMIT_PROBE), QStringList{u"2"_s} + files);
    QVERIFY(probe.waitForFinished(60000));
    const QString output = QString::fromUtf8(probe.readAllStandardOutput());
    if (probe.exitCode() == 77)
        QSKIP(qPrintable(u"no user namespace for the probe: "_s + output.trimmed()));
    QCOMPARE(probe.exitCode(), 0);
    const QStringList lines = output.split(u'\n', Qt::SkipEmptyParts);
    const QString limitText = u"The limit of 2 inotify watches per user is reached (fs.inotify.max_user_watches)."_s;
    QCOMPARE(lines.mid(0, 6), (QStringList{
        u"add %1: ok"_s.arg(files[0]),
        u"add %1: ok"_s.arg(files[1]),
        u"log: *** FWKQueue: cannot watch \"%1\": the limit of 2 inotify watches per user is reached "
        "(fs.inotify.max_user_watches)"_s.arg(files[2]),
        u"notification: FWKQueueWatchLimitReachedNotification path=%1 limit=2"_s.arg(files[2]),
        u"add %1: error %2: %3"_s.arg(files[2]).arg(ENOSPC).arg(limitText),
        u"watched: 2"_s,
    }));
    QVERIFY2(lines.contains(u"init: error %1: The limit of 0 inotify instances per user is reached "
                            "(fs.inotify.max_user_instances)."_s.arg(EMFILE)), qPrintable(output));
    QVERIFY2(lines.contains(u"watcher without a queue: token, error %1"_s.arg(EMFILE)), qPrintable(output));
}

void FWKQueueTest::centreGetsNotificationsWithoutADelegateOrWhenAlwaysNotifying()
{
    auto *center = VeltoNotificationCenter::defaultCenter();
    std::mutex mutex;
    QStringList posted; // on the watcher thread
    Recorder recorder;
    auto queue = makeQueue(nullptr);
    QVERIFY(queue);
    const auto token = center->addObserverForName(FWFileWatcherAttributeChangeNotification, queue.get(),
                                                  [&](const VeltoNotification &notification) {
                                                      std::lock_guard lock(mutex);
                                                      posted << notification.userInfo().value(FWFileWatcherPathKey).toString();
                                                  });
    const auto postedCount = [&] {
        std::lock_guard lock(mutex);
        return posted.size();
    };
    const auto takePosted = [&] {
        std::lock_guard lock(mutex);
        return std::exchange(posted, {});
    };
    QVERIFY(queue->addPathToQueue(watched, EveryKind));

    // No delegate: posted only.
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    QVERIFY(runEventLoopUntil([&] { return postedCount() > 0; }));
    QCOMPARE(takePosted(), QStringList{watched});

    // A delegate: it alone hears.
    queue->setDelegate(&recorder);
    QCOMPARE(queue->delegate(), &recorder);
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"644"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(recorder.kindsFor(watched), QStringList{u"attributes"_s});
    QCOMPARE(takePosted(), QStringList());

    // Always notifying: the delegate hears, then the centre gets it with the path.
    queue->setAlwaysNotify(true);
    recorder.heard.clear();
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    QVERIFY(settle(*queue, recorder));
    QCOMPARE(recorder.kindsFor(watched), QStringList{u"attributes"_s});
    QVERIFY(runEventLoopUntil([&] { return postedCount() == 2; })); // posted after each delegate call returned
    QCOMPARE(takePosted(), (QStringList{watched, sentinel}));
    center->removeObserver(token);
}

void FWKQueueTest::replacedDelegateHearsNothingMore()
{
    // The first delegate is replaced while its first change waits for the main thread: it hears nothing
    // from then on, not even that change.
    Recorder first, second;
    auto queue = makeQueue(&first);
    QVERIFY(queue && queue->addPathToQueue(watched, FWKQueue::NoteAttrib));
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    queue->setDelegate(&second);
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"644"_s}), QString());
    QVERIFY(settle(*queue, second));
    QVERIFY(first.heard.isEmpty());
    QVERIFY(!second.kindsFor(watched).isEmpty());

    // A delegate may replace itself from inside its own call.
    Recorder third;
    second.heard.clear();
    second.reaction = [&](const QString &, const QString &) { queue->setDelegate(&third); };
    QCOMPARE(runFileChanger({u"chmod"_s, watched, u"600"_s}), QString());
    QVERIFY(settle(*queue, third));
    QCOMPARE(second.heard.size(), 1);
}

void FWKQueueTest::delegateExceptionIsLoggedAndTheThreadGoesOn()
{
    // A delegate without the method: the unrecognised-selector exception is carried to the watcher
    // thread, logged, and the other kinds of that change are skipped.
    QObject mute;
    Recorder recorder;
    auto queue = FWKQueue::init();
    QVERIFY(queue);
    QTest::ignoreMessage(QtWarningMsg, "*** FWKQueue thread termination disabled!");
    queue->setDelegate(&mute);
    QVERIFY(queue->addPathToQueue(watched, EveryKind));
    const QRegularExpression logged(u"^Error in FWKQueue watcherThread: NSInvalidArgumentException: "
                                    "-\\[QObject watcher\\]: unrecognized selector sent to instance 0x[0-9a-f]+$"_s);
    QTest::ignoreMessage(QtInfoMsg, logged);
    MessageSpy messages;
    QCOMPARE(runFileChanger({u"append"_s, watched, u"x"_s}), QString());
    QVERIFY(runEventLoopUntil([&] { return messages.contains(logged); }));
    queue->setDelegate(&recorder);
    QVERIFY(settle(*queue, recorder)); // the thread still runs
}

void FWKQueueTest::description()
{
    auto queue = makeQueue(nullptr);
    QVERIFY(queue);
    QCOMPARE(queue->description(), u"FWKQueue { watchedPaths = (), alwaysNotify = NO }"_s);
    QVERIFY(queue->addPath(watched) && queue->addPath(sentinel));
    queue->setAlwaysNotify(true);
    QVERIFY(queue->alwaysNotify());
    QCOMPARE(queue->description(),
             u"FWKQueue { watchedPaths = (\"%1\", \"%2\"), alwaysNotify = YES }"_s.arg(watched, sentinel));
    QVERIFY(FWKQueue::sharedFileWatcher());
    QCOMPARE(FWKQueue::sharedFileWatcher(), FWKQueue::sharedFileWatcher());
    QVERIFY(queue->queueFD() >= 0);
}

void FWKQueueTest::thousandsOfWatchesSurviveAnOverflowingBurst()
{
    // 2,000 watched files get 100,000 appends, round robin (so that no two events in a row are alike and
    // none are merged by the kernel), while the main thread waits for the other process to finish: the
    // watcher thread is held up in its first delivery, the kernel's queue (fs.inotify.max_queued_events,
    // 16,384 by default; not changed here) overflows, and the overflow must be reported. Afterwards every
    // registration still works.
    constexpr int files = 2000, appends = 100000;
    const QString folder = path(u"many"_s);
    QVERIFY(QDir().mkpath(folder));
    Recorder recorder;
    auto queue = makeQueue(&recorder);
    QVERIFY(queue);
    for (int i = 0; i < files; ++i) {
        const QString file = folder + u'/' + QString::number(i);
        QFile create(file);
        QVERIFY(create.open(QIODevice::WriteOnly));
        QVERIFY(queue->addPathToQueue(file, FWKQueue::NoteWrite | FWKQueue::NoteAttrib));
    }
    std::atomic<int> overflows{0};
    const auto token = VeltoNotificationCenter::defaultCenter()->addObserverForName(
        FWKQueueEventsLostNotification, queue.get(), [&](const VeltoNotification &) { ++overflows; });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^\\*\\*\\* FWKQueue: the kernel's event queue overflowed "
                                                          "\\(fs.inotify.max_queued_events = [0-9]+\\); changes to "
                                                          "watched files were lost$"_s));
    QCOMPARE(runFileChanger({u"appendround"_s, QString::number(appends), folder, QString::number(files)}), QString());
    QVERIFY(runEventLoopUntil([&] { return overflows.load() >= 1; }, 120000));
    const qsizetype writesHeard = recorder.heard.size();
    qInfo("burst: %d appends over %d files; writes heard before the overflow report: %lld", appends, files,
          qlonglong(writesHeard));
    QVERIFY(writesHeard < appends);

    QCOMPARE(queue->watchedPaths().size(), files);
    recorder.heard.clear();
    QCOMPARE(runFileChanger({u"chmodall"_s, folder, QString::number(files)}), QString());
    QVERIFY(runEventLoopUntil([&] { return recorder.heard.filter(u"attributes "_s).size() == files; }, 120000));
    VeltoNotificationCenter::defaultCenter()->removeObserver(token);
}

void FWKQueueTest::destroyingWhileEventsArrive()
{
    // Another process appends without pause while queues are made and destroyed: from the main thread
    // between deliveries, from inside a delegate call (the watcher thread waits for that very call), and
    // with notifications posted on the watcher thread. Meant for the sanitizers.
    QProcess spammer;
    spammer.start(QStringLiteral(VELTO_FILE_CHANGER), {u"spam"_s, watched, u"1000000000"_s});
    QVERIFY(spammer.waitForStarted());
    const auto stop = qScopeGuard([&] {
        spammer.kill();
        spammer.waitForFinished();
    });
    for (int round = 0; round < 30; ++round) {
        Recorder recorder;
        auto queue = makeQueue(round % 3 == 2 ? nullptr : &recorder);
        QVERIFY(queue && queue->addPathToQueue(watched, FWKQueue::NoteWrite | FWKQueue::NoteExtend));
        if (round % 3 == 1)
            recorder.reaction = [&](const QString &, const QString &) { queue.reset(); };
        if (round % 3 == 2) {
            std::atomic<int> posted{0};
            const auto token = VeltoNotificationCenter::defaultCenter()->addObserverForName(
                FWFileWatcherWriteNotification, queue.get(), [&](const VeltoNotification &) { ++posted; });
            QVERIFY(runEventLoopUntil([&] { return posted.load() > 0; }));
            queue.reset();
            VeltoNotificationCenter::defaultCenter()->removeObserver(token);
        } else {
            QVERIFY(runEventLoopUntil([&] { return !recorder.heard.isEmpty(); }));
            queue.reset();
        }
        const qsizetype heard = recorder.heard.size();
        QCoreApplication::processEvents(); // calls queued before the end must not reach the recorder
        QCOMPARE(recorder.heard.size(), heard);
    }
    QCOMPARE(spammer.state(), QProcess::Running);
}

QTEST_GUILESS_MAIN(FWKQueueTest)
#include "fwkqueuetest.moc"

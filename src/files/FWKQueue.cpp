// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "FWKQueue.h"

#include "FWFileWatcher.h"
#include "FWMainThreadProxy.h"
#include "Object+FWMainThreadProxy.h"
#include "VTInotifyWatchTable_p.h"
#include "VeltoCoreLogging_p.h"
#include "VeltoException.h"
#include "VeltoLogSink.h"
#include "VeltoNotificationCenter.h"

#include <QFile>

#include <array>
#include <atomic>
#include <cerrno>
#include <mutex>
#include <system_error>
#include <thread>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The notification of each kind of change, in the order they are posted; made once, so that a delivery
// copies the names instead of converting them.
const std::array<std::pair<quint32, QString>, 7> &notificationOrder()
{
    static const std::array<std::pair<quint32, QString>, 7> order{{
        {FWKQueue::NoteRename, FWFileWatcherRenameNotification},
        {FWKQueue::NoteWrite, FWFileWatcherWriteNotification},
        {FWKQueue::NoteDelete, FWFileWatcherDeleteNotification},
        {FWKQueue::NoteAttrib, FWFileWatcherAttributeChangeNotification},
        {FWKQueue::NoteExtend, FWFileWatcherSizeIncreaseNotification},
        {FWKQueue::NoteLink, FWFileWatcherLinkCountChangeNotification},
        {FWKQueue::NoteRevoke, FWFileWatcherAccessRevocationNotification},
    }};
    return order;
}

qint64 readLimit(const char *file)
{
    QFile limit(QString::fromLatin1(file));
    bool ok = false;
    const qint64 value = limit.open(QIODevice::ReadOnly) ? limit.readAll().trimmed().toLongLong(&ok) : 0;
    return ok ? value : -1;
}

// The watch limit that applies: the system's, or a lower one set for this user namespace.
qint64 watchLimit()
{
    const qint64 system = readLimit("/proc/sys/fs/inotify/max_user_watches");
    const qint64 userNamespace = readLimit("/proc/sys/user/max_inotify_watches");
    return system < 0 ? userNamespace : userNamespace < 0 ? system : std::min(system, userNamespace);
}

} // namespace

class FWKQueue::Private
{
public:
    Private(int inotify, int wake) : inotify(inotify), wake(wake), table(inotify) {}

    void watch(FWKQueue *queue);
    void deliver(FWKQueue *queue, const std::vector<VTInotifyWatchTable::Change> &changes);
    void reportOverflow(FWKQueue *queue);

    const int inotify;
    const int wake; // an eventfd: written to stop the thread without waiting for the next event
    std::thread thread;

    mutable std::mutex mutex; // guards what follows
    VTInotifyWatchTable table;
    QObject *delegate = nullptr;
    std::shared_ptr<FWMainThreadProxy> proxy;
    bool alwaysNotify = false;
    bool keepRunning = true;
};

void FWKQueue::Private::watch(FWKQueue *queue)
{
    // Room for several hundred events per read; consecutive events of one file read together become one change.
    alignas(inotify_event) char buffer[64 * 1024];
    std::vector<VTInotifyWatchTable::Change> changes;
    std::array<pollfd, 2> descriptors{{{inotify, POLLIN, 0}, {wake, POLLIN, 0}}};
    for (;;) {
        if (::poll(descriptors.data(), descriptors.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            qCCritical(lcVeltoFiles, "FWKQueue: poll failed (%d); the watcher thread stops", errno);
            return;
        }
        if (descriptors[1].revents)
            return; // only written when stopping
        const ssize_t length = ::read(inotify, buffer, sizeof buffer);
        if (length <= 0) {
            if (length < 0 && errno != EINTR && errno != EAGAIN) {
                qCCritical(lcVeltoFiles, "FWKQueue: reading events failed (%d); the watcher thread stops", errno);
                return;
            }
            continue;
        }
        {
            std::lock_guard lock(mutex);
            table.translate(buffer, size_t(length), changes);
        }
        deliver(queue, changes);
        changes.clear();
    }
}

void FWKQueue::Private::deliver(FWKQueue *queue, const std::vector<VTInotifyWatchTable::Change> &changes)
{
    for (const VTInotifyWatchTable::Change &change : changes) {
        {
            std::lock_guard lock(mutex);
            if (!keepRunning)
                return;
            if (change.registration && !table.contains(change.registration))
                continue; // removed since it was read
        }
        if (!change.registration) {
            reportOverflow(queue);
            continue;
        }
        try {
            for (const auto &[flag, name] : notificationOrder()) {
                if (change.flags & flag)
                    queue->postNotification(name, change.path);
            }
        } catch (const VeltoException &exception) {
            VeltoLogSink::write(u"Error in FWKQueue watcherThread: %1"_s.arg(exception.description()));
        } catch (const std::exception &exception) {
            VeltoLogSink::write(u"Error in FWKQueue watcherThread: %1"_s.arg(QString::fromUtf8(exception.what())));
        }
    }
}

void FWKQueue::Private::reportOverflow(FWKQueue *queue)
{
    const qint64 limit = readLimit("/proc/sys/fs/inotify/max_queued_events");
    VeltoLogSink::warn(u"FWKQueue: the kernel's event queue overflowed (fs.inotify.max_queued_events = %1); "
                       "changes to watched files were lost"_s.arg(limit));
    VeltoNotificationCenter::defaultCenter()->postNotificationName(FWKQueueEventsLostNotification, queue,
                                                                   {{FWFileWatcherLimitKey, limit}});
}

FWKQueue *FWKQueue::sharedFileWatcher()
{
    static FWKQueue *const shared = init().release(); // never destroyed: its thread may be delivering at exit
    return shared;
}

std::unique_ptr<FWKQueue> FWKQueue::init(VeltoError *error)
{
    const int inotify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (inotify < 0) {
        const int reason = errno;
        const QString text = reason == EMFILE
            ? u"The limit of %1 inotify instances per user is reached (fs.inotify.max_user_instances)."_s
                  .arg(readLimit("/proc/sys/user/max_inotify_instances"))
            : QString();
        qCWarning(lcVeltoFiles, "FWKQueue::init: the kernel refused an inotify instance (%d)", reason);
        if (error)
            *error = VeltoError::posixError(reason, text);
        return nullptr;
    }
    const int wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wake < 0) {
        if (error)
            *error = VeltoError::posixError(errno);
        ::close(inotify);
        return nullptr;
    }
    // Once, here, rather than by the first delivery on the watcher thread.
    qRegisterMetaType<FWKQueue *>();
    (void)notificationOrder();
    std::unique_ptr<FWKQueue> queue(new FWKQueue(inotify, wake));
    try {
        queue->d->thread = std::thread([queue = queue.get()] { queue->d->watch(queue); });
    } catch (const std::system_error &failure) {
        if (error)
            *error = VeltoError::posixError(failure.code().value());
        std::lock_guard lock(queue->d->mutex);
        queue->d->keepRunning = false; // nothing to stop
        return nullptr;
    }
    pthread_setname_np(queue->d->thread.native_handle(), "FWKQueue");
    return queue;
}

FWKQueue::FWKQueue(int inotifyDescriptor, int wakeDescriptor)
    : d(std::make_unique<Private>(inotifyDescriptor, wakeDescriptor))
{
}

FWKQueue::~FWKQueue()
{
    std::shared_ptr<FWMainThreadProxy> proxy;
    bool wasRunning = false;
    {
        std::lock_guard lock(d->mutex);
        wasRunning = std::exchange(d->keepRunning, false);
        d->delegate = nullptr;
        proxy = std::move(d->proxy);
    }
    if (wasRunning)
        VeltoLogSink::warn(u"FWKQueue thread termination disabled!"_s);
    if (proxy)
        proxy->invalidate(); // releases the thread if it waits for the main thread, which may be this one
    if (d->thread.joinable()) {
        const quint64 one = 1;
        (void)!::write(d->wake, &one, sizeof one);
        d->thread.join();
    }
    const QList<int> errors = d->table.removeAll();
    for (int error : errors)
        VeltoLogSink::write(u"dealloc: Couldn't close file descriptor (%1)"_s.arg(error));
    if (::close(d->inotify) != 0)
        VeltoLogSink::write(u"release: Couldn't close main kqueue (%1)"_s.arg(errno));
    ::close(d->wake);
}

int FWKQueue::queueFD() const
{
    return d->inotify;
}

bool FWKQueue::addPathToQueue(const QString &path, quint32 fflags, WatchOptions options, VeltoError *error)
{
    int reason = 0;
    {
        std::lock_guard lock(d->mutex);
        if (d->table.add(path, fflags, options.testFlag(WatchOption::FollowAtomicSaves), &reason))
            return true;
    }
    QString text;
    if (reason == ENOSPC) {
        const qint64 limit = watchLimit();
        text = u"The limit of %1 inotify watches per user is reached (fs.inotify.max_user_watches)."_s.arg(limit);
        VeltoLogSink::warn(u"FWKQueue: cannot watch \"%1\": the limit of %2 inotify watches per user is reached "
                           "(fs.inotify.max_user_watches)"_s.arg(path).arg(limit));
        VeltoNotificationCenter::defaultCenter()->postNotificationName(
            FWKQueueWatchLimitReachedNotification, this, {{FWFileWatcherPathKey, path}, {FWFileWatcherLimitKey, limit}});
    }
    qCDebug(lcVeltoFiles, "FWKQueue::addPathToQueue: cannot watch \"%s\" (%d)", qUtf8Printable(path), reason);
    if (error)
        *error = VeltoError::posixError(reason, text);
    return false;
}

bool FWKQueue::addPath(const QString &path, VeltoError *error)
{
    return addPathToQueue(path, DefaultMask, {}, error);
}

void FWKQueue::removePathFromQueue(const QString &path)
{
    int closeError = 0;
    {
        std::lock_guard lock(d->mutex);
        if (!d->table.removeFirst(path, &closeError))
            return;
    }
    if (closeError)
        VeltoLogSink::write(u"removePathFromQueue: Couldn't close file descriptor (%1)"_s.arg(closeError));
}

void FWKQueue::removePath(const QString &path)
{
    removePathFromQueue(path);
}

void FWKQueue::removeAllPathsFromQueue()
{
    std::lock_guard lock(d->mutex);
    (void)d->table.removeAll();
}

QStringList FWKQueue::watchedPaths() const
{
    std::lock_guard lock(d->mutex);
    return d->table.paths();
}

QObject *FWKQueue::delegate() const
{
    std::lock_guard lock(d->mutex);
    return d->delegate;
}

void FWKQueue::setDelegate(QObject *delegate)
{
    std::shared_ptr<FWMainThreadProxy> previous;
    {
        std::lock_guard lock(d->mutex);
        d->delegate = delegate;
        previous = std::exchange(d->proxy, delegate ? velto::mainThreadProxy(delegate) : nullptr);
    }
    if (previous)
        previous->invalidate();
}

bool FWKQueue::alwaysNotify() const
{
    std::lock_guard lock(d->mutex);
    return d->alwaysNotify;
}

void FWKQueue::setAlwaysNotify(bool alwaysNotify)
{
    std::lock_guard lock(d->mutex);
    d->alwaysNotify = alwaysNotify;
}

void FWKQueue::postNotification(const QString &name, const QString &path)
{
    std::shared_ptr<FWMainThreadProxy> proxy;
    bool delegateOnly = false;
    {
        std::lock_guard lock(d->mutex);
        if (!d->keepRunning)
            return;
        proxy = d->proxy;
        delegateOnly = d->delegate && !d->alwaysNotify;
    }
    if (proxy)
        proxy->performSelector("watcher", QVariant::fromValue(this), name, path);
    if (delegateOnly)
        return;
    VeltoNotificationCenter::defaultCenter()->postNotificationName(name, this, {{FWFileWatcherPathKey, path}});
}

QString FWKQueue::description() const
{
    QStringList quoted = watchedPaths();
    for (QString &path : quoted)
        path = u'"' + path + u'"';
    return u"%1 { watchedPaths = (%2), alwaysNotify = %3 }"_s.arg(QLatin1StringView(metaObject()->className()),
                                                                 quoted.join(u", "_s),
                                                                 alwaysNotify() ? u"YES"_s : u"NO"_s);
}

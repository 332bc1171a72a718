// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file FWKQueue.h
 * \brief FWKQueue: watches files for changes made by any process, with one kernel event queue (inotify)
 * and one background thread that waits on it, and reports each change by name.
 *
 * Each change becomes one notification per kind (FWFileWatcher.h), in the fixed order rename, write,
 * delete, attribute change, size increase, link-count change, access revocation. With a delegate, the
 * watcher thread calls the delegate's `watcher(FWKQueue *queue, const QString &notification, const QString
 * &path)` on the main thread and waits for it to return, so delegate code never runs concurrently with
 * itself and hears changes in order. Without a delegate, or with alwaysNotify(), the notification is
 * also posted to VeltoNotificationCenter::defaultCenter() on the watcher thread, with the queue as sender
 * and the path under "path".
 *
 * What is watched is given in the kernel's vnode flags (NoteDelete ... NoteRevoke), translated to inotify
 * masks; docs/platform-mapping.md tells how each kind is recognised and what inotify cannot tell. Each
 * add is its own registration: the same path added twice is reported twice. Paths are watched as they
 * are when added: a renamed file is still reported under the path it was added with.
 *
 * Lost changes are never silent: an overflow of the kernel's queue and a reached watch limit are logged
 * and posted (FWKQueueEventsLostNotification, FWKQueueWatchLimitReachedNotification).
 *
 * Threads: adding, removing and the properties may be used from any thread. Destroy a queue on the main
 * thread (or any thread but its own watcher thread); destruction wakes the watcher thread, which never
 * waits for the next event, and does not wait for a delegate call that has not started.
 *
 * \code
 * auto queue = FWKQueue::init();
 * queue->setDelegate(this); // Q_INVOKABLE void watcher(FWKQueue *, const QString &name, const QString &path);
 * if (!queue->addPathToQueue(path, FWKQueue::NoteWrite | FWKQueue::NoteDelete, {}, &error))
 *     report(error);
 * \endcode
 */

#include "veltocore_export.h"

#include "VeltoError.h"

#include <QFlags>
#include <QObject>
#include <QStringList>

#include <memory>

class VELTOCORE_EXPORT FWKQueue : public QObject
{
    Q_OBJECT

public:
    /// The kinds of change, as the kernel's vnode filter flags.
    static constexpr quint32 NoteDelete = 0x1;
    static constexpr quint32 NoteWrite = 0x2;
    static constexpr quint32 NoteExtend = 0x4;
    static constexpr quint32 NoteAttrib = 0x8;
    static constexpr quint32 NoteLink = 0x10;
    static constexpr quint32 NoteRename = 0x20;
    static constexpr quint32 NoteRevoke = 0x40;
    /// What addPath() watches: delete, write, attribute change and rename (43).
    static constexpr quint32 DefaultMask = NoteDelete | NoteWrite | NoteAttrib | NoteRename;

    enum class WatchOption {
        /**
         * Follow the path across atomic saves: when another file is renamed onto the watched name, the
         * registration moves to that file and reports a write (the file it watched before is left alone).
         */
        FollowAtomicSaves = 0x1,
    };
    Q_DECLARE_FLAGS(WatchOptions, WatchOption)

    /// sharedFileWatcher: a process-wide queue, made on first use and never destroyed; null when the kernel
    /// refuses an inotify instance.
    [[nodiscard]] static FWKQueue *sharedFileWatcher();
    /// init: a new queue with its thread running; null (and \a error filled) when the kernel refuses an
    /// inotify instance (fs.inotify.max_user_instances reached) or a thread.
    [[nodiscard]] static std::unique_ptr<FWKQueue> init(VeltoError *error = nullptr);
    /**
     * Stops the watcher thread (logging "*** FWKQueue thread termination disabled!"), forgets the delegate
     * and ends every watch.
     */
    ~FWKQueue() override;

    /// queueFD: the inotify descriptor.
    [[nodiscard]] int queueFD() const;

    /**
     * addPathToQueue: watches \a path for the changes in \a fflags (vnode flags; bits above NoteRevoke are
     * ignored). The same path may be added again: each add is a registration of its own.
     * \return false, with \a error filled, when the path cannot be watched: no file, no permission, or the
     * watch limit reached (which is also logged and posted as FWKQueueWatchLimitReachedNotification).
     */
    [[nodiscard]] bool addPathToQueue(const QString &path, quint32 fflags = DefaultMask, WatchOptions options = {},
                                      VeltoError *error = nullptr);
    /// addPath: addPathToQueue() with DefaultMask.
    [[nodiscard]] bool addPath(const QString &path, VeltoError *error = nullptr);

    /// removePathFromQueue: ends the first registration of \a path; nothing when it is not watched. Once it
    /// returns, no notification for that registration starts.
    void removePathFromQueue(const QString &path);
    /// removePath: removePathFromQueue().
    void removePath(const QString &path);
    /// removeAllPathsFromQueue: ends every registration.
    void removeAllPathsFromQueue();
    /// watchedPaths: the path of each registration, in the order added.
    [[nodiscard]] QStringList watchedPaths() const;

    /// delegate: the object told of changes on the main thread; not owned.
    [[nodiscard]] QObject *delegate() const;
    /**
     * setDelegate: replaces the delegate (null for none). Once it returns, the previous delegate hears
     * nothing more, even of a change already on its way to it.
     */
    void setDelegate(QObject *delegate);
    /// alwaysNotify: whether notifications are posted to the default centre even with a delegate (default false).
    [[nodiscard]] bool alwaysNotify() const;
    void setAlwaysNotify(bool alwaysNotify);

    /// postNotification: delivers one notification \a name about \a path as described above (the watcher
    /// thread calls it for each kind of change).
    void postNotification(const QString &name, const QString &path);

    /// description: "FWKQueue { watchedPaths = ("/a", "/b"), alwaysNotify = NO }".
    [[nodiscard]] QString description() const;

private:
    FWKQueue(int inotifyDescriptor, int wakeDescriptor);

    class Private;
    std::unique_ptr<Private> const d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(FWKQueue::WatchOptions)

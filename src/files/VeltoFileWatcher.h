// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFileWatcher.h
 * \brief VeltoFileWatcher: the simple way to be told, on the main thread, when a file changes.
 *
 * Each watch gets a token and a delegate; the delegate's `fileWatcher(VeltoFileWatcher *watcher, quint32
 * action, const QString &path)` is called on the main thread with one action bit per kind of change
 * (VeltoFileWatcherAction), in the order rename, write, delete, attribute change, size increase,
 * link-count change, access revocation. When a path is watched more than once, only the delegate of the
 * most recently added token of that path hears of its changes, once per registration.
 *
 * Delegates are not owned: remove a delegate's tokens before it is destroyed. The watcher runs on one
 * private FWKQueue and is used from the main thread. Lost changes (an overflowing kernel queue, a watch
 * limit) are logged and posted to VeltoNotificationCenter::defaultCenter() (FWFileWatcher.h).
 *
 * \code
 * m_token = VeltoFileWatcher::instance()->addFileAtPath(path, VeltoFileWatcherActionWrite
 *                                                      | VeltoFileWatcherActionDelete, this);
 * // slot: void fileWatcher(VeltoFileWatcher *watcher, quint32 action, const QString &path);
 * VeltoFileWatcher::instance()->removeFileWithToken(m_token);
 * \endcode
 */

#include "veltocore_export.h"

#include "VeltoError.h"

#include <QFlags>
#include <QObject>

#include <memory>

class FWKQueue;
class VTWatchedFileInfo;

/// The kinds of change a watch can ask for; other bits are ignored.
enum VeltoFileWatcherAction : quint32 {
    VeltoFileWatcherActionRename = 1,
    VeltoFileWatcherActionWrite = 2,
    VeltoFileWatcherActionDelete = 4,
    VeltoFileWatcherActionAttributeChange = 8,
    VeltoFileWatcherActionSizeIncrease = 16,
    VeltoFileWatcherActionLinkCountChange = 32,
    VeltoFileWatcherActionAccessRevocation = 64,
};

class VELTOCORE_EXPORT VeltoFileWatcher : public QObject
{
    Q_OBJECT

public:
    enum class Option {
        /// Keep watching the path across atomic saves (FWKQueue::WatchOption::FollowAtomicSaves).
        FollowAtomicSaves = 0x1,
    };
    Q_DECLARE_FLAGS(Options, Option)

    /// instance: the process-wide watcher, made on first use (on the main thread) and never destroyed.
    [[nodiscard]] static VeltoFileWatcher *instance();

    /// A watcher of one's own, with its own queue (or none when the kernel refuses one: then it does nothing).
    VeltoFileWatcher();
    ~VeltoFileWatcher() override;

    /**
     * addFileAtPath: watches \a path for the kinds of change in \a actions, told to \a delegate (not owned).
     * \return the watch's token; null when no file exists at \a path (\a error: ENOENT). When the file
     * exists but cannot be watched (the kernel refused this watcher a queue, or refuses the watch: the
     * watch limit, permissions), the token is still returned and hears nothing; \a error says why and a
     * warning is logged.
     */
    [[nodiscard]] std::shared_ptr<VTWatchedFileInfo> addFileAtPath(const QString &path, quint32 actions,
                                                                   QObject *delegate, Options options = {},
                                                                   VeltoError *error = nullptr);
    /**
     * removeFileWithToken: ends the watch of \a token; nothing for null or an unknown token. The queue
     * stops watching the first registration of the token's path, which for a path watched more than once
     * need not be the one made for this token.
     */
    void removeFileWithToken(const std::shared_ptr<VTWatchedFileInfo> &token);

    /// description: "VeltoFileWatcher<0x…> ("/a", "/b")", the watched paths in the order added.
    [[nodiscard]] QString description() const;

    /// watcher: the queue's delegate message, on the main thread; tells the delegate of the most recently
    /// added token of \a path. Unknown notification names are ignored.
    Q_INVOKABLE void watcher(FWKQueue *queue, const QString &notification, const QString &path);

private:
    class Private;
    std::unique_ptr<Private> const d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoFileWatcher::Options)

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file FWFileWatcher.h
 * \brief The names of the file watcher's notifications and the key of their path.
 *
 * FWKQueue turns each change of a watched file into one notification per kind of change, in this fixed
 * order: rename, write, delete, attribute change, size increase, link-count change, access revocation.
 * It sends each to its delegate on the main thread (`watcher(queue, name, path)`) and/or posts it to
 * VeltoNotificationCenter::defaultCenter() with the queue as sender and the path under
 * FWFileWatcherPathKey. Each constant's text is its value, so a listener can compare against the text.
 *
 * Two more notifications say that the watcher could not do its job, so that a lost change is never
 * silent; they are always posted to the default centre (from the thread that met the problem) and
 * logged, whatever the delegate.
 */

#include <QLatin1StringView>

/// The file was renamed or moved (the watch stays with the file).
inline constexpr QLatin1StringView FWFileWatcherRenameNotification{"FWKQueueFileRenamedNotification"};
/// The file's contents (or a folder's entries) changed.
inline constexpr QLatin1StringView FWFileWatcherWriteNotification{"FWKQueueFileWrittenToNotification"};
/// The file's last link is gone.
inline constexpr QLatin1StringView FWFileWatcherDeleteNotification{"FWKQueueFileDeletedNotification"};
/// Permissions, owner, times or extended attributes changed.
inline constexpr QLatin1StringView FWFileWatcherAttributeChangeNotification{"FWKQueueFileAttributesChangedNotification"};
/// The file grew.
inline constexpr QLatin1StringView FWFileWatcherSizeIncreaseNotification{"FWKQueueFileSizeIncreasedNotification"};
/// A hard link to the file was made or removed.
inline constexpr QLatin1StringView FWFileWatcherLinkCountChangeNotification{"FWKQueueFileLinkCountChangedNotification"};
/// The file can no longer be watched: its file system was unmounted, or the kernel dropped the watch.
inline constexpr QLatin1StringView FWFileWatcherAccessRevocationNotification{"FWKQueueFileAccessRevocationNotification"};

/// The key of the watched path in a notification's user info.
inline constexpr QLatin1StringView FWFileWatcherPathKey{"path"};

/**
 * The kernel's event queue overflowed and changes were lost; user info: FWFileWatcherLimitKey with the
 * queue length (fs.inotify.max_queued_events). Watches stay in place; re-read what matters.
 */
inline constexpr QLatin1StringView FWKQueueEventsLostNotification{"FWKQueueEventsLostNotification"};
/**
 * A path could not be watched because the per-user limit of watches is reached; user info: the path and
 * FWFileWatcherLimitKey with the limit (fs.inotify.max_user_watches, or a lower one of the user namespace).
 */
inline constexpr QLatin1StringView FWKQueueWatchLimitReachedNotification{"FWKQueueWatchLimitReachedNotification"};
/// The key of the kernel limit in the two notifications above.
inline constexpr QLatin1StringView FWFileWatcherLimitKey{"limit"};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file FileManager+VeltoCoreArchives.h
 * \brief Making and unpacking archives in-process (libarchive): the archives made are gzip-compressed
 * cpio archives; zip archives and cpio archives (plain or gzip-compressed) are unpacked, safely.
 *
 * \code
 * VeltoError error;
 * const QUrl archive = velto::archiveFilePaths({report, images}, QUrl::fromLocalFile(u"/tmp/send.cpio"_s), &error);
 * if (!velto::unarchiveFileAtURL(archive, QUrl::fromLocalFile(u"/tmp/received"_s), {}, &error))
 *     qWarning() << error.descriptionForUserVelto();   // names the entry that failed and why
 * \endcode
 *
 * Unpacking is safe by default. An entry is refused when its name is absolute or has a ".." component,
 * when writing it would go through a symbolic link, when it is a hard link to a name that breaks those
 * rules, or when it is a symbolic link whose target is absolute, climbs above the target folder with
 * leading ".." steps, or holds ".." anywhere after its start. Device files, pipes and sockets are skipped;
 * set-user-id, set-group-id and sticky bits are dropped, the umask applies, and folders stay open to
 * their owner. A name that is not UTF-8 (a zip made on a system with another character set) is unpacked
 * with each invalid byte sequence shown as U+FFFD, so that every name can be shown and removed again.
 * The total size of the files and the number of entries are capped (VeltoUnarchiveOptions).
 * Entries are unpacked into a hidden folder inside the target folder and moved into place only when all
 * of them succeeded, and an item already in the target folder is never replaced or merged into: a failed
 * unpack leaves the target folder as it was and says which entry failed and why.
 *
 * Everything here blocks until done and may be called from any thread.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QStringList>
#include <QUrl>

#include <functional>

/// Progress of a long archive operation: bytes done so far and the total expected (0 when not known).
using VeltoArchiveProgress = std::function<void(quint64 done, quint64 total)>;

/// What an unpack may do: caps against archive bombs, and a progress callback.
struct VeltoUnarchiveOptions
{
    /// The default cap on the bytes of all files together: 512 MiB.
    static constexpr quint64 DefaultMaximumTotalSize = quint64(512) << 20;
    /// The default cap on the number of entries (files, folders, links): 100,000.
    static constexpr quint64 DefaultMaximumEntryCount = 100000;

    /// Bytes the archive's files may hold together; an entry that would pass it fails before it is written.
    quint64 maximumTotalSize = DefaultMaximumTotalSize;
    /// Entries the archive may hold; the first one past the cap fails.
    quint64 maximumEntryCount = DefaultMaximumEntryCount;
    /// Called as the archive is read, with the bytes of the archive read so far and its size.
    VeltoArchiveProgress progress;
};

/// User-info key of the name of the entry an unpacking error is about, as the archive gives it.
inline constexpr QLatin1StringView VeltoArchiveEntryErrorKey{"VeltoArchiveEntry"};

namespace velto {

/**
 * archiveFilePaths: writes the items at \a paths (files or folders) into a gzip-compressed cpio archive
 * at the path of \a archiveURL, whose extension is replaced by "cpio" unless it is "zip" or "cpio" (the
 * archive is gzip-compressed cpio even when named "zip"). One item: a file is stored under its name, a
 * folder as its contents. Several items: each is stored under its own name, made unique with " (2)"
 * and so on, through a staging folder of hard links (copies where a link cannot be made) next to the
 * archive, removed afterwards. Symbolic links below the items are stored as links; other file systems
 * mounted below a folder are left out; hard links inside a tree are stored as separate files. The
 * archive is written to a temporary file and renamed into place, so a failure leaves no partial archive.
 * \a progress (when given) hears the bytes of file data written so far (total 0: not known).
 *
 * \return the file URL of the archive; an empty URL on failure, with \a error: NSCocoaErrorDomain 4
 * "no files given to zip" for no paths; the staging folder's creation error; otherwise
 * NSCocoaErrorDomain 4 "ditto archive was not created (task status: 1)" with the cause (an unreadable
 * item, a full disk, a file too large for cpio: 8 GiB) under VeltoUnderlyingErrorKey.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl archiveFilePaths(const QStringList &paths, const QUrl &archiveURL,
                                                     VeltoError *error = nullptr,
                                                     const VeltoArchiveProgress &progress = {});

/**
 * archiveToTempFileForFileAtPath: archiveFilePaths() of the one item at \a path into a new file of the
 * temporary folder (VeltoFileManager::tempFilePathWithFileName()) named after the item with the extension
 * "cpio". An empty URL on any failure.
 */
[[nodiscard]] VELTOCORE_EXPORT QUrl archiveToTempFileForFileAtPath(const QString &path);

/**
 * unarchiveFileAtURL: unpacks the zip or cpio archive (plain or gzip-compressed) at \a archiveURL into the
 * folder at \a folderURL with the default options. \return true when every entry was unpacked.
 */
[[nodiscard]] VELTOCORE_EXPORT bool unarchiveFileAtURL(const QUrl &archiveURL, const QUrl &folderURL);

/**
 * unarchiveFileAtURL: unpacks the archive at \a archiveURL into the folder at \a folderURL (made, with
 * the folders above it, when missing; removed again if the unpack fails) under \a options' caps, safely
 * (see the top of this file). On failure nothing in or outside the folder has changed, and \a error says
 * why, naming the entry (its number and its name, also under VeltoArchiveEntryErrorKey):
 * - the archive cannot be opened: NSCocoaErrorDomain 260 (no such file), 257 (no permission) or 256;
 * - it is not a zip or cpio archive, is damaged or truncated, or an entry is refused as unsafe: 259;
 * - a cap is passed: 263;
 * - an item of that name is already in the folder: 516;
 * - the folder cannot be written: 513, 640 (disk full), 642 (read-only) or 512;
 * - a URL that is not a file URL: 262 (archive) or 518 (folder).
 */
[[nodiscard]] VELTOCORE_EXPORT bool unarchiveFileAtURL(const QUrl &archiveURL, const QUrl &folderURL,
                                                       const VeltoUnarchiveOptions &options, VeltoError *error = nullptr);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFileManager.h
 * \brief VeltoFileManager: where files live and whether the process may touch them, extended
 * attributes, and collision-free names for new and temporary files.
 *
 * The folders of a sandboxed application on Linux: the real home folder comes from the password
 * database, whatever HOME says (a Snap points HOME into its own folder); the application's container is
 * Flatpak's per-application folder, "~/.var/app/<identifier>", whose "data" folder holds the
 * application's own files (XDG_DATA_HOME inside the sandbox).
 *
 * Extended attributes live in Linux's "user." namespace: a name given without a namespace
 * ("com.velto.aliasSecurityScopedData") is read and written as "user.com.velto.aliasSecurityScopedData";
 * a name that starts with a namespace ("user.", "trusted.", "security.", "system.") is used as it is.
 * Symbolic links are never followed, so a link's own attributes are meant (Linux keeps no "user."
 * attributes on links: reading finds none, writing fails with EPERM).
 *
 * \code
 * VeltoError error;
 * if (!VeltoFileManager::writeExtendedAttribute(u"com.velto.note"_s, "draft", url, &error))
 *     qWarning() << error.descriptionForUserVelto();   // "Could not set attribute for file: ~/a.txt"
 * const QString name = VeltoFileManager::uniqueFileNameInFolder(u"report.txt"_s, folder);   // "report (2).txt"
 * \endcode
 *
 * Every member is static and may be called from any thread; the three folders kept for the life of the
 * process (real home, the application's container, the once-only creation log line) are made under
 * once-only guards. Paths are local file paths; a URL that is not a file URL names no file.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

/// VeltoFileManager: sandbox-aware file-system helpers.
class VELTOCORE_EXPORT VeltoFileManager
{
public:
    VeltoFileManager() = delete;

    /// The attribute that marks a file as downloaded (its origin), removed by removeQuarantineFromItemAtURL().
    static constexpr QLatin1StringView QuarantineAttributeName{"xdg.origin.url"};
    /// The one entry a folder may hold and still count as empty (a desktop's folder-view settings).
    static constexpr QLatin1StringView FolderSettingsFileName{".DS_Store"};

    /** \name Folders */
    ///@{
    /**
     * userHomeFolderURL: the folder URL (ending in "/") of the real user's home folder, as the password
     * database records it for the real user id; QDir::homePath() when it has no record. Kept for the
     * life of the process.
     */
    [[nodiscard]] static QUrl userHomeFolderURL();
    /// userLibraryFolderURL: the real home folder plus ".var", where Flatpak keeps applications' own files.
    [[nodiscard]] static QUrl userLibraryFolderURL();
    /// sandboxContainersFolderURL: userLibraryFolderURL() plus "app", the folder of all containers.
    [[nodiscard]] static QUrl sandboxContainersFolderURL();
    /**
     * applicationSandboxFolderURL: sandboxContainersFolderURL() plus the application's identifier
     * (VeltoApplication::infoDictionary(), VeltoInfoBundleIdentifierKey), made on the first call and kept;
     * an empty URL when the application has no identifier then.
     */
    [[nodiscard]] static QUrl applicationSandboxFolderURL();
    /// isFileInsideSandboxAtURL: whether \a url lies in the tree of applicationSandboxFolderURL(); false without one.
    [[nodiscard]] static bool isFileInsideSandboxAtURL(const QUrl &url);
    /// isItemInsideDocumentRevisionsFolderAtURL: whether the path of \a url contains "/.DocumentRevisions".
    [[nodiscard]] static bool isItemInsideDocumentRevisionsFolderAtURL(const QUrl &url);
    /// applicationSupportProductFolderURL: applicationSupportProductFolderURLWithCreate(true), errors dropped.
    [[nodiscard]] static QUrl applicationSupportProductFolderURL();
    /**
     * applicationSupportProductFolderURLWithCreate: the folder URL of the user's data folder
     * (XDG_DATA_HOME, "~/.local/share" by default) plus the application's name (VeltoInfoBundleNameKey).
     * With \a create a missing folder is made with the folders above it; when that fails,
     * "* could not create App Support folder: <error>" is logged (once per process), \a error is filled
     * in, and the URL is still returned. Empty only when there is no data folder at all.
     */
    [[nodiscard]] static QUrl applicationSupportProductFolderURLWithCreate(bool create, VeltoError *error = nullptr);
    /**
     * applicationSupportSubfolderURLWithName: the product folder plus \a name; with \a create a missing
     * folder is made with the folders above it, and an empty URL (with \a error) comes back when that fails.
     */
    [[nodiscard]] static QUrl applicationSupportSubfolderURLWithName(const QString &name, bool create,
                                                                    VeltoError *error = nullptr);
    /**
     * createDirectoryAtURL: makes the folder of \a url with the folders above it; true when it exists
     * afterwards (also when it existed before). False with the POSIX error (NSFilePath the path) when it
     * cannot be made, and with the general domain's 518 for a URL that is not a file URL.
     */
    [[nodiscard]] static bool createDirectoryAtURL(const QUrl &url, VeltoError *error = nullptr);
    /**
     * isFolderEffectivelyEmptyVeltoAtURL: true for a folder whose listing is empty or holds exactly one
     * entry, FolderSettingsFileName; false for anything else, and for a folder that cannot be listed.
     */
    [[nodiscard]] static bool isFolderEffectivelyEmptyVeltoAtURL(const QUrl &url);
    ///@}

    /** \name Paths */
    ///@{
    /**
     * pathByAbbreviatingRealHomeWithTilde: \a path with the real home folder at its start replaced by
     * "~": "~" alone for the home folder itself, "~/rest" for what lies in it; any other path unchanged
     * (a sibling whose name extends the home folder's is not abbreviated). Case-sensitive.
     */
    [[nodiscard]] static QString pathByAbbreviatingRealHomeWithTilde(const QString &path);
    /**
     * pathByExpandingTildeToRealHome: for a path starting with "~", the real home folder with the rest
     * appended as a path component ("~/Documents/" gives "<home>/Documents"); "~name" is not read as
     * another user's home: "~bob/x" gives "<home>/bob/x". Other paths unchanged.
     */
    [[nodiscard]] static QString pathByExpandingTildeToRealHome(const QString &path);
    ///@}

    /** \name Access checks */
    ///@{
    /**
     * isReadableItemAtURL: whether the process may read the item: a folder when it can be listed, any
     * other item when access(R_OK) allows it. Failures: a missing item gives NSCocoaErrorDomain 260,
     * "the file does not exist: <display path>"; a folder that cannot be listed gives the POSIX error of
     * the listing; any other unreadable item NSCocoaErrorDomain 257, "permission was denied: <display
     * path>" (the display path is filePathForUserDisplay()). Root reads everything.
     */
    [[nodiscard]] static bool isReadableItemAtURL(const QUrl &url, VeltoError *error = nullptr);
    /**
     * isWritableItemVeltoAtURL: whether access(W_OK) allows writing the item; with \a test, a writable
     * item that is not a folder is also opened for writing (nothing is written or truncated) and closed
     * again, and a failure to open makes the answer false with that POSIX error. Otherwise a false
     * answer gives NSCocoaErrorDomain 513, "The file is read-only.".
     */
    [[nodiscard]] static bool isWritableItemVeltoAtURL(const QUrl &url, bool test, VeltoError *error = nullptr);
    /**
     * hasPosixPermissionToRead: whether the item's permission bits grant reading (\a read true) or
     * writing: the bit for others grants at once; then the owner's bit if the owner is the real user;
     * then the group's bit if the item's group is among the process's supplementary groups
     * (getgroups()). False when the item's attributes cannot be read. Root gets no special treatment.
     */
    [[nodiscard]] static bool hasPosixPermissionToRead(bool read, const QUrl &url);
    /**
     * isHiddenItemVeltoAtURL: whether file managers hide the item: its name begins with ".", or its
     * name is a line of the ".hidden" file in its folder.
     */
    [[nodiscard]] static bool isHiddenItemVeltoAtURL(const QUrl &url);
    ///@}

    /** \name Extended attributes */
    ///@{
    /**
     * readExtendedAttribute: reads the attribute \a name of the item (not following a link).
     * - Success with data: \a byteCount (when given) gets the size and \a data (when given) the bytes.
     *   When \a data is not asked for, only the size is read.
     * - An empty attribute: success, size 0 and empty data.
     * - No such attribute (ENODATA): success with a null \a data, size 0 and no error. Callers that need
     *   the attribute treat a null \a data as their own error.
     * - A name that is empty, holds a zero character or is not valid UTF-16: NSPOSIXErrorDomain 22,
     *   "setxattr invalid key".
     * - Any other failure (a missing file, a file system without attributes: ENOTSUP, a name too long:
     *   ERANGE): NSPOSIXErrorDomain with the error number and "Could not read extended file attribute.".
     */
    [[nodiscard]] static bool readExtendedAttribute(const QString &name, qint64 *byteCount, QByteArray *data,
                                                    const QUrl &url, VeltoError *error = nullptr);
    /**
     * readStringExtendedAttribute: the attribute read as UTF-8 (then ASCII); a null string, without an
     * error, when it is absent or empty; VeltoCoreErrorDomain 1, "could not convert xattr data to
     * string", when its bytes are no such text; the read errors of readExtendedAttribute().
     */
    [[nodiscard]] static QString readStringExtendedAttribute(const QString &name, const QUrl &url,
                                                             VeltoError *error = nullptr);
    /**
     * readExtendedAttributeNamesForFileAtURL: the names of the item's attributes, "user." names without
     * their namespace, others with theirs; names that are not UTF-8 are left out (no string could name
     * them). An empty set when there are none; nothing, with NSPOSIXErrorDomain, the error number and
     * "Could not read extended file attribute.", when the list cannot be read.
     */
    [[nodiscard]] static std::optional<QSet<QString>> readExtendedAttributeNamesForFileAtURL(const QUrl &url,
                                                                                             VeltoError *error = nullptr);
    /**
     * writeExtendedAttribute: sets the attribute \a name to \a data, replacing any value. Failures:
     * NSPOSIXErrorDomain 22 "setxattr invalid key" for a bad name (see readExtendedAttribute()); else
     * NSPOSIXErrorDomain with the error number and "Could not set attribute for file: <display path>"
     * (a value too large: E2BIG or ENOSPC; no attributes on this file system: ENOTSUP). A failed write
     * leaves the attribute as it was.
     */
    [[nodiscard]] static bool writeExtendedAttribute(const QString &name, const QByteArray &data, const QUrl &url,
                                                     VeltoError *error = nullptr);
    /**
     * removeExtendedAttribute: removes the attribute named by the bytes \a name (UTF-8, as the kernel
     * takes it). Failures, including an attribute that is not there (ENODATA, 61): NSPOSIXErrorDomain
     * with the error number and "Could not set attribute for file: <display path>"; an empty name or one
     * with a zero byte gives 22 "setxattr invalid key".
     */
    [[nodiscard]] static bool removeExtendedAttribute(QByteArrayView name, const QUrl &url, VeltoError *error = nullptr);
    /**
     * removeQuarantineFromItemAtURL: removes QuarantineAttributeName from the item and, for a folder,
     * from every item below it (links not followed, their results ignored). The result and \a error
     * are those of the item itself: false (ENODATA) when it had no such attribute.
     */
    [[nodiscard]] static bool removeQuarantineFromItemAtURL(const QUrl &url, VeltoError *error = nullptr);
    ///@}

    /** \name Names for new files */
    ///@{
    /**
     * uniqueFileNameWithSuffix: a name that no item of \a folder has yet (an existing symbolic link counts,
     * even a dangling one). First \a fileName itself; then the name without its extension, followed by
     * \a suffixFormat with its first "%d" replaced by a counter, followed by the extension if there was one
     * ("report.txt" gives "report (2).txt", "notes" gives "notes (2)"). The counter runs 2 to 99; from the
     * 100th try on, random numbers (VeltoRandom_Int()) replace it. After 198 tries, a null string.
     * A null string also for a name that is empty, ".", "..", or holds "/" or a zero character.
     */
    [[nodiscard]] static QString uniqueFileNameWithSuffix(const QString &fileName, const QString &suffixFormat,
                                                          const QString &folder);
    /// uniqueFileNameInFolder: uniqueFileNameWithSuffix() with the suffix " (%d)".
    [[nodiscard]] static QString uniqueFileNameInFolder(const QString &fileName, const QString &folder);
    /// uniqueFileNameInFolderAtURL: uniqueFileNameInFolder() in the local folder of \a folderURL.
    [[nodiscard]] static QString uniqueFileNameInFolderAtURL(const QString &fileName, const QUrl &folderURL);
    /// uniqueFilePathForPath: \a path when nothing is there, else its folder joined with a unique name; null when none.
    [[nodiscard]] static QString uniqueFilePathForPath(const QString &path);
    /// uniqueFileURLWithFileName: \a folderURL plus \a fileName when nothing is there, else plus a unique name; empty when none.
    [[nodiscard]] static QUrl uniqueFileURLWithFileName(const QString &fileName, const QUrl &folderURL);
    /**
     * temporaryItemURLWithLastPathComponent: the file URL of an unused name based on \a fileName in the
     * temporary folder (TMPDIR, else "/tmp"), which is made with the folders above it
     * when missing (failing that: an empty URL with the POSIX error). Empty when no unused name is found.
     * Nothing is created at the returned place.
     */
    [[nodiscard]] static QUrl temporaryItemURLWithLastPathComponent(const QString &fileName, VeltoError *error = nullptr);
    /// tempFilePathWithFileName: the path of temporaryItemURLWithLastPathComponent(), errors dropped; null on failure.
    [[nodiscard]] static QString tempFilePathWithFileName(const QString &fileName);
    ///@}
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSecureURL.h
 * \brief VeltoSecureURL: a durable reference to a file or folder the user chose, which survives
 * relaunches, renames and atomic saves, with every use bracketed by counted access.
 *
 * A secure URL captures bookmark data for its target at once (VeltoBookmarkPlatform), resolves it back to
 * a file URL when used (refreshing bookmark data that has gone stale), and opens the sandbox's access
 * around every use. Access is counted process-wide in the open-URL registry (below), so that two
 * references to one place share one grant and a file inside an open folder is reached through the
 * folder's grant. References are turned into bytes for user defaults, documents and alias files
 * (VeltoSecureURLSerialization) and rebuilt from them.
 *
 * \code
 * VeltoError error;
 * const auto folder = VeltoSecureURL::initCapturingBookmarkForURL(chosenURL, false, &error);
 * folder->accessWithFlags(VeltoSecureURLAccessAllowUI, &error, [](const QUrl &url) {
 *     QFile file(QDir(url.toLocalFile()).filePath(u"notes.txt"_s));   // readable while access is open
 * });
 * const QByteArray stored = folder->serializationStorableGlobally();   // after a relaunch:
 * const auto again = VeltoSecureURL::initWithSerializedData(stored);
 * \endcode
 *
 * Secure URLs are shared objects (std::shared_ptr): the creation functions may hand out an object that
 * exists already. Each object guards its state with its own recursive lock; the registry has one
 * process-wide recursive lock, always taken after an object's lock, never before. Access blocks run on
 * the calling thread, outside both locks. Outside a sandbox (VeltoBookmarkPlatform::isSandboxed())
 * starting and stopping access does nothing beyond resolving.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QFlags>
#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <mutex>

class QObject;
class VeltoOpenURLInfo;
class VeltoSecureURL_Subpath;

/// How a reference was captured. Stored in serialized references.
enum VeltoSecureURLCaptureFlag : qint32 {
    VeltoSecureURLCaptureReadOnly = 1, ///< made for reading only (the grant still reads and writes)
    VeltoSecureURLCaptureUnscoped = 2, ///< in the application's own container or installation: never counted
};
Q_DECLARE_FLAGS(VeltoSecureURLCaptureFlags, VeltoSecureURLCaptureFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoSecureURLCaptureFlags)

/// What resolving and opening access may do.
enum VeltoSecureURLAccessFlag : qint32 {
    VeltoSecureURLAccessAllowUI = 1,       ///< resolution may ask the user; failures may show an alert
    VeltoSecureURLAccessAllowMounting = 2, ///< resolution may mount volumes
};
Q_DECLARE_FLAGS(VeltoSecureURLAccessFlags, VeltoSecureURLAccessFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(VeltoSecureURLAccessFlags)

/// The file-name extension of alias files written by VeltoSecureURL::writeFinderAliasToURL().
inline constexpr QLatin1StringView VeltoSecureURL_AliasFileExtension{"alias"};
/// The extended attribute of an alias file that holds the global serialization of its secure URL.
inline constexpr QLatin1StringView VeltoSecureURL_AliasAttributeName{"com.velto.aliasSecurityScopedData"};

/**
 * \brief VeltoSecureURL: bookmark data for one file or folder, its resolution and counted access.
 *
 * lastResolutionSuccessful() is 0 before any resolution (and after a capture or clearResolvedURL()), 1
 * after a successful one, -1 after a failed one or a start of access the sandbox denied.
 */
class VELTOCORE_EXPORT VeltoSecureURL : public std::enable_shared_from_this<VeltoSecureURL>
{
protected:
    /// Only the class and its subclasses make objects: the creation functions may return another one.
    struct ConstructionKey
    {
        explicit ConstructionKey() = default;
    };

public:
    /// Block of accessWithFlags(): called with the resolved URL while access is open.
    using AccessBlock = std::function<void(const QUrl &url)>;
    /// Block of accessWithFlagsAsyncUsing(): access stays open until \a completion is called (once).
    using AsyncAccessBlock = std::function<void(const QUrl &url, const std::function<void()> &completion)>;
    /// Block of accessWithFlagsUsing(): the URL and a null error, or an empty URL and the error.
    using ResultBlock = std::function<void(const QUrl &url, const VeltoError &error)>;

    explicit VeltoSecureURL(ConstructionKey);
    /// Stops the access still open (an object released while open gives its grants back).
    virtual ~VeltoSecureURL();
    VeltoSecureURL(const VeltoSecureURL &) = delete;
    VeltoSecureURL &operator=(const VeltoSecureURL &) = delete;

    /** \name Class operations */
    ///@{
    /// isSecurityScopingFunctional: whether the installed platform can open access (always so on Linux).
    [[nodiscard]] static bool isSecurityScopingFunctional();
    /// isSecurityScopingViableAndGetError: isSecurityScopingFunctional(); \a error is never written.
    [[nodiscard]] static bool isSecurityScopingViableAndGetError(VeltoError *error = nullptr);
    /**
     * captureFlagsForURL: VeltoSecureURLCaptureReadOnly when \a readOnly; plus VeltoSecureURLCaptureUnscoped
     * for a file in the application's container (VeltoFileManager::isFileInsideSandboxAtURL()) or in the
     * folder of the running executable and below.
     */
    [[nodiscard]] static VeltoSecureURLCaptureFlags captureFlagsForURL(const QUrl &url, bool readOnly);
    /**
     * bookmarkDataCreationOptionsForCaptureFlags: VeltoBookmarkCreationWithSecurityScope inside a sandbox
     * for flags without VeltoSecureURLCaptureUnscoped, else 0. Read-only captures still ask for a grant
     * that reads and writes.
     */
    [[nodiscard]] static quint32 bookmarkDataCreationOptionsForCaptureFlags(VeltoSecureURLCaptureFlags flags);
    /**
     * bookmarkDataForTargetURL: bookmark data for \a target with \a options, relative to \a documentURL
     * when given. Failures: an empty target is NSPOSIXErrorDomain 22, "Trying to capture security-scoped
     * bookmark data for nil target URL."; otherwise VeltoCoreErrorDomain 2, "Bookmark data could not be
     * captured for a file.", a blank line and the target's display path, then, when the file cannot be
     * read, a blank line and "Underlying error: " with that error's user text, or with the platform's
     * error when the file is readable and the platform gave one.
     */
    [[nodiscard]] static QByteArray bookmarkDataForTargetURL(const QUrl &target, const QUrl &documentURL,
                                                             quint32 options, VeltoError *error = nullptr);
    /**
     * readFinderAliasFromURL: a secure URL made from the alias file's VeltoSecureURL_AliasAttributeName
     * attribute (initWithSerializedData()). Nothing with the attribute read's error, or with
     * VeltoCoreErrorDomain 1, "File alias is missing security-scoped bookmark data in extended
     * attributes.", when the attribute is missing or empty.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> readFinderAliasFromURL(const QUrl &aliasURL,
                                                                               VeltoError *error = nullptr);
    ///@}

    /** \name Creation */
    ///@{
    /**
     * initCapturingBookmarkForURL: a reference to \a url with bookmark data captured now. Inside a sandbox
     * an open reference to the very same place with the same flags is returned itself; when capturing
     * fails while an open folder encloses \a url, a VeltoSecureURL_Subpath through that folder is returned
     * (leaving the capture's error in \a error). Nothing, with \a error, otherwise.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> initCapturingBookmarkForURL(const QUrl &url, bool readOnly,
                                                                                    VeltoError *error = nullptr);
    /**
     * initUsingParentFolderSecureURL: a VeltoSecureURL_Subpath reaching \a targetURL through \a parent's
     * bookmark, with \a parent's capture flags. Nothing with VeltoCoreErrorDomain 2 when the parent has no
     * bookmark data ("Parent folder does not have bookmark data:\n\n<parent's description>"), does not
     * resolve ("Parent folder resolves to nil for targetted file:\n\n<target>") or does not enclose the
     * target ("Parent folder:\n<folder>\n\nDoes not actually enclose the target:\n<target>"); paths are
     * display paths.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL_Subpath>
    initUsingParentFolderSecureURL(const std::shared_ptr<VeltoSecureURL> &parent, const QUrl &targetURL,
                                   VeltoError *error = nullptr);
    /**
     * initWithSerializedData: the reference \a data stores (a VeltoSecureURL_Subpath when it holds a
     * subpath). Never nothing: data that cannot be read still makes an object, without bookmark data,
     * whose every resolution fails with the reading error (null data: VeltoCoreErrorDomain 1,
     * "Security-scoped serialization data is nil.").
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> initWithSerializedData(const QByteArray &data);
    /// copy: this object itself (a reference's identity does not change).
    [[nodiscard]] std::shared_ptr<VeltoSecureURL> copy();
    ///@}

    /** \name Properties */
    ///@{
    [[nodiscard]] VeltoSecureURLCaptureFlags captureFlags() const;
    void setCaptureFlags(VeltoSecureURLCaptureFlags flags);
    /// appleBookmarkData: the platform's bookmark bytes; null when none were made.
    [[nodiscard]] QByteArray appleBookmarkData() const;
    void setAppleBookmarkData(const QByteArray &data);
    /// serializationData: the bytes this object was made from, or its last global serialization.
    [[nodiscard]] QByteArray serializationData() const;
    void setSerializationData(const QByteArray &data);
    /// lastResolutionSuccessful: 0 unresolved, 1 resolved, -1 failed (see the class comment).
    [[nodiscard]] qint32 lastResolutionSuccessful() const;
    /// documentURL: the document the bookmark is relative to (VeltoSecureURL_Doc); empty here.
    [[nodiscard]] virtual QUrl documentURL() const;
    /// subpathFragment: the path below the bookmarked folder (VeltoSecureURL_Subpath); null here.
    [[nodiscard]] virtual QString subpathFragment() const;
    /// openCount: the number of starts of access not yet stopped (inside a sandbox).
    [[nodiscard]] qsizetype openCount() const;
    ///@}

    /** \name Identity and display */
    ///@{
    /**
     * isEqualToVeltoSecureURL: for file URLs (fileURL()), the same path and, when either object's last
     * resolution failed, the same bookmark data; other URLs compare as URLs.
     */
    [[nodiscard]] bool isEqualToVeltoSecureURL(const VeltoSecureURL &other) const;
    /// description: "<class><0x…> open count N, for <display path or {unresolved bookmark for <path>}>",
    /// followed by " (SUBPATH: <fragment>)" for a subpath.
    [[nodiscard]] QString description() const;
    ///@}

    /** \name Names and paths (none of these opens access) */
    ///@{
    [[nodiscard]] QUrl lastResolvedURL() const;
    /// lastResolvedBookmarkedURL: the URL the bookmark itself named at the last resolution.
    [[nodiscard]] virtual QUrl lastResolvedBookmarkedURL() const;
    /// setLastResolvedURL: setLastResolvedURL(url, 1), or (url, 0) for an empty URL.
    void setLastResolvedURL(const QUrl &url);
    /// setLastResolvedURL: stores \a url as the resolved and the stale URL, and \a success.
    void setLastResolvedURL(const QUrl &url, qint32 success);
    /// clearResolvedURL: forgets the resolved URL; lastResolutionSuccessful() is 0 again.
    virtual void clearResolvedURL();
    /// unresolvedFileName: the name recorded in the bookmark data.
    [[nodiscard]] virtual QString unresolvedFileName() const;
    /// unresolvedFilePath: the resolved path, else the path recorded in the bookmark data ("/" gives null).
    [[nodiscard]] virtual QString unresolvedFilePath() const;
    /// fileURL: the resolved URL, else a URL of unresolvedFilePath(), made once and kept.
    [[nodiscard]] QUrl fileURL() const;
    [[nodiscard]] QString filePath() const;
    [[nodiscard]] QString fileName() const;
    ///@}

    /** \name Resolution */
    ///@{
    /// resolvedURL: resolvedURLWithFlags() with no flags, errors dropped.
    [[nodiscard]] QUrl resolvedURL();
    [[nodiscard]] QUrl resolvedURLWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error = nullptr);
    /**
     * resolvedURLWithFlagsGetBookmarkedURL: the cached URL while it is reachable, else the bookmark resolved afresh
     * (lastResolutionSuccessful() 1 or -1). \a bookmarkedURL gets the URL the bookmark itself names.
     */
    [[nodiscard]] virtual QUrl resolvedURLWithFlagsGetBookmarkedURL(VeltoSecureURLAccessFlags flags, QUrl *bookmarkedURL,
                                                    VeltoError *error = nullptr);
    /**
     * resolveBookmarkedURLUncachedWithFlags: the bookmark resolved now. Stale bookmark data is made again
     * and replaces appleBookmarkData() (serializationData() stays as it was). Fails with the kept reading
     * error of initWithSerializedData(); unreadable bookmark data gives the file's reachability error
     * when its recorded path is known and gone, else VeltoCoreErrorDomain 1, "Bookmark data previously
     * captured for a file is invalid." followed by "\nFile path: <display path>" or "\nFile: <name>".
     */
    [[nodiscard]] QUrl resolveBookmarkedURLUncachedWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error = nullptr);
    /// captureBookmarkForURL: captures bookmark data for \a url (documentURL() relative); false with \a error.
    [[nodiscard]] bool captureBookmarkForURL(const QUrl &url, VeltoSecureURLCaptureFlags flags, VeltoError *error = nullptr);
    ///@}

    /** \name Access */
    ///@{
    /**
     * startAccessingWithFlags: resolves and, inside a sandbox, opens counted access; the URL to use, or
     * an empty URL with \a error. Inside a sandbox every call, failed or not, must be matched by one
     * stopAccessing(). A denial is NSPOSIXErrorDomain 1, "The Mac system sandbox denied <application>
     * access to the file:\n\n<path>" (plus the bookmarked path when it differs).
     */
    [[nodiscard]] QUrl startAccessingWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error = nullptr);
    /// stopAccessing: closes the latest start; a stop without a start only warns.
    void stopAccessing();
    /**
     * accessWithFlags: runs \a block with the resolved URL while access is open, then stops; also when
     * \a block throws, before the exception continues. \return whether access was opened.
     */
    bool accessWithFlags(VeltoSecureURLAccessFlags flags, VeltoError *error, const AccessBlock &block);
    /// accessWithFlagsAsyncUsing: as accessWithFlags(), but access stays open until the block's completion runs.
    bool accessWithFlagsAsyncUsing(VeltoSecureURLAccessFlags flags, VeltoError *error, const AsyncAccessBlock &block);
    /**
     * accessWithFlagsErrorPresenter: accessWithFlags(); on failure the error goes to \a presenter's
     * presentError(VeltoError) slot or invokable when it has one, else, with VeltoSecureURLAccessAllowUI,
     * to VeltoAlertPresenter::show().
     */
    bool accessWithFlagsErrorPresenter(VeltoSecureURLAccessFlags flags, QObject *presenter, const AccessBlock &block);
    /// accessWithFlagsUsing: accessWithFlags(); on failure \a block runs once with an empty URL and the error.
    bool accessWithFlagsUsing(VeltoSecureURLAccessFlags flags, const ResultBlock &block);
    /// isAccessibleWithFlags: whether access can be opened now.
    [[nodiscard]] bool isAccessibleWithFlags(VeltoSecureURLAccessFlags flags);
    ///@}

    /** \name Serialization */
    ///@{
    /// serializationStorableGlobally: bytes to rebuild this reference anywhere (kept after the first time).
    [[nodiscard]] QByteArray serializationStorableGlobally();
    /// serializationStorableInDocumentWithURL: bytes to keep inside \a documentURL; null without one.
    [[nodiscard]] QByteArray serializationStorableInDocumentWithURL(const QUrl &documentURL);
    /// serializationGeneratedWithAppleBookmarkData: a serialization of \a bookmark with this object's flags and subpath.
    [[nodiscard]] QByteArray serializationGeneratedWithAppleBookmarkData(const QByteArray &bookmark) const;
    ///@}

    /** \name Other */
    ///@{
    /**
     * writeFinderAliasToURL: writes an alias file (the platform's) for the target at \a aliasURL and keeps
     * the global serialization in its VeltoSecureURL_AliasAttributeName attribute; false with \a error.
     */
    [[nodiscard]] bool writeFinderAliasToURL(const QUrl &aliasURL, VeltoError *error = nullptr);
    /**
     * setCorrectedSecureURL: points this reference at \a other's target (its serialization bytes become
     * this object's bookmark data, its resolved URL this one's); nothing while access is open.
     */
    void setCorrectedSecureURL(const std::shared_ptr<VeltoSecureURL> &other);
    /**
     * secureURLForSubfolderWithName: a new reference to the subfolder \a name of the resolved folder,
     * made first when \a create is set; nothing (without error) when it is missing and not to be made.
     */
    [[nodiscard]] std::shared_ptr<VeltoSecureURL> secureURLForSubfolderWithName(const QString &name, bool create,
                                                                               VeltoError *error = nullptr);
    ///@}

    /** \name The open-URL registry (VeltoSecureURL+GlobalCounts.cpp) */
    ///@{
    using OpenURLInfoList = QList<std::shared_ptr<VeltoOpenURLInfo>>;
    /// accessGlobalOpenURLInfos: runs \a block with the registry's list under the registry lock.
    static void accessGlobalOpenURLInfos(const std::function<void(OpenURLInfoList &infos)> &block);
    /**
     * incrementGlobalAccessCountForSecureURL: counts one access to \a accessedURL: on the newest entry of
     * the same file, else on a new grant, else (refused) on the innermost open folder enclosing it, else
     * on a new entry when the file is readable anyway. The entry counted (the access token), or nullptr.
     */
    static std::shared_ptr<VeltoOpenURLInfo> incrementGlobalAccessCountForSecureURL(const std::shared_ptr<VeltoSecureURL> &secureURL,
                                                                                   const QUrl &accessedURL);
    /// decrementGlobalAccessCountForSecureURL: gives back one access of \a token; its grant closes at zero.
    static void decrementGlobalAccessCountForSecureURL(const VeltoSecureURL *secureURL,
                                                       const std::shared_ptr<VeltoOpenURLInfo> &token);
    /// openSandboxAccessForURL: the platform's start of access for \a url.
    [[nodiscard]] static bool openSandboxAccessForURL(const QUrl &url);
    /// closeSandboxAccessForURL: the platform's stop of access for \a url.
    static void closeSandboxAccessForURL(const QUrl &url);
    /**
     * matchExistingOpenInfoForURL: the entry whose place is \a url or the innermost folder enclosing it
     * (paths compared without regard to letter case; the earlier entry on a tie), and in \a subpath the
     * path that remains; nullptr when none.
     */
    static std::shared_ptr<VeltoOpenURLInfo> matchExistingOpenInfoForURL(const QUrl &url, QString *subpath = nullptr);
    /// matchExistingOpenSecureURLForURL: the secure URL of matchExistingOpenInfoForURL()'s entry.
    static std::shared_ptr<VeltoSecureURL> matchExistingOpenSecureURLForURL(const QUrl &url, QString *subpath = nullptr);
    /// openURLs: the place of every entry, in registry order.
    [[nodiscard]] static QList<QUrl> openURLs();
    /// debugState: logs "OPEN SECURE URLs: " and each entry's display path and count.
    static void debugState();
    ///@}

protected:
    /// The object's recursive lock, for subclasses' own state.
    std::recursive_mutex &lock() const;
    /// serializationGeneratedForStoringInURL: the serialization for \a place (a document, or empty for global).
    [[nodiscard]] QByteArray serializationGeneratedForStoringInURL(const QUrl &place);
    /**
     * initWithSerializedDataInto: fills \a receiver from \a data as initWithSerializedData() does and returns
     * it, or a new VeltoSecureURL_Subpath in its place when \a data holds a subpath.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> initWithSerializedDataInto(std::shared_ptr<VeltoSecureURL> receiver,
                                                                      const QByteArray &data);

private:
    VeltoError errorForInvalidBookmarkData() const;
    VeltoError sandboxDeniedError(const QUrl &url, const QUrl &bookmarkedURL) const;

    class Private;
    std::unique_ptr<Private> const d;
};

/// operator==: the same object, or isEqualToVeltoSecureURL().
[[nodiscard]] VELTOCORE_EXPORT bool operator==(const VeltoSecureURL &url, const VeltoSecureURL &other);

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoBookmarkPlatform.h
 * \brief VeltoBookmarkPlatform: what a durable file reference needs from the system underneath: bookmark
 * data that names a file and finds it again, reachability, the start and stop of access granted by an
 * application sandbox, and alias files.
 *
 * VeltoSecureURL asks the installed platform for all of these. The default is VeltoLinuxBookmarkPlatform:
 * bookmark records of our own (docs/bookmark-format.md) and access that is always granted, since Linux
 * grants file access through permissions, not through per-file grants. A host or a test installs another
 * implementation with install(); the test suite's sandbox simulation grants, refuses and counts access
 * through this same interface.
 *
 * \code
 * VeltoBookmarkPlatform::install(std::make_shared<MySandboxPlatform>());   // before any reference is used
 * const auto platform = VeltoBookmarkPlatform::installed();
 * const QByteArray bookmark = platform->bookmarkData(url, VeltoBookmarkCreationWithSecurityScope, QUrl(), &error);
 * \endcode
 *
 * Implementations are called from any thread, often with a secure URL's lock and the open-URL registry's
 * lock held: they must be thread-safe and must not call back into VeltoSecureURL.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

/// Options for making bookmark data; the numbers are the ones stored in bookmark records.
enum VeltoBookmarkCreationOption : quint32 {
    VeltoBookmarkCreationSuitableForBookmarkFile = 1u << 10,        ///< 1024: for an alias file
    VeltoBookmarkCreationWithSecurityScope = 1u << 11,              ///< 2048: the reference carries a sandbox grant
    VeltoBookmarkCreationSecurityScopeAllowOnlyReadAccess = 1u << 12 ///< 4096: that grant reads only
};
using VeltoBookmarkCreationOptions = quint32;

/// Options for resolving bookmark data.
enum VeltoBookmarkResolutionOption : quint32 {
    VeltoBookmarkResolutionWithoutUI = 1u << 8,         ///< 256: never ask the user
    VeltoBookmarkResolutionWithoutMounting = 1u << 9,   ///< 512: never mount a volume
    VeltoBookmarkResolutionWithSecurityScope = 1u << 10 ///< 1024: resolve the sandbox grant too
};
using VeltoBookmarkResolutionOptions = quint32;

/**
 * \brief VeltoBookmarkPlatform: the system services behind secure URLs, as one interface.
 */
class VELTOCORE_EXPORT VeltoBookmarkPlatform
{
public:
    /// The facts a bookmark records about its file, readable without resolving it.
    struct ResourceValues
    {
        QString name; ///< the file's name when the bookmark was made
        QString path; ///< its absolute path then
    };

    virtual ~VeltoBookmarkPlatform();

    /**
     * install: makes \a platform the one every secure URL uses from now on; nullptr goes back to the
     * default (VeltoLinuxBookmarkPlatform). Install before references are opened: access started under one
     * platform is stopped under whichever is installed then.
     */
    static void install(std::shared_ptr<VeltoBookmarkPlatform> platform);
    /// installed: the platform installed now; the default one when none was installed. Never nullptr.
    [[nodiscard]] static std::shared_ptr<VeltoBookmarkPlatform> installed();

    /// isSandboxed: whether the process runs inside an application sandbox whose grants must be opened.
    [[nodiscard]] virtual bool isSandboxed() const = 0;
    /// isSecurityScopingFunctional: whether opening access (startAccessing) is known to work here.
    [[nodiscard]] virtual bool isSecurityScopingFunctional() const = 0;

    /**
     * bookmarkData: bookmark data for the file of \a target, made with \a options and, when \a document is
     * a file URL, also relative to that document. A null QByteArray with \a error when the file cannot be
     * reached or \a target is no file URL.
     */
    [[nodiscard]] virtual QByteArray bookmarkData(const QUrl &target, VeltoBookmarkCreationOptions options,
                                                  const QUrl &document, VeltoError *error = nullptr) = 0;
    /// resourceValues: the name and path \a bookmark recorded; nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<ResourceValues> resourceValues(const QByteArray &bookmark) const = 0;
    /**
     * resolveBookmarkData: the file URL \a bookmark leads to now (relative to \a document when it was made
     * so). \a isStale (when given) is set to whether the bookmark should be made again because its file
     * moved or was replaced. An empty URL with \a error when it leads nowhere; bookmark bytes that cannot
     * be read give the general domain's code 259 (VeltoCocoaErrorFileReadCorruptFile).
     */
    [[nodiscard]] virtual QUrl resolveBookmarkData(const QByteArray &bookmark, VeltoBookmarkResolutionOptions options,
                                                   const QUrl &document, bool *isStale,
                                                   VeltoError *error = nullptr) = 0;
    /// checkResourceIsReachable: whether the file of \a url exists now; false with \a error when not.
    [[nodiscard]] virtual bool checkResourceIsReachable(const QUrl &url, VeltoError *error = nullptr) const = 0;

    /// startAccessingSecurityScopedResource: opens the sandbox's grant for \a url; false when refused.
    [[nodiscard]] virtual bool startAccessingSecurityScopedResource(const QUrl &url) = 0;
    /// stopAccessingSecurityScopedResource: gives back one grant for \a url opened by startAccessing….
    virtual void stopAccessingSecurityScopedResource(const QUrl &url) = 0;

    /// writeBookmarkDataToURL: writes \a bookmark as the alias file \a aliasFile, replacing any file there.
    [[nodiscard]] virtual bool writeBookmarkDataToURL(const QByteArray &bookmark, const QUrl &aliasFile,
                                                      VeltoError *error = nullptr) = 0;
    /// bookmarkDataWithContentsOfURL: the bookmark an alias file holds; null with \a error when it is none.
    [[nodiscard]] virtual QByteArray bookmarkDataWithContentsOfURL(const QUrl &aliasFile,
                                                                   VeltoError *error = nullptr) const = 0;
};

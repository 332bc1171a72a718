// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSecureURL_Subpath.h
 * \brief VeltoSecureURL_Subpath: a file or folder reached through the bookmark of a folder that encloses it.
 *
 * Made when a file inside an open folder cannot be captured on its own
 * (VeltoSecureURL::initCapturingBookmarkForURL(), VeltoSecureURL::initUsingParentFolderSecureURL()) and
 * from stored data that carries a subpath. Its bookmark data and capture flags are the folder's; it
 * resolves the folder and appends subpathFragment(), and opens and counts access on the folder.
 */

#include "VeltoSecureURL.h"

/// VeltoSecureURL_Subpath: a folder's bookmark plus the path below it.
class VELTOCORE_EXPORT VeltoSecureURL_Subpath : public VeltoSecureURL
{
public:
    explicit VeltoSecureURL_Subpath(ConstructionKey key);
    ~VeltoSecureURL_Subpath() override;

    /// initWithAppleBookmarkData: a reference to \a fragment (no leading "/") below the folder of \a folderBookmark.
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL_Subpath> initWithAppleBookmarkData(const QByteArray &folderBookmark,
                                                                                          const QString &fragment);

    [[nodiscard]] QString subpathFragment() const override;
    void setSubpathFragment(const QString &fragment);
    /// lastResolvedBookmarkedURL: the folder's URL at the last successful resolution.
    [[nodiscard]] QUrl lastResolvedBookmarkedURL() const override;
    void setLastResolvedBookmarkedURL(const QUrl &url);
    /// clearResolvedURL: forgets the folder's URL, then the target's.
    void clearResolvedURL() override;
    /// unresolvedFileName: the last component of subpathFragment().
    [[nodiscard]] QString unresolvedFileName() const override;
    /// unresolvedFilePath: the resolved path, else the folder's recorded path with subpathFragment() appended.
    [[nodiscard]] QString unresolvedFilePath() const override;
    /**
     * resolvedURLWithFlagsGetBookmarkedURL: the cached target while it and the folder are reachable; else the folder
     * resolved afresh with subpathFragment() appended, when that is reachable (else an empty URL with the
     * reachability error, lastResolutionSuccessful() -1 and the cached folder kept). \a bookmarkedURL gets
     * the folder's URL, the freshly resolved one even when the target is missing.
     */
    [[nodiscard]] QUrl resolvedURLWithFlagsGetBookmarkedURL(VeltoSecureURLAccessFlags flags, QUrl *bookmarkedURL,
                                            VeltoError *error = nullptr) override;

private:
    class Private;
    std::unique_ptr<Private> const s;
};

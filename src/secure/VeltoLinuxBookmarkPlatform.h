// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLinuxBookmarkPlatform.h
 * \brief VeltoLinuxBookmarkPlatform: the default VeltoBookmarkPlatform, for Linux.
 *
 * Bookmark data is a versioned binary record (docs/bookmark-format.md) of the file's path, name, device
 * and inode and, for references kept in a document, its path relative to the document's folder.
 * Resolution looks for the file in this order, and reports every answer other than the recorded path
 * holding the recorded file as stale, so that the reference makes its bookmark again:
 *
 * 1. the document-relative path (when resolving relative to a document), then the recorded path, holding
 *    the recorded file (same device and inode): the file itself; stale when found by the relative path;
 * 2. either path holding another file: the file was replaced, as an atomic save replaces it;
 * 3. the recorded file found by its inode in the recorded folder or in its subfolders down to
 *    SearchDepth levels, looking at no more than SearchLimit entries: the file was renamed or moved
 *    there;
 * 4. otherwise the file is gone, and resolution fails with the recorded path's reachability error
 *    (the general domain's 260, "the file does not exist: ~/report.txt").
 *
 * Access is always granted: Linux opens files by their permissions, not by per-file grants. The process
 * counts as sandboxed when VeltoApplication::isRunningInsideSandbox() says so. Alias files hold the
 * bookmark record itself.
 */

#include "VeltoBookmarkPlatform.h"
#include "veltocore_export.h"

/// VeltoLinuxBookmarkPlatform: bookmark records of our own and access that is always granted.
class VELTOCORE_EXPORT VeltoLinuxBookmarkPlatform : public VeltoBookmarkPlatform
{
public:
    /// How many folder levels below the recorded folder resolution searches for a moved file.
    static constexpr int SearchDepth = 2;
    /// How many folder entries that search looks at, at most.
    static constexpr int SearchLimit = 4096;

    [[nodiscard]] bool isSandboxed() const override;
    /// Always true.
    [[nodiscard]] bool isSecurityScopingFunctional() const override;
    [[nodiscard]] QByteArray bookmarkData(const QUrl &target, VeltoBookmarkCreationOptions options,
                                          const QUrl &document, VeltoError *error = nullptr) override;
    [[nodiscard]] std::optional<ResourceValues> resourceValues(const QByteArray &bookmark) const override;
    [[nodiscard]] QUrl resolveBookmarkData(const QByteArray &bookmark, VeltoBookmarkResolutionOptions options,
                                           const QUrl &document, bool *isStale, VeltoError *error = nullptr) override;
    [[nodiscard]] bool checkResourceIsReachable(const QUrl &url, VeltoError *error = nullptr) const override;
    /// Always grants.
    [[nodiscard]] bool startAccessingSecurityScopedResource(const QUrl &url) override;
    /// Nothing to give back.
    void stopAccessingSecurityScopedResource(const QUrl &url) override;
    /// Writes the bookmark record through a temporary file renamed over \a aliasFile (QSaveFile).
    [[nodiscard]] bool writeBookmarkDataToURL(const QByteArray &bookmark, const QUrl &aliasFile,
                                              VeltoError *error = nullptr) override;
    [[nodiscard]] QByteArray bookmarkDataWithContentsOfURL(const QUrl &aliasFile, VeltoError *error = nullptr) const override;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoFileIdentity.h
 * \brief VeltoFileIdentity: which file a path leads to, as the pair (device, inode), so that two paths
 * of one file compare equal and a file keeps its identity when it is renamed or moved on its volume.
 *
 * \code
 * const auto before = VeltoFileIdentity::ofPath(u"/home/u/report.txt"_s);
 * QFile::rename(u"/home/u/report.txt"_s, u"/home/u/final.txt"_s);
 * before == VeltoFileIdentity::ofPath(u"/home/u/final.txt"_s);           // true
 * VeltoFileIdentity::findInFolder(*before, u"/home/u"_s);                  // "/home/u/final.txt"
 * \endcode
 *
 * An identity is only meaningful while the file exists: the kernel hands a deleted file's inode number
 * to the next file made on that volume.
 */

#include "veltocore_export.h"

#include <QString>
#include <QUrl>

#include <optional>

/// VeltoFileIdentity: a file's device and inode number, as stat() reports them.
struct VELTOCORE_EXPORT VeltoFileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;

    /**
     * ofPath: the identity of the file \a path leads to; symbolic links are followed, so a link and its
     * target have one identity. Nothing when the file cannot be reached (missing, dangling link, no
     * permission to search a folder on the way) or \a path is empty.
     */
    [[nodiscard]] static std::optional<VeltoFileIdentity> ofPath(const QString &path);

    /// ofURL: ofPath() of a file URL's local path; nothing for other URLs.
    [[nodiscard]] static std::optional<VeltoFileIdentity> ofURL(const QUrl &url);

    /**
     * findInFolder: the path of the entry of \a folder (not of its subfolders) that has \a identity, or a
     * null string: how a file renamed inside its folder is found again.
     */
    [[nodiscard]] static QString findInFolder(const VeltoFileIdentity &identity, const QString &folder);

    friend bool operator==(const VeltoFileIdentity &, const VeltoFileIdentity &) = default;
};

/// qHash: hashes device and inode.
[[nodiscard]] VELTOCORE_EXPORT size_t qHash(const VeltoFileIdentity &identity, size_t seed = 0) noexcept;

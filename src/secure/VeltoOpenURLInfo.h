// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoOpenURLInfo.h
 * \brief VeltoOpenURLInfo: one entry of the open-URL registry (VeltoSecureURL's registry operations): a
 * place that holds a sandbox grant now, and how many starts of access it stands for.
 *
 * An entry is also the access token a secure URL keeps for each start it counted on it. It keeps the
 * secure URL that opened the place alive until the count falls back to zero and the entry leaves the
 * registry; secure URLs sharing the entry are not remembered. The count changes only under the registry
 * lock; the other values never change.
 */

#include "veltocore_export.h"

#include <QUrl>

#include <atomic>
#include <memory>

class VeltoSecureURL;

/// VeltoOpenURLInfo: an open place, the reference that opened it and its access count.
class VELTOCORE_EXPORT VeltoOpenURLInfo
{
public:
    VeltoOpenURLInfo(std::shared_ptr<VeltoSecureURL> secureURL, const QUrl &accessedURL)
        : m_secureURL(std::move(secureURL)), m_accessedURL(accessedURL)
    {
    }
    VeltoOpenURLInfo(const VeltoOpenURLInfo &) = delete;
    VeltoOpenURLInfo &operator=(const VeltoOpenURLInfo &) = delete;

    /// secureURL: the reference that opened the place first.
    [[nodiscard]] std::shared_ptr<VeltoSecureURL> secureURL() const { return m_secureURL; }
    /// accessedURL: the place access was opened on (a subpath reference's folder).
    [[nodiscard]] QUrl accessedURL() const { return m_accessedURL; }
    /// accessCount: the starts of access this entry stands for, across every reference sharing it.
    [[nodiscard]] qint64 accessCount() const { return m_accessCount.load(std::memory_order_relaxed); }

private:
    friend class VeltoSecureURL;
    const std::shared_ptr<VeltoSecureURL> m_secureURL;
    const QUrl m_accessedURL;
    std::atomic<qint64> m_accessCount{0};
};

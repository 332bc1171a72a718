// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The one stand-in of the secure URL tests: an application sandbox, which Linux does not have. It keeps
// the Linux platform's real bookmark records and files and replaces only the grants: it grants or
// refuses each start of access per path and counts the real start and stop calls that reach it. It sits
// behind the same VeltoBookmarkPlatform interface and is installed with VeltoBookmarkPlatform::install().

#include "VeltoLinuxBookmarkPlatform.h"

#include <QHash>

#include <functional>
#include <mutex>

class SandboxSimulation : public VeltoLinuxBookmarkPlatform
{
public:
    /// install: a new simulation, installed until the next install().
    static std::shared_ptr<SandboxSimulation> install(bool sandboxed = true)
    {
        auto simulation = std::make_shared<SandboxSimulation>();
        simulation->m_sandboxed = sandboxed;
        VeltoBookmarkPlatform::install(simulation);
        return simulation;
    }

    /// refuse: starts of access for \a path are refused from now on; \a onRefusal runs after each refusal.
    void refuse(const QString &path, std::function<void()> onRefusal = {})
    {
        std::lock_guard lock(m_mutex);
        m_refused.insert(path, std::move(onRefusal));
    }

    /// calls: "<starts> started, <stops> stopped, <grants not stopped yet> open" for \a path.
    QString calls(const QString &path) const
    {
        std::lock_guard lock(m_mutex);
        const Counts counts = m_counts.value(path);
        return QStringLiteral("%1 started, %2 stopped, %3 open").arg(counts.starts).arg(counts.stops).arg(counts.open);
    }

    /// openGrants: granted starts, over every path, that were not stopped.
    int openGrants() const
    {
        std::lock_guard lock(m_mutex);
        int open = 0;
        for (const Counts &counts : m_counts)
            open += counts.open;
        return open;
    }

    bool isSandboxed() const override { return m_sandboxed; }

    bool startAccessingSecurityScopedResource(const QUrl &url) override
    {
        std::unique_lock lock(m_mutex);
        Counts &counts = m_counts[url.toLocalFile()];
        ++counts.starts;
        const auto refusal = m_refused.constFind(url.toLocalFile());
        if (refusal == m_refused.cend())
            return ++counts.open > 0;
        const std::function<void()> onRefusal = *refusal;
        lock.unlock();
        if (onRefusal)
            onRefusal();
        return false;
    }

    void stopAccessingSecurityScopedResource(const QUrl &url) override
    {
        std::lock_guard lock(m_mutex);
        Counts &counts = m_counts[url.toLocalFile()];
        ++counts.stops;
        counts.open -= counts.open > 0;
    }

private:
    struct Counts
    {
        int starts = 0;
        int stops = 0;
        int open = 0; // granted starts not stopped yet
    };
    mutable std::mutex m_mutex;
    bool m_sandboxed = true;
    QHash<QString, std::function<void()>> m_refused;
    QHash<QString, Counts> m_counts;
};

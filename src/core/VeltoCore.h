// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoCore.h
 * \brief The library's identity: one VeltoCore object per process and the bundle of its own resources.
 */

#include "veltocore_export.h"

#include <QMetaObject>
#include <QtCore/qobjectdefs.h>

#include <memory>

class VeltoBundle;

/**
 * \brief VeltoCore: the process-wide library object. Made on first use, exactly once even when several
 * threads ask at the same time, and never destroyed. A gadget, not a QObject: it has a meta-object (so
 * its binary's bundle can be found) but no thread affinity.
 */
class VELTOCORE_EXPORT VeltoCore
{
    Q_GADGET

public:
    /// instance: the single VeltoCore object. Safe on any thread.
    [[nodiscard]] static VeltoCore *instance();

    /// frameworkBundle: the bundle owning this class (the library's embedded strings), found once and kept.
    [[nodiscard]] std::shared_ptr<const VeltoBundle> frameworkBundle() const;

    /// isDebugBuild: whether the library was built with its debugging aids (VELTOCORE_DEBUG_AIDS); fixed at build time.
    [[nodiscard]] bool isDebugBuild() const;

private:
    VeltoCore();
    ~VeltoCore();
    Q_DISABLE_COPY_MOVE(VeltoCore)
};

/// VeltoCoreBundle: the library's bundle; the same as VeltoCore::instance()->frameworkBundle().
[[nodiscard]] VELTOCORE_EXPORT std::shared_ptr<const VeltoBundle> VeltoCoreBundle();

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoCore.h"

#include "VeltoBundle.h"

VeltoCore::VeltoCore() = default;
VeltoCore::~VeltoCore() = default;

VeltoCore *VeltoCore::instance()
{
    // Made once under the static-initialisation guard and deliberately never destroyed.
    static VeltoCore *const core = new VeltoCore;
    return core;
}

std::shared_ptr<const VeltoBundle> VeltoCore::frameworkBundle() const
{
    static const std::shared_ptr<const VeltoBundle> bundle = VeltoBundle::bundleForClass(&staticMetaObject);
    return bundle;
}

bool VeltoCore::isDebugBuild() const
{
#ifdef VELTOCORE_DEBUG_AIDS
    return true;
#else
    return false;
#endif
}

std::shared_ptr<const VeltoBundle> VeltoCoreBundle()
{
    return VeltoCore::instance()->frameworkBundle();
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoBookmarkPlatform.h"

#include "VeltoLinuxBookmarkPlatform.h"

#include <mutex>

namespace {

std::mutex platformMutex;

std::shared_ptr<VeltoBookmarkPlatform> &current()
{
    static std::shared_ptr<VeltoBookmarkPlatform> platform = std::make_shared<VeltoLinuxBookmarkPlatform>();
    return platform;
}

} // namespace

VeltoBookmarkPlatform::~VeltoBookmarkPlatform() = default;

void VeltoBookmarkPlatform::install(std::shared_ptr<VeltoBookmarkPlatform> platform)
{
    std::lock_guard lock(platformMutex);
    current() = platform ? std::move(platform) : std::make_shared<VeltoLinuxBookmarkPlatform>();
}

std::shared_ptr<VeltoBookmarkPlatform> VeltoBookmarkPlatform::installed()
{
    std::lock_guard lock(platformMutex);
    return current();
}

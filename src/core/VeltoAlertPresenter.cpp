// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAlertPresenter.h"

#include "VeltoLogSink.h"

#include <mutex>

namespace {

std::mutex presenterMutex;
std::shared_ptr<VeltoAlertPresenter> presenter;

int logAlert(const VeltoAlertPresenter::Alert &alert)
{
    VeltoLogSink::warn(alert.informativeText.isEmpty() ? alert.messageText
                                                       : alert.messageText + u'\n' + alert.informativeText);
    return VeltoAlertPresenter::NoResponse;
}

} // namespace

VeltoAlertPresenter::~VeltoAlertPresenter() = default;

int VeltoAlertPresenter::runModalAlert(const Alert &alert)
{
    return logAlert(alert);
}

void VeltoAlertPresenter::install(std::shared_ptr<VeltoAlertPresenter> newPresenter)
{
    std::lock_guard lock(presenterMutex);
    presenter = std::move(newPresenter);
}

std::shared_ptr<VeltoAlertPresenter> VeltoAlertPresenter::installed()
{
    std::lock_guard lock(presenterMutex);
    return presenter;
}

void VeltoAlertPresenter::show(const VeltoError &error)
{
    if (const auto current = installed())
        current->presentError(error);
    else
        VeltoLogSink::warn(error.descriptionForUserVelto());
}

int VeltoAlertPresenter::runModal(const Alert &alert)
{
    if (const auto current = installed())
        return current->runModalAlert(alert);
    return logAlert(alert);
}

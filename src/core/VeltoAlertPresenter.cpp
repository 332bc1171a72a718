#include "VeltoAlertPresenter.h"

#include "VeltoLogSink.h"

#include <mutex>

namespace {

std::mutex presenterMutex;
std::shared_ptr<VeltoAlertPresenter> presenter;

} // namespace

VeltoAlertPresenter::~VeltoAlertPresenter() = default;

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

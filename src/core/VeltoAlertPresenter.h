#pragma once

/**
 * \file VeltoAlertPresenter.h
 * \brief How code without a screen shows an error to the user.
 *
 * VeltoCore links only Qt6::Core, yet a few of its operations must tell the user something. They call
 * VeltoAlertPresenter::show(); an application that links VeltoCoreGui installs a presenter that shows a
 * message box (VeltoMessageBoxPresenter), and without one the text goes to the log as a warning.
 */

#include "VeltoError.h"
#include "veltocore_export.h"

#include <memory>

/// VeltoAlertPresenter: shows errors to the user. Implementations are called on the main thread.
class VELTOCORE_EXPORT VeltoAlertPresenter
{
public:
    virtual ~VeltoAlertPresenter();

    /// presentError: shows \a error (its descriptionForUserVelto()) without blocking the caller.
    virtual void presentError(const VeltoError &error) = 0;

    /// install: makes \a presenter the process's presenter; nullptr removes it.
    static void install(std::shared_ptr<VeltoAlertPresenter> presenter);
    /// installed: the process's presenter, or nullptr.
    [[nodiscard]] static std::shared_ptr<VeltoAlertPresenter> installed();
    /// show: hands \a error to the installed presenter, or logs "*** " and its user-facing text without one.
    static void show(const VeltoError &error);
};

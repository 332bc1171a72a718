// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

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

#include <QStringList>

#include <memory>

/// VeltoAlertPresenter: shows errors to the user. Implementations are called on the main thread.
class VELTOCORE_EXPORT VeltoAlertPresenter
{
public:
    /// Alert: the texts of a modal alert; the first button is the default one.
    struct Alert
    {
        QString messageText;
        QString informativeText;
        QStringList buttonTitles; ///< in order; none shows one "OK" button
    };

    /// The response for the first button of an alert; the n-th button answers FirstButtonReturn + n - 1.
    static constexpr int FirstButtonReturn = 1000;
    /// The response when no button was chosen (the alert was only logged).
    static constexpr int NoResponse = 0;

    virtual ~VeltoAlertPresenter();

    /// presentError: shows \a error (its descriptionForUserVelto()) without blocking the caller.
    virtual void presentError(const VeltoError &error) = 0;

    /**
     * runModalAlert: shows \a alert and waits until the user chooses a button.
     * \return FirstButtonReturn for the first button, FirstButtonReturn + 1 for the second, and so on.
     * This implementation, for presenters that cannot ask, logs the alert and answers NoResponse.
     */
    [[nodiscard]] virtual int runModalAlert(const Alert &alert);

    /// install: makes \a presenter the process's presenter; nullptr removes it.
    static void install(std::shared_ptr<VeltoAlertPresenter> presenter);
    /// installed: the process's presenter, or nullptr.
    [[nodiscard]] static std::shared_ptr<VeltoAlertPresenter> installed();
    /// show: hands \a error to the installed presenter, or logs "*** " and its user-facing text without one.
    static void show(const VeltoError &error);
    /**
     * runModal: runs \a alert through the installed presenter (on the calling thread, which must be the
     * main thread); without one, logs "*** ", the message text and the informative text, and answers NoResponse.
     */
    [[nodiscard]] static int runModal(const Alert &alert);
};

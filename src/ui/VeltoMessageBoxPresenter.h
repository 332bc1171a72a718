// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoMessageBoxPresenter.h
 * \brief Shows the errors VeltoCore reports to the user in a message box.
 *
 * \code
 * VeltoMessageBoxPresenter::installAsPresenter();   // once, after QApplication exists
 * \endcode
 */

#include "VeltoAlertPresenter.h"
#include "veltocoregui_export.h"

/**
 * \brief VeltoMessageBoxPresenter: a VeltoAlertPresenter that opens warning QMessageBoxes shortened to fit
 * on the screen (velto::ensureAlertFitsOnScreenVelto()): errors as a sheet on the window for sheets of
 * the active window (velto::windowForSheet()) when there is one, else application-modal, in both cases
 * without blocking the caller; alerts application-modal until the user answers. Needs a QApplication.
 */
class VELTOCOREGUI_EXPORT VeltoMessageBoxPresenter : public VeltoAlertPresenter
{
public:
    VeltoMessageBoxPresenter();

    /// Opens a message box whose text is the error's descriptionForUserVelto(); it is deleted when it ends.
    void presentError(const VeltoError &error) override;

    /**
     * Runs an application-modal warning QMessageBox with the alert's texts and buttons, the first one the
     * default; a button titled "Cancel" is also the one Escape chooses.
     */
    [[nodiscard]] int runModalAlert(const Alert &alert) override;

    /// installAsPresenter: installs a new VeltoMessageBoxPresenter as the process's presenter.
    static void installAsPresenter();
};

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
 * \brief VeltoMessageBoxPresenter: a VeltoAlertPresenter that opens a warning QMessageBox, shortened to
 * fit on the screen (velto::ensureAlertFitsOnScreenVelto()): as a sheet on the window for sheets of the
 * active window (velto::windowForSheet()) when there is one, else application-modal, in both cases
 * without blocking the caller. Needs a QApplication.
 */
class VELTOCOREGUI_EXPORT VeltoMessageBoxPresenter : public VeltoAlertPresenter
{
public:
    VeltoMessageBoxPresenter();

    /// Opens a message box whose text is the error's descriptionForUserVelto(); it is deleted when it ends.
    void presentError(const VeltoError &error) override;

    /// installAsPresenter: installs a new VeltoMessageBoxPresenter as the process's presenter.
    static void installAsPresenter();
};

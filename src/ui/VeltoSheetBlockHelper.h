// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSheetBlockHelper.h
 * \brief VeltoSheetBlockHelper: runs one dialog as a sheet on a parent window and calls a block with
 * the response when the sheet ends.
 *
 * A sheet here is a window-modal QDialog (QDialog::open()) whose parent is the window it belongs to.
 * The helper keeps itself alive from the beginning of the sheet to its end, and calls its block exactly
 * once, however the sheet ends: endSheet() with a code, the user closing the dialog (its finished()
 * code: a QMessageBox's button, Accepted or Rejected), or the dialog being deleted while up (Rejected).
 * Most callers use velto::beginSheetVelto() or velto::showWithWindowVelto() instead.
 *
 * \code
 * auto helper = VeltoSheetBlockHelper::initWithDidEndBlock([](qint64 code) { qInfo() << "ended with" << code; });
 * helper->beginSheet(dialog, documentWindow);   // returns at once
 * \endcode
 *
 * Main thread only, like all windows.
 */

#include "veltocoregui_export.h"

#include <QtGlobal>

#include <functional>
#include <memory>

class QDialog;
class QMessageBox;
class QWidget;

class VELTOCOREGUI_EXPORT VeltoSheetBlockHelper : public std::enable_shared_from_this<VeltoSheetBlockHelper>
{
public:
    /// The block a sheet ends with; it takes the response code.
    using DidEndBlock = std::function<void(qint64 returnCode)>;

    /// initWithDidEndBlock: a helper that will call (a copy of) \a block, which may be empty.
    [[nodiscard]] static std::shared_ptr<VeltoSheetBlockHelper> initWithDidEndBlock(DidEndBlock block);
    ~VeltoSheetBlockHelper();
    VeltoSheetBlockHelper(const VeltoSheetBlockHelper &) = delete;
    VeltoSheetBlockHelper &operator=(const VeltoSheetBlockHelper &) = delete;

    /**
     * beginSheet: makes \a parent the parent of \a sheet (keeping its window flags), opens it window-modal
     * and returns at once; from here until the end the helper keeps itself alive. The sheet stays the
     * caller's (or its new parent's) to delete. A helper runs one sheet: a second call, or null
     * arguments, do nothing.
     */
    void beginSheet(QDialog *sheet, QWidget *parent);
    /**
     * beginSheetAlert: beginSheet() for an alert: a QMessageBox is a dialog whose finished() code is the
     * code of the button the user chose, so the alert form needs nothing more.
     */
    void beginSheetAlert(QMessageBox *alert, QWidget *parent);
    /**
     * endSheet: ends the sheet this helper runs with \a returnCode: calls the block once with the code,
     * releases it, closes the sheet (QDialog::done(), when it is still shown) and releases the helper.
     * Nothing for another dialog or a sheet that already ended.
     */
    void endSheet(QDialog *sheet, qint64 returnCode);

    /// isSheetUp: whether the helper's sheet has begun and not yet ended.
    [[nodiscard]] bool isSheetUp() const;

private:
    explicit VeltoSheetBlockHelper(DidEndBlock block);

    class Private;
    std::unique_ptr<Private> const d;
};

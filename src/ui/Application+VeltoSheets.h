// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Application+VeltoSheets.h
 * \brief Sheets that work with or without a parent window: with one, a window-modal dialog that ends
 * with a block; without one, an application-modal dialog run until it is stopped.
 *
 * \code
 * velto::beginSheetVelto(exportDialog, documentWindow, [](qint64 code) { if (code == 1) startExport(); });
 * ...
 * velto::endSheetVelto(exportDialog, 1);   // the block runs with 1, the dialog closes
 * \endcode
 *
 * Main thread only. The dialogs stay their owners' to delete.
 */

#include "veltocoregui_export.h"

#include <QtGlobal>

#include <functional>

class QDialog;
class QWidget;

namespace velto {

/**
 * beginSheetVelto: shows \a sheet and, when it ends, calls \a completionHandler (which may be empty)
 * with the response code.
 * - With a \a parent: a VeltoSheetBlockHelper opens the sheet window-modal on \a parent and the call
 *   returns at once; the helper is kept in the process's sheet map under \a sheet until the sheet ends
 *   (endSheetVelto(), the user closing it, or its deletion, which ends it as QDialog::Rejected).
 * - Without one: the sheet runs application-modal (QDialog::exec()) until it is stopped, and the block
 *   is called with the response before the call returns.
 * A null \a sheet, or one already up as a sheet on a parent, does nothing.
 */
VELTOCOREGUI_EXPORT void beginSheetVelto(QDialog *sheet, QWidget *parent,
                                         const std::function<void(qint64 returnCode)> &completionHandler);

/**
 * endSheetVelto: ends \a sheet with \a returnCode. A sheet begun on a parent by beginSheetVelto() ends
 * through its helper (the block runs once with the code) and leaves the sheet map. Otherwise the
 * innermost modal dialog (QApplication::activeModalWidget()) is stopped with the code, which ends the
 * parentless form of beginSheetVelto() and any other modal loop.
 */
VELTOCOREGUI_EXPORT void endSheetVelto(QDialog *sheet, qint64 returnCode);

} // namespace velto

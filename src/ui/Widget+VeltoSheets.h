// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Widget+VeltoSheets.h
 * \brief Finding the window on which a sheet belongs, from a window controller, a window or any widget.
 *
 * A document may want its sheets on one particular window (VeltoDocument::windowForSheet()); these
 * lookups honour that, so a sheet begun from any view of the document lands there.
 *
 * \code
 * velto::showWithWindowVelto(alert, velto::windowForSheet(button), {});
 * \endcode
 */

#include "veltocoregui_export.h"

class QWidget;
class VeltoWindowController;

namespace velto {

/**
 * windowForSheet: the window for sheets of \a controller: its document's (VeltoDocument::windowForSheet())
 * when it has a document and that is a widget, else the controller's own window when that is a widget;
 * nullptr otherwise.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QWidget *windowForSheet(VeltoWindowController *controller);

/**
 * windowForSheet: the window for sheets of \a widget's window (QWidget::window(), the widget itself for
 * a window): its window controller's (VeltoWindowController::windowControllerForWindow()) when that
 * gives one, else the window itself. nullptr for nullptr.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QWidget *windowForSheet(QWidget *widget);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Widget+VeltoSheets.h"

#include "VeltoDocument.h"
#include "VeltoWindowController.h"

#include <QWidget>

namespace velto {

QWidget *windowForSheet(VeltoWindowController *controller)
{
    if (!controller)
        return nullptr;
    if (const VeltoDocument *document = controller->document()) {
        if (auto *window = qobject_cast<QWidget *>(document->windowForSheet()))
            return window;
    }
    return qobject_cast<QWidget *>(controller->window());
}

QWidget *windowForSheet(QWidget *widget)
{
    if (!widget)
        return nullptr;
    QWidget *window = widget->window();
    if (QWidget *forSheet = windowForSheet(VeltoWindowController::windowControllerForWindow(window)))
        return forSheet;
    return window;
}

} // namespace velto

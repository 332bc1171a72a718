// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDocument.h"

#include "VeltoWindowController.h"

VeltoDocument::~VeltoDocument() = default;

QObject *VeltoDocument::windowForSheet() const
{
    for (VeltoWindowController *controller : windowControllers()) {
        if (controller && controller->isWindowLoaded())
            return controller->window();
    }
    return nullptr;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoWindowController.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

namespace {

// The window keeps a pointer back to its controller as a dynamic property; the controller clears it
// when it goes first, and a window that goes first takes the property with it.
constexpr char ControllerProperty[] = "_velto_windowController";

} // namespace

class VeltoWindowController::Private
{
public:
    QPointer<QObject> window;
};

VeltoWindowController::VeltoWindowController() : d(std::make_unique<Private>()) {}

VeltoWindowController::~VeltoWindowController()
{
    attachWindow(nullptr);
}

VeltoDocument *VeltoWindowController::document() const
{
    return nullptr;
}

void VeltoWindowController::attachWindow(QObject *window)
{
    if (d->window && windowControllerForWindow(d->window) == this)
        d->window->setProperty(ControllerProperty, QVariant());
    d->window = window;
    if (window)
        window->setProperty(ControllerProperty, QVariant::fromValue(static_cast<void *>(this)));
}

VeltoWindowController *VeltoWindowController::windowControllerForWindow(const QObject *window)
{
    return window ? static_cast<VeltoWindowController *>(window->property(ControllerProperty).value<void *>()) : nullptr;
}

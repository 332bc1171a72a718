// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoWindowController.h
 * \brief VeltoWindowController: what the library needs to know about a controller of one window.
 *
 * The host application implements it on whatever owns a document's window (see VeltoDocument.h). A
 * window is any QObject that stands for one: a top-level QWidget or a QWindow. The controller names
 * its window with attachWindow() once it has made it, so that windowControllerForWindow() can find
 * the controller from the window.
 */

#include "veltocore_export.h"

#include <memory>

class QObject;
class VeltoDocument;

/// VeltoWindowController: owns (or at least controls) one window, which may not be made yet.
class VELTOCORE_EXPORT VeltoWindowController
{
public:
    virtual ~VeltoWindowController();

    /// isWindowLoaded: whether the window has been made; asking must not make it.
    [[nodiscard]] virtual bool isWindowLoaded() const = 0;
    /// window: the controller's window, made on first use if need be; nullptr when it has none.
    [[nodiscard]] virtual QObject *window() = 0;
    /// document: the document the window shows, or nullptr (the default). Not owned.
    [[nodiscard]] virtual VeltoDocument *document() const;

    /**
     * attachWindow: records this controller as the controller of \a window, for
     * windowControllerForWindow(). The record ends when either is destroyed or another window is
     * attached; nullptr ends it.
     */
    void attachWindow(QObject *window);

    /// windowControllerForWindow: the controller that attached \a window, or nullptr.
    [[nodiscard]] static VeltoWindowController *windowControllerForWindow(const QObject *window);

protected:
    VeltoWindowController();

private:
    VeltoWindowController(const VeltoWindowController &) = delete;
    VeltoWindowController &operator=(const VeltoWindowController &) = delete;

    class Private;
    std::unique_ptr<Private> const d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoExceptionReportingApplication.h
 * \brief VeltoExceptionReportingApplication: an application class whose event delivery reports the
 * exceptions that escape event handlers to VeltoExceptionHandler.
 *
 * Qt delivers every event of every thread through QCoreApplication::notify(), so overriding it is the one
 * place that surrounds each handler call; an event filter runs before the handler and cannot see what it
 * throws. Use it with the application class the program needs:
 *
 * \code
 * VeltoExceptionReportingApplication<QApplication> app(argc, argv);
 * VeltoExceptionHandler::instance()->enableReportAllUncaughtExceptions();
 * return app.exec();
 * \endcode
 *
 * Until the handler is enabled, exceptions pass through unchanged. Once it is, an escaping exception is
 * reported and dropped, notify() returns false and the event loop carries on.
 */

#include "VeltoExceptionHandler.h"

#include <QCoreApplication>

#include <exception>

/// VeltoExceptionReportingApplication: \a Application (QCoreApplication, QGuiApplication or QApplication) with notify() reporting.
template<typename Application>
class VeltoExceptionReportingApplication : public Application
{
public:
    using Application::Application;

    /// notify: delivers the event; an exception escaping it is reported and dropped once the handler is enabled.
    bool notify(QObject *receiver, QEvent *event) override
    {
        try {
            return Application::notify(receiver, event);
        } catch (...) {
            if (!VeltoExceptionHandler::instance()->reportTopLevelException(std::current_exception()))
                throw;
            return false;
        }
    }
};

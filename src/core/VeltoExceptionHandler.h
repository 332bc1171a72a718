// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoExceptionHandler.h
 * \brief VeltoExceptionHandler: turns exceptions that escape an event handler, and exceptions nobody
 * catches, into assertion records handed to the host, and lets code that expects exceptions switch that
 * reporting off for its thread.
 *
 * Two hooks feed it once enableReportAllUncaughtExceptions() has been called: the application's notify()
 * (use VeltoExceptionReportingApplication<QApplication> as the application class) for exceptions escaping
 * event delivery, after which the event loop carries on; and a std::terminate handler for exceptions nobody
 * catches, after which the process ends. Each report becomes a VeltoAssertionInfo of type 2 handed to the
 * function installed with setReportHandOff().
 *
 * \code
 * VeltoExceptionReportingApplication<QApplication> app(argc, argv);
 * VeltoExceptionHandler::instance()->setReportHandOff([](const std::shared_ptr<VeltoAssertionInfo> &record) {
 *     crashLog.append(record->description());
 * });
 * VeltoExceptionHandler::instance()->enableReportAllUncaughtExceptions();
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>

#include <exception>
#include <functional>
#include <memory>

class VeltoAssertionInfo;
class VeltoException;

/// The user-friendly message of a record made for an exception.
inline constexpr QLatin1StringView VeltoExceptionHandlerUnexpectedExceptionMessage{"unexpected exception"};

/**
 * VeltoExceptionHandler_PerThreadDisabledCount: the calling thread's count of reasons not to report
 * exceptions, after adding \a delta (0 only reads). The count is unsigned and not clamped: one end too
 * many wraps around and reads back as -1, which keeps reporting off until another begin brings it to 0.
 */
VELTOCORE_EXPORT qint64 VeltoExceptionHandler_PerThreadDisabledCount(qint64 delta);

/**
 * \brief VeltoExceptionHandler: the process's exception reporter (one instance, made on first use).
 *
 * Safe on any thread: hooks run on the thread where the exception occurred, and the disabled count is the
 * calling thread's own.
 */
class VELTOCORE_EXPORT VeltoExceptionHandler
{
public:
    /// What receives each report; called on the thread of the exception, with reporting off on that thread.
    using ReportHandOff = std::function<void(const std::shared_ptr<VeltoAssertionInfo> &record)>;

    /// instance: the process's handler, made on the first call (from any thread) and never destroyed.
    [[nodiscard]] static VeltoExceptionHandler *instance();

    /**
     * enableReportAllUncaughtExceptions: on the first call, installs the terminate handler and switches on
     * the notify() hook of VeltoExceptionReportingApplication; later calls do nothing. There is no way back.
     */
    void enableReportAllUncaughtExceptions();
    /**
     * enableReportAllUncaughtExceptionsOnClass: does nothing. Only the instance's
     * enableReportAllUncaughtExceptions() installs the hooks; this form stays empty for callers that use it.
     */
    static void enableReportAllUncaughtExceptionsOnClass();
    /// enabled: whether enableReportAllUncaughtExceptions() has been called.
    [[nodiscard]] bool enabled() const;

    /// setReportHandOff: installs \a handOff for the records of later reports; an empty function drops them.
    void setReportHandOff(ReportHandOff handOff);

    /**
     * shouldIgnoreException: whether \a exception is of a kind known to be harmless: a name among
     * "NSObjectInaccessibleException", "NSDestinationInvalidException", "NSPortTimeoutException",
     * "NSInvalidSendPortException", "NSInvalidReceivePortException", "NSPortSendException",
     * "NSPortReceiveException" and "NSAccessibilityException"; an "NSInternalInconsistencyException" whose
     * reason contains "bridge object echoes disallowed"; or any other exception whose reason contains
     * "layout constraints are not satisfiable".
     */
    [[nodiscard]] bool shouldIgnoreException(const VeltoException &exception) const;

    /**
     * reportException: unless the exception is ignored or reporting is off on this thread, builds a record
     * (type 2; failed expression = the reason; file name = the name; line = the outermost return address;
     * the exception's call stack, or the current one when it has none; "unexpected exception") and hands it
     * off, with reporting off on this thread meanwhile. A VeltoException thrown by the hand-off is dropped;
     * any other exception passes on.
     */
    void reportException(const VeltoException &exception);
    /// reportException: the same for any std::exception (name = its type's name, reason = what(), current stack).
    void reportException(const std::exception &exception);

    /**
     * reportTopLevelException: reports \a exception, which escaped the delivery of an event, when the handler
     * is enabled. \return whether the caller should drop it: true when enabled, false for a null
     * \a exception (a foreign one, such as a thread's cancellation); the notify() hook of
     * VeltoExceptionReportingApplication lets it pass on otherwise.
     */
    [[nodiscard]] bool reportTopLevelException(std::exception_ptr exception);

    /// isDisabledExceptionReporting: whether the calling thread's disabled count is not 0.
    [[nodiscard]] bool isDisabledExceptionReporting() const;
    /// beginDisableExceptionReporting: adds 1 to the calling thread's disabled count.
    void beginDisableExceptionReporting();
    /// endDisableExceptionReporting: subtracts 1 from the calling thread's disabled count (not clamped).
    void endDisableExceptionReporting();

    /**
     * disableExceptionReportingWhileTryingBlock: runs \a tryBlock with reporting off on this thread. A
     * VeltoException it throws goes to \a catchBlock (dropped when there is none); any other exception, and
     * one thrown by \a catchBlock, passes on after \a finallyBlock has run. \a finallyBlock always runs, then
     * reporting is switched back; an exception thrown by \a finallyBlock passes on in place of any pending one.
     */
    static void disableExceptionReportingWhileTryingBlock(const std::function<void()> &tryBlock,
                                                          const std::function<void(const VeltoException &)> &catchBlock = {},
                                                          const std::function<void()> &finallyBlock = {});

private:
    VeltoExceptionHandler();
    ~VeltoExceptionHandler();

    /// reportExceptionHandingOff: reportException(); true when a record went to the hand-off.
    [[nodiscard]] bool reportExceptionHandingOff(const VeltoException &exception);
    /// reportUncaughtException: the terminate handler.
    [[noreturn]] static void reportUncaughtException();

    class Private;
    std::unique_ptr<Private> const d;
};

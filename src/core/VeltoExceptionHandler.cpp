// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoExceptionHandler.h"

#include "VTSymbols_p.h"
#include "VeltoAssertionInfo.h"
#include "VeltoException.h"

#include <QSet>

#include <cxxabi.h>

#include <atomic>
#include <cstdlib>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

// Stands for the thread dictionary entry "com.velto.exceptionHandler.disabledCount": absent is 0.
thread_local quint64 disabledCount = 0;

// Reporting stays off on this thread for as long as the scope lives, also when an exception leaves it.
class DisabledReportingScope
{
public:
    DisabledReportingScope() { VeltoExceptionHandler_PerThreadDisabledCount(1); }
    ~DisabledReportingScope() { VeltoExceptionHandler_PerThreadDisabledCount(-1); }
    DisabledReportingScope(const DisabledReportingScope &) = delete;
    DisabledReportingScope &operator=(const DisabledReportingScope &) = delete;
};

const QSet<QString> &ignoredExceptionNames()
{
    static const QSet<QString> names{u"NSObjectInaccessibleException"_s, u"NSDestinationInvalidException"_s,
                                     u"NSPortTimeoutException"_s,        u"NSInvalidSendPortException"_s,
                                     u"NSInvalidReceivePortException"_s, u"NSPortSendException"_s,
                                     u"NSPortReceiveException"_s,        u"NSAccessibilityException"_s};
    return names;
}

// Reads an exception of any type as a VeltoException: our own as it is, a std::exception by its type's
// name and what(), anything else by its type's name alone. Only our own keeps the stack of its throw.
VeltoException asVeltoException(std::exception_ptr exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception &other) {
        return VeltoException::fromException(other);
    } catch (...) {
        const std::type_info *type = abi::__cxa_current_exception_type();
        return VeltoException(type ? VTSymbols::typeName(*type) : u"unknown exception"_s, QString());
    }
}

std::terminate_handler previousTerminateHandler = nullptr;

} // namespace

qint64 VeltoExceptionHandler_PerThreadDisabledCount(qint64 delta)
{
    if (delta != 0)
        disabledCount += quint64(delta);
    return qint64(disabledCount);
}

// Uncaught exceptions end here. An exception handed to the host as a record ends the process without
// the C++ library's own message; anything else (no exception, an ignored one, no hand-off) goes on to the
// handler that was installed before, so that nothing disappears without a trace.
void VeltoExceptionHandler::reportUncaughtException()
{
    if (const std::exception_ptr exception = std::current_exception()) {
        if (instance()->reportExceptionHandingOff(asVeltoException(exception)))
            std::abort();
    }
    if (previousTerminateHandler)
        previousTerminateHandler();
    std::abort();
}

class VeltoExceptionHandler::Private
{
public:
    std::atomic<bool> enabled{false};
    std::once_flag installation;
    std::mutex handOffMutex;
    ReportHandOff handOff;
};

VeltoExceptionHandler::VeltoExceptionHandler() : d(std::make_unique<Private>()) {}

VeltoExceptionHandler::~VeltoExceptionHandler() = default;

VeltoExceptionHandler *VeltoExceptionHandler::instance()
{
    static VeltoExceptionHandler *const handler = new VeltoExceptionHandler;
    return handler;
}

void VeltoExceptionHandler::enableReportAllUncaughtExceptions()
{
    std::call_once(d->installation, [this] {
        previousTerminateHandler = std::set_terminate(&reportUncaughtException);
        d->enabled.store(true);
    });
}

void VeltoExceptionHandler::enableReportAllUncaughtExceptionsOnClass() {}

bool VeltoExceptionHandler::enabled() const
{
    return d->enabled.load();
}

void VeltoExceptionHandler::setReportHandOff(ReportHandOff handOff)
{
    std::lock_guard lock(d->handOffMutex);
    d->handOff = std::move(handOff);
}

bool VeltoExceptionHandler::shouldIgnoreException(const VeltoException &exception) const
{
    const QString name = exception.name();
    if (ignoredExceptionNames().contains(name))
        return true;
    if (name == VeltoInternalInconsistencyException)
        return exception.reason().contains(u"bridge object echoes disallowed"_s);
    return exception.reason().contains(u"layout constraints are not satisfiable"_s);
}

void VeltoExceptionHandler::reportException(const VeltoException &exception)
{
    (void)reportExceptionHandingOff(exception);
}

void VeltoExceptionHandler::reportException(const std::exception &exception)
{
    reportException(VeltoException::fromException(exception));
}

bool VeltoExceptionHandler::reportExceptionHandingOff(const VeltoException &exception)
{
    if (shouldIgnoreException(exception) || isDisabledExceptionReporting())
        return false;
    const DisabledReportingScope reporting; // an exception thrown while reporting is not reported again
    ReportHandOff handOff;
    {
        std::lock_guard lock(d->handOffMutex);
        handOff = d->handOff;
    }
    try {
        auto record = std::make_shared<VeltoAssertionInfo>();
        record->setAssertionType(VeltoAssertionTypeUnexpectedException);
        record->setFailedExpression(exception.reason());
        const QList<quintptr> addresses = exception.callStackReturnAddresses();
        record->setFileLineNumber(addresses.isEmpty() ? 0 : addresses.last());
        record->setFileName(exception.name());
        QStringList frames = exception.callStackSymbols();
        if (frames.isEmpty())
            frames = VTSymbols::callStackSymbols(VTSymbols::returnAddresses());
        record->setStackTrace(frames);
        record->setUserFriendlyMessage(VeltoExceptionHandlerUnexpectedExceptionMessage);
        if (!handOff)
            return false;
        handOff(record);
        return true;
    } catch (const VeltoException &) {
        return false;
    }
}

bool VeltoExceptionHandler::reportTopLevelException(std::exception_ptr exception)
{
    // A foreign exception has no exception_ptr: above all a thread's cancellation (QThread::terminate()),
    // which must go on unwinding its thread; dropped, it would end the process.
    if (!exception || !enabled())
        return false;
    reportException(asVeltoException(exception));
    return true;
}

bool VeltoExceptionHandler::isDisabledExceptionReporting() const
{
    return VeltoExceptionHandler_PerThreadDisabledCount(0) != 0;
}

void VeltoExceptionHandler::beginDisableExceptionReporting()
{
    VeltoExceptionHandler_PerThreadDisabledCount(1);
}

void VeltoExceptionHandler::endDisableExceptionReporting()
{
    VeltoExceptionHandler_PerThreadDisabledCount(-1);
}

void VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(const std::function<void()> &tryBlock,
                                                                      const std::function<void(const VeltoException &)> &catchBlock,
                                                                      const std::function<void()> &finallyBlock)
{
    (void)instance();
    const DisabledReportingScope reporting; // ends after the finally block, however it ends
    std::exception_ptr pending;
    try {
        try {
            tryBlock();
        } catch (const VeltoException &exception) {
            if (catchBlock)
                catchBlock(exception);
        }
    } catch (...) {
        pending = std::current_exception();
    }
    if (finallyBlock)
        finallyBlock(); // what it throws replaces the pending exception
    if (pending)
        std::rethrow_exception(pending);
}

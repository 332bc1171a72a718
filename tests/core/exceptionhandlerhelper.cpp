// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The second process of the exception handler test: ends with an exception nobody catches, after
// handing its record to a hand-off that writes the report to standard error.
//
//   exceptionhandlerhelper velto        a VeltoException thrown from throwIndexBeyondBounds()
//   exceptionhandlerhelper thread       a std::runtime_error escaping a std::thread
//   exceptionhandlerhelper ignored      an exception of an ignored kind
//   exceptionhandlerhelper not-enabled  the same as velto, with the handler never enabled

#include "VeltoAssertionInfo.h"
#include "VeltoException.h"
#include "VeltoExceptionHandler.h"

#include <QCoreApplication>

#include <cstdio>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

// Exported so that the record's call stack can name it.
Q_DECL_EXPORT Q_NEVER_INLINE void throwIndexBeyondBounds()
{
    throw VeltoException(VeltoRangeException, u"index 7 beyond bounds"_s);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString mode = application.arguments().value(1);
    if (mode != u"not-enabled") {
        VeltoExceptionHandler::instance()->setReportHandOff([](const std::shared_ptr<VeltoAssertionInfo> &record) {
            std::fputs(qPrintable(record->description() + u'\n'), stderr);
            std::fflush(stderr);
        });
        VeltoExceptionHandler::instance()->enableReportAllUncaughtExceptions();
    }
    if (mode == u"velto" || mode == u"not-enabled")
        throwIndexBeyondBounds();
    if (mode == u"thread")
        std::thread([] { throw std::runtime_error("worker failed"); }).join();
    if (mode == u"ignored")
        throw VeltoException(u"NSPortTimeoutException"_s, u"timed out"_s);
    return 0;
}

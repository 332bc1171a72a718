// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Exception+VeltoExceptionHandler.h"
#include "VeltoAssertionInfo.h"
#include "VeltoException.h"
#include "VeltoExceptionHandler.h"
#include "VeltoExceptionReportingApplication.h"
#include "veltotest.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <unistd.h>

using namespace Qt::StringLiterals;

// Exported from the test executable so that captured stacks can name it.
Q_DECL_EXPORT Q_NEVER_INLINE void veltoTestThrowIndexBeyondBounds()
{
    throw VeltoException(VeltoRangeException, u"index 7 beyond bounds"_s);
}

namespace {

// Receives the hand-off's records, from any thread.
struct RecordCollector
{
    std::mutex mutex;
    QList<std::shared_ptr<VeltoAssertionInfo>> records;
    QList<QThread *> threads;
    QList<bool> disabledWhileHandedOff;

    void install()
    {
        VeltoExceptionHandler::instance()->setReportHandOff([this](const std::shared_ptr<VeltoAssertionInfo> &record) {
            std::lock_guard lock(mutex);
            records.append(record);
            threads.append(QThread::currentThread());
            disabledWhileHandedOff.append(VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
        });
    }
    qsizetype count()
    {
        std::lock_guard lock(mutex);
        return records.size();
    }
};

// An object whose event handler throws, as a faulty handler in an application would.
class Thrower : public QObject
{
public:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::User)
            veltoTestThrowIndexBeyondBounds();
        if (event->type() == QEvent::Type(QEvent::User + 1))
            throw std::runtime_error("worker failed");
        return QObject::event(event);
    }
};

// An object whose event handler blocks in read(), a point where a thread can be cancelled.
class Reader : public QObject
{
public:
    explicit Reader(int descriptor) : descriptor(descriptor) {}
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        reading = true;
        char byte;
        return ::read(descriptor, &byte, 1) == 1;
    }

    const int descriptor;
    std::atomic<bool> reading{false};
};

} // namespace

class ExceptionHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void eventExceptionsPassThroughUntilEnabled();
    void enablingInstallsOnceAndTheClassFormDoesNothing();
    void exceptionsEscapingEventHandlersAreReportedAndDropped();
    void exceptionsOnAnotherThreadAreReportedThere();
    void aCancelledThreadUnwindsThroughTheHook();

    void ignoredExceptions_data();
    void ignoredExceptions();
    void reportBuildsTheRecordItHandsOff();
    void otherExceptionsAreReportedWithTheirTypeName();
    void nothingIsReportedForIgnoredExceptionsOrWhileDisabled();
    void exceptionsFromTheHandOff();

    void disabledCountNestsPerThreadAndWrapsAround();
    void tryBlockExceptionGoesToTheCatchBlockThenFinally();
    void tryBlockExceptionWithoutCatchBlockIsDropped();
    void catchBlockAndOtherExceptionsPassOnAfterFinally();
    void finallyBlockExceptionReplacesThePendingOne();

    void logWithTitleWritesTheExceptionAndItsStack();

    void uncaughtExceptionEndsTheProcessAfterItsRecord_data();
    void uncaughtExceptionEndsTheProcessAfterItsRecord();

private:
    RecordCollector collector;
};

void ExceptionHandlerTest::init()
{
    collector.install();
}

void ExceptionHandlerTest::cleanup()
{
    VeltoExceptionHandler::instance()->setReportHandOff({});
    std::lock_guard lock(collector.mutex);
    collector.records.clear();
    collector.threads.clear();
    collector.disabledWhileHandedOff.clear();
}

// Runs before anything enables the handler in this process.
void ExceptionHandlerTest::eventExceptionsPassThroughUntilEnabled()
{
    Thrower thrower;
    QEvent event(QEvent::User);
    QVERIFY_THROWS_EXCEPTION(VeltoException, QCoreApplication::sendEvent(&thrower, &event));
    QCOMPARE(collector.count(), 0);
}

void ExceptionHandlerTest::enablingInstallsOnceAndTheClassFormDoesNothing()
{
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    QCOMPARE(handler, VeltoExceptionHandler::instance());
    const std::terminate_handler before = std::get_terminate();
    VeltoExceptionHandler::enableReportAllUncaughtExceptionsOnClass();
    QVERIFY(!handler->enabled());
    QVERIFY(std::get_terminate() == before);

    handler->enableReportAllUncaughtExceptions();
    QVERIFY(handler->enabled());
    const std::terminate_handler installed = std::get_terminate();
    QVERIFY(installed != before);
    handler->enableReportAllUncaughtExceptions();
    QVERIFY(std::get_terminate() == installed);
}

void ExceptionHandlerTest::exceptionsEscapingEventHandlersAreReportedAndDropped()
{
    Thrower thrower;
    QEvent event(QEvent::User);
    QCOMPARE(QCoreApplication::sendEvent(&thrower, &event), false);
    QCOMPARE(collector.count(), 1);
    QCOMPARE(collector.records.at(0)->fileName(), u"NSRangeException"_s);
    QVERIFY(collector.records.at(0)->stackTrace().value(0).contains(u"veltoTestThrowIndexBeyondBounds"_s));

    // A queued call that throws is delivered by the event loop, which carries on.
    QMetaObject::invokeMethod(&thrower, [] { throw std::runtime_error("queued call failed"); }, Qt::QueuedConnection);
    bool laterCallRan = false;
    QMetaObject::invokeMethod(&thrower, [&] { laterCallRan = true; }, Qt::QueuedConnection);
    QTRY_VERIFY(laterCallRan);
    QCOMPARE(collector.count(), 2);
    QCOMPARE(collector.records.at(1)->fileName(), u"std::runtime_error"_s);
    QCOMPARE(collector.records.at(1)->failedExpression(), u"queued call failed"_s);
}

void ExceptionHandlerTest::exceptionsOnAnotherThreadAreReportedThere()
{
    QThread worker;
    Thrower thrower;
    thrower.moveToThread(&worker);
    worker.start();
    QCoreApplication::postEvent(&thrower, new QEvent(QEvent::Type(QEvent::User + 1)));
    QTRY_COMPARE(collector.count(), 1);
    worker.quit();
    QVERIFY(worker.wait());
    QCOMPARE(collector.threads.at(0), &worker);
    QCOMPARE(collector.records.at(0)->failedExpression(), u"worker failed"_s);
    QVERIFY(!VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::aCancelledThreadUnwindsThroughTheHook()
{
    int pipe[2];
    QCOMPARE(::pipe(pipe), 0);
    QThread worker;
    Reader reader(pipe[0]);
    reader.moveToThread(&worker);
    worker.start();
    QCoreApplication::postEvent(&reader, new QEvent(QEvent::User));
    QTRY_VERIFY(reader.reading);
    // Cancellation unwinds the thread through notify(); caught there, it would end the process. Qt's own
    // event loop notes it on the way out.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Qt has caught an exception thrown from an event handler"_s));
    worker.terminate();
    QVERIFY(worker.wait(30000));
    QCOMPARE(collector.count(), 0);
    ::close(pipe[0]);
    ::close(pipe[1]);
}

void ExceptionHandlerTest::ignoredExceptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<bool>("ignored");

    for (const char *name : {"NSObjectInaccessibleException", "NSDestinationInvalidException", "NSPortTimeoutException",
                             "NSInvalidSendPortException", "NSInvalidReceivePortException", "NSPortSendException",
                             "NSPortReceiveException", "NSAccessibilityException"})
        QTest::newRow(name) << QString::fromLatin1(name) << u"anything"_s << true;
    QTest::newRow("ignored name, no reason") << u"NSPortTimeoutException"_s << QString() << true;
    QTest::newRow("names are compared exactly") << u"nsporttimeoutexception"_s << u"anything"_s << false;
    QTest::newRow("inconsistency with bridge echo")
        << u"NSInternalInconsistencyException"_s << u"the bridge object echoes disallowed here"_s << true;
    QTest::newRow("inconsistency with unsatisfiable layout")
        << u"NSInternalInconsistencyException"_s << u"layout constraints are not satisfiable"_s << false;
    QTest::newRow("other exception with unsatisfiable layout")
        << u"NSGenericException"_s << u"Unable: layout constraints are not satisfiable."_s << true;
    QTest::newRow("other exception with bridge echo") << u"NSGenericException"_s << u"bridge object echoes disallowed"_s << false;
    QTest::newRow("ordinary exception") << u"NSRangeException"_s << u"index 3 beyond bounds"_s << false;
    QTest::newRow("no reason") << u"NSRangeException"_s << QString() << false;
}

void ExceptionHandlerTest::ignoredExceptions()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QTEST(VeltoExceptionHandler::instance()->shouldIgnoreException(VeltoException(name, reason)), "ignored");
}

void ExceptionHandlerTest::reportBuildsTheRecordItHandsOff()
{
    const VeltoException exception = veltoThrown(veltoTestThrowIndexBeyondBounds).value();
    const quint64 nextNumber = VeltoAssertionInfo().sequenceNumber() + 1;
    VeltoExceptionHandler::instance()->reportException(exception);
    QCOMPARE(collector.count(), 1);
    const VeltoAssertionInfo &record = *collector.records.at(0);
    QCOMPARE(record.sequenceNumber(), nextNumber);
    QCOMPARE(record.assertionType(), VeltoAssertionTypeUnexpectedException);
    QCOMPARE(record.failedExpression(), u"index 7 beyond bounds"_s);
    QCOMPARE(record.fileName(), u"NSRangeException"_s);
    QCOMPARE(record.fileLineNumber(), quint64(exception.callStackReturnAddresses().last()));
    QCOMPARE(record.stackTrace(), exception.callStackSymbols());
    QCOMPARE(record.userFriendlyMessage(), u"unexpected exception"_s);
    QCOMPARE(record.repeatCount(), 1u);
    QVERIFY(record.description().contains(u"\tin: NSRangeException line "_s));
    QCOMPARE(collector.disabledWhileHandedOff, QList<bool>{true});
    QVERIFY(!VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::otherExceptionsAreReportedWithTheirTypeName()
{
    VeltoExceptionHandler::instance()->reportException(std::out_of_range("vector::at"));
    // A VeltoException seen only as a std::exception keeps its own name and the stack of its throw.
    const VeltoException velto = veltoThrown(veltoTestThrowIndexBeyondBounds).value();
    VeltoExceptionHandler::instance()->reportException(static_cast<const std::exception &>(velto));
    QCOMPARE(collector.count(), 2);
    QCOMPARE(collector.records.at(0)->fileName(), u"std::out_of_range"_s);
    QCOMPARE(collector.records.at(0)->failedExpression(), u"vector::at"_s);
    // Without a stack of its own, the record has the stack of the report.
    QVERIFY(collector.records.at(0)->stackTrace().join(u'\n').contains(u"otherExceptionsAreReportedWithTheirTypeName"_s));
    QCOMPARE(collector.records.at(1)->fileName(), u"NSRangeException"_s);
    QCOMPARE(collector.records.at(1)->stackTrace(), velto.callStackSymbols());
}

void ExceptionHandlerTest::nothingIsReportedForIgnoredExceptionsOrWhileDisabled()
{
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    const quint64 before = VeltoAssertionInfo().sequenceNumber();
    handler->reportException(VeltoException(u"NSPortTimeoutException"_s, u"timed out"_s));
    handler->beginDisableExceptionReporting();
    handler->reportException(VeltoException(VeltoRangeException, u"index 1 beyond bounds"_s));
    handler->endDisableExceptionReporting();
    QCOMPARE(collector.count(), 0);
    // No record was even made: the sequence moved only for the probes.
    QCOMPARE(VeltoAssertionInfo().sequenceNumber(), before + 1);
}

void ExceptionHandlerTest::exceptionsFromTheHandOff()
{
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    int calls = 0;
    handler->setReportHandOff([&calls](const std::shared_ptr<VeltoAssertionInfo> &) {
        ++calls;
        throw VeltoException(VeltoInternalInconsistencyException, u"collector is full"_s);
    });
    handler->reportException(VeltoException(VeltoRangeException, u"first"_s)); // dropped
    QCOMPARE(calls, 1);
    QVERIFY(!handler->isDisabledExceptionReporting());

    handler->setReportHandOff([](const std::shared_ptr<VeltoAssertionInfo> &) { throw std::logic_error("broken collector"); });
    QVERIFY_THROWS_EXCEPTION(std::logic_error, handler->reportException(VeltoException(VeltoRangeException, u"second"_s)));
    QVERIFY(!handler->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::disabledCountNestsPerThreadAndWrapsAround()
{
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    QCOMPARE(VeltoExceptionHandler_PerThreadDisabledCount(0), 0);
    handler->beginDisableExceptionReporting();
    handler->beginDisableExceptionReporting();
    QCOMPARE(VeltoExceptionHandler_PerThreadDisabledCount(0), 2);
    qint64 otherThreadCount = -99;
    bool otherThreadDisabled = true;
    std::thread([&] {
        otherThreadCount = VeltoExceptionHandler_PerThreadDisabledCount(0);
        otherThreadDisabled = handler->isDisabledExceptionReporting();
    }).join();
    QCOMPARE(otherThreadCount, 0);
    QVERIFY(!otherThreadDisabled);
    handler->endDisableExceptionReporting();
    QVERIFY(handler->isDisabledExceptionReporting());
    handler->endDisableExceptionReporting();
    QVERIFY(!handler->isDisabledExceptionReporting());

    // One end too many is kept: the count reads -1 and reporting stays off until a begin.
    handler->endDisableExceptionReporting();
    QCOMPARE(VeltoExceptionHandler_PerThreadDisabledCount(0), -1);
    QVERIFY(handler->isDisabledExceptionReporting());
    QCOMPARE(VeltoExceptionHandler_PerThreadDisabledCount(5), 4);
    QCOMPARE(VeltoExceptionHandler_PerThreadDisabledCount(-4), 0);
    QVERIFY(!handler->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::tryBlockExceptionGoesToTheCatchBlockThenFinally()
{
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    QStringList steps;
    VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(
        [&] {
            steps << u"try %1"_s.arg(handler->isDisabledExceptionReporting());
            veltoTestThrowIndexBeyondBounds();
        },
        [&](const VeltoException &exception) {
            steps << u"catch %1 %2"_s.arg(handler->isDisabledExceptionReporting()).arg(exception.reason());
        },
        [&] { steps << u"finally %1"_s.arg(handler->isDisabledExceptionReporting()); });
    QCOMPARE(steps, (QStringList{u"try 1"_s, u"catch 1 index 7 beyond bounds"_s, u"finally 1"_s}));
    QVERIFY(!handler->isDisabledExceptionReporting());
    QCOMPARE(collector.count(), 0);
}

void ExceptionHandlerTest::tryBlockExceptionWithoutCatchBlockIsDropped()
{
    bool finallyRan = false;
    VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(veltoTestThrowIndexBeyondBounds, {},
                                                                     [&] { finallyRan = true; });
    QVERIFY(finallyRan);
    VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(veltoTestThrowIndexBeyondBounds);
    QVERIFY(!VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::catchBlockAndOtherExceptionsPassOnAfterFinally()
{
    QStringList steps;
    VELTO_COMPARE_THROWN(VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(
                             veltoTestThrowIndexBeyondBounds,
                             [&](const VeltoException &) {
                                 steps << u"catch"_s;
                                 throw VeltoException(VeltoGenericException, u"from the catch block"_s);
                             },
                             [&] { steps << u"finally"_s; }),
                         VeltoGenericException, u"from the catch block"_s);
    QCOMPARE(steps, (QStringList{u"catch"_s, u"finally"_s}));

    steps.clear();
    QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                             VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(
                                 [] { throw std::runtime_error("not ours"); },
                                 [&](const VeltoException &) { steps << u"catch"_s; }, [&] { steps << u"finally"_s; }));
    QCOMPARE(steps, QStringList{u"finally"_s}); // only VeltoExceptions reach the catch block
    QVERIFY(!VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::finallyBlockExceptionReplacesThePendingOne()
{
    try {
        VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(
            [] { throw std::runtime_error("pending"); }, {},
            [] { throw VeltoException(VeltoGenericException, u"from the finally block"_s); });
        QFAIL("nothing passed on");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.reason(), u"from the finally block"_s);
    } catch (const std::runtime_error &) {
        QFAIL("the pending exception passed on instead of the finally block's");
    }
    QVERIFY(!VeltoExceptionHandler::instance()->isDisabledExceptionReporting());
}

void ExceptionHandlerTest::logWithTitleWritesTheExceptionAndItsStack()
{
    const VeltoException exception = veltoThrown(veltoTestThrowIndexBeyondBounds).value();
    QTest::ignoreMessage(QtWarningMsg, "*** EXCEPTION during saving: NSRangeException: index 7 beyond bounds");
    const QStringList frames = exception.callStackSymbols();
    QVERIFY(frames.size() >= 2);
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"^Exception stack: "_s + QRegularExpression::escape(frames.join(u" ||| "_s)) + u'$'));
    velto::logWithTitle(exception, u"saving"_s);
}

void ExceptionHandlerTest::uncaughtExceptionEndsTheProcessAfterItsRecord_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("expected");   // texts standard error holds
    QTest::addColumn<QStringList>("unexpected"); // texts it must not hold

    const QString defaultMessage = u"terminate called after throwing"_s;
    QTest::newRow("VeltoException") << u"velto"_s
                                    << QStringList{u"Assertion #1 at time="_s, u"\tfailed: index 7 beyond bounds \n"_s,
                                                   u"\tin: NSRangeException line "_s,
                                                   u"\tSTACK TRACE:\n\t0   exceptionhandlerhelper  throwIndexBeyondBounds() + "_s}
                                    << QStringList{defaultMessage};
    QTest::newRow("std::runtime_error on a thread")
        << u"thread"_s << QStringList{u"\tfailed: worker failed \n"_s, u"\tin: std::runtime_error line "_s, u"\tSTACK TRACE:\n"_s}
        << QStringList{defaultMessage};
    QTest::newRow("ignored kind") << u"ignored"_s
                                  << QStringList{defaultMessage, u"what():  NSPortTimeoutException: timed out"_s}
                                  << QStringList{u"Assertion #"_s};
    QTest::newRow("handler not enabled") << u"not-enabled"_s
                                         << QStringList{defaultMessage, u"what():  NSRangeException: index 7 beyond bounds"_s}
                                         << QStringList{u"Assertion #"_s};
}

void ExceptionHandlerTest::uncaughtExceptionEndsTheProcessAfterItsRecord()
{
    QFETCH(QString, mode);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, unexpected);

    QProcess helper;
    helper.start(QStringLiteral(VELTO_EXCEPTION_HELPER), {mode});
    QVERIFY2(helper.waitForFinished(60000), qPrintable(helper.errorString()));
    const QString standardError = QString::fromLocal8Bit(helper.readAllStandardError());
    QCOMPARE(helper.exitStatus(), QProcess::CrashExit);
    for (const QString &text : expected)
        QVERIFY2(standardError.contains(text), qPrintable(u"missing \"%1\" in:\n%2"_s.arg(text, standardError)));
    for (const QString &text : unexpected)
        QVERIFY2(!standardError.contains(text), qPrintable(u"unexpected \"%1\" in:\n%2"_s.arg(text, standardError)));
}

int main(int argc, char *argv[])
{
    VeltoExceptionReportingApplication<QCoreApplication> application(argc, argv);
    ExceptionHandlerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "exceptionhandlertest.moc"

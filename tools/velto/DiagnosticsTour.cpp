// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The diagnostics stops of `velto tour`: assertion records, the exception handler at the top of the
// event loop, and zombie objects.

#include "Commands.h"
#include "Tour.h"

#include "Exception+VeltoExceptionHandler.h"
#include "Object+VeltoDispatch.h"
#include "VeltoAssertionInfo.h"
#include "VeltoException.h"
#include "VeltoExceptionHandler.h"
#include "VeltoObjectDealloc.h"
#include "VeltoRandom.h"
#include "VeltoZombie.h"

#include <QEventLoop>
#include <QHash>
#include <QTimer>

#include <chrono>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// A document class of an application, whose deleted objects can become zombies.
class TourDocument : public QObject
{
    Q_OBJECT
    VELTO_OBJECT_DEALLOC(TourDocument)

public:
    Q_INVOKABLE QString title() const { return u"Untitled"_s; }
};

namespace {

constexpr qsizetype ShownFrames = 4;

void sayReport(Tour &tour, const VeltoAssertionInfo &record)
{
    QStringList lines = record.description().split(u'\n');
    const qsizetype stackStart = lines.indexOf(u"\tSTACK TRACE:"_s);
    if (stackStart >= 0 && lines.size() > stackStart + 1 + ShownFrames) {
        const qsizetype hidden = lines.size() - (stackStart + 1 + ShownFrames);
        lines = lines.mid(0, stackStart + 1 + ShownFrames);
        lines.append(u"\t(%1 more frames)"_s.arg(hidden));
    }
    for (QString &line : lines)
        tour.say(u"  | "_s + line.replace(u'\t', u"    "_s));
}

void assertionStop(Tour &tour)
{
    tour.stop(u"Assertion records"_s);
    // What a host's assertion macro makes when "column < columnCount()" fails in TableModel.cpp.
    const auto failure = [](const QString &title) {
        auto record = std::make_shared<VeltoAssertionInfo>();
        record->setFailedExpression(u"column < columnCount()"_s);
        record->setFileName(u"TableModel.cpp"_s);
        record->setFileLineNumber(212);
        record->setOperationTitle(title);
        return record;
    };
    const auto first = failure(u"Paste Rows"_s);
    tour.say(u"record #%1, as a report:"_s.arg(first->sequenceNumber()));
    sayReport(tour, *first);
    tour.say(u"short form: %1"_s.arg(quoted(first->shortDescription())));

    // A collector keeps one record per failure and counts the repeats.
    QHash<QString, std::shared_ptr<VeltoAssertionInfo>> collected;
    for (const auto &record : {first, failure(u"Undo Paste"_s), failure(QString())}) {
        auto &held = collected[record->equalityKey()];
        if (held && held->isSameFailedAssertion(*record))
            held->setRepeatCount(held->repeatCount() + 1);
        else
            held = record;
    }
    tour.say(u"the same check failed twice more (records #2 and #3): the collector holds %1 record under %2, repeat count %3"_s
                 .arg(collected.size())
                 .arg(quoted(first->equalityKey()))
                 .arg(first->repeatCount()));
}

void exceptionHandlerStop(Tour &tour)
{
    tour.stop(u"The exception handler reports what escapes an event handler"_s);
    VeltoExceptionHandler *handler = VeltoExceptionHandler::instance();
    handler->setReportHandOff([&tour](const std::shared_ptr<VeltoAssertionInfo> &record) {
        tour.say(u"the host's hand-off received record #%1 (\"%2\"):"_s.arg(record->sequenceNumber())
                     .arg(record->userFriendlyMessage()));
        sayReport(tour, *record);
    });
    handler->enableReportAllUncaughtExceptions();
    tour.say(u"a queued call asks for a random number in a range too big to count, and throws:"_s);
    QEventLoop loop;
    QTimer::singleShot(0, [] { (void)VeltoRandom_UIntegerBetween(0, std::numeric_limits<quint64>::max()); });
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
    tour.say(u"... and the event loop carried on to the next event."_s);

    const VeltoException timeout(u"NSPortTimeoutException"_s, u"the other side did not answer"_s);
    tour.say(u"an NSPortTimeoutException is ignored: %1"_s.arg(handler->shouldIgnoreException(timeout) ? u"yes"_s : u"no"_s));

    tour.say(u"code that expects an exception switches reporting off while it tries:"_s);
    VeltoExceptionHandler::disableExceptionReportingWhileTryingBlock(
        [&] {
            tour.say(u"  try: reporting off on this thread: %1"_s.arg(handler->isDisabledExceptionReporting() ? u"yes"_s : u"no"_s));
            (void)VeltoRandom_UIntegerBetween(0, std::numeric_limits<quint64>::max());
        },
        [&](const VeltoException &exception) {
            tour.say(u"  catch: %1; written to the log:"_s.arg(exception.name()));
            velto::logWithTitle(exception, u"tour"_s);
        },
        [&] { tour.say(u"  finally: runs last"_s); });
    tour.say(u"afterwards reporting is on again: %1"_s.arg(handler->isDisabledExceptionReporting() ? u"no"_s : u"yes"_s));
    handler->setReportHandOff({});
}

// Hides where a pointer came from: the compiler must not see the use of a deleted object as one.
QObject *dangling(QObject *pointer)
{
    asm volatile("" : "+r"(pointer));
    return pointer;
}

void zombieStop(Tour &tour)
{
    tour.stop(u"Zombie objects catch the use of a deleted object"_s);
    tour.say(u"switching zombies on (an application asks the user first, with VeltoZombie::activateZombies()):"_s);
    VeltoZombie::activateZombiesNow();
    auto *document = new TourDocument;
    delete document;
    QObject *zombie = dangling(document);
    tour.say(u"deleted a TourDocument; its memory is now %1"_s.arg(VeltoZombie::zombieForObject(zombie)->debugDescription()));
    tour.say(u"calling its method \"title\" by name through the dangling pointer:"_s);
    try {
        (void)velto::performSelectorIfResponds(zombie, "title");
    } catch (const VeltoException &exception) {
        tour.say(u"caught %1: %2"_s.arg(exception.name(), exception.reason()));
    }
    // The alert comes 10 ms later from the event loop; without an alert window it is logged.
    QEventLoop loop;
    QTimer::singleShot(50ms, &loop, &QEventLoop::quit);
    loop.exec();
}

const bool diagnosticsStops = registerTourStop(160, assertionStop) && registerTourStop(170, exceptionHandlerStop)
    && registerTourStop(175, zombieStop);

} // namespace

#include "DiagnosticsTour.moc"

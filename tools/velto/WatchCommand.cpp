// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto watch PATH...`: prints each change to the given files as it happens, with the time, until
// interrupted (Ctrl-C or SIGTERM end it normally, with status 0). The tour's file watcher stop lives here
// too.

#include "Commands.h"
#include "Tour.h"

#include "FWFileWatcher.h"
#include "VeltoFileWatcher.h"
#include "VeltoNotificationCenter.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString describeAction(quint32 action)
{
    switch (action) {
    case VeltoFileWatcherActionRename: return u"renamed"_s;
    case VeltoFileWatcherActionWrite: return u"written"_s;
    case VeltoFileWatcherActionDelete: return u"deleted"_s;
    case VeltoFileWatcherActionAttributeChange: return u"attributes changed"_s;
    case VeltoFileWatcherActionSizeIncrease: return u"size increased"_s;
    case VeltoFileWatcherActionLinkCountChange: return u"link count changed"_s;
    case VeltoFileWatcherActionAccessRevocation: return u"access revoked"_s;
    default: return u"action %1"_s.arg(action);
    }
}

// The watcher's delegate: one line per change.
class ChangePrinter : public QObject
{
    Q_OBJECT

public:
    explicit ChangePrinter(QTextStream &out) : out(out) {}

    void print(const QString &what, const QString &path)
    {
        out << QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s) << "  " << what;
        if (!path.isEmpty())
            out << "  " << path;
        out << '\n';
        out.flush();
    }

public slots:
    void fileWatcher(VeltoFileWatcher *, quint32 action, const QString &path) { print(describeAction(action), path); }

private:
    QTextStream &out;
};

// A signal handler may only write to a descriptor; the event loop reads the other end.
int interruptPipe[2] = {-1, -1};

void noteInterrupt(int)
{
    const char byte = 0;
    (void)!::write(interruptPipe[1], &byte, 1);
}

// Lost changes are posted on the watcher's thread: printed on the main thread.
VeltoNotificationCenter::Token printLostChanges(const QString &notification, ChangePrinter &printer)
{
    return VeltoNotificationCenter::defaultCenter()->addObserverForName(
        notification, nullptr, [&printer](const VeltoNotification &posted) {
            const QString path = posted.userInfo().value(FWFileWatcherPathKey).toString();
            const QString what = posted.name() == FWKQueueEventsLostNotification
                ? u"changes lost: the kernel's event queue overflowed"_s
                : u"not watched: the limit of %1 watches is reached"_s.arg(posted.userInfo().value(FWFileWatcherLimitKey).toLongLong());
            QMetaObject::invokeMethod(&printer, [&printer, what, path] { printer.print(what, path); }, Qt::QueuedConnection);
        }, &printer);
}

int runWatch(const CommandLine &line)
{
    for (const QString &path : line.arguments) {
        if (!QFileInfo::exists(path))
            return line.failure(u"no file at \"%1\""_s.arg(path));
    }
    ChangePrinter printer(line.out);
    const auto lost = printLostChanges(FWKQueueEventsLostNotification, printer);
    const auto limited = printLostChanges(FWKQueueWatchLimitReachedNotification, printer);
    const auto forget = qScopeGuard([&] {
        VeltoNotificationCenter::defaultCenter()->removeObserver(lost);
        VeltoNotificationCenter::defaultCenter()->removeObserver(limited);
    });

    VeltoFileWatcher *watcher = VeltoFileWatcher::instance();
    const VeltoFileWatcher::Options options = line.isSet(u"follow-atomic-saves"_s)
        ? VeltoFileWatcher::Option::FollowAtomicSaves : VeltoFileWatcher::Options();
    QList<std::shared_ptr<VTWatchedFileInfo>> tokens;
    const auto unwatch = qScopeGuard([&] {
        for (const auto &token : std::as_const(tokens))
            watcher->removeFileWithToken(token);
    });
    for (const QString &path : line.arguments) {
        VeltoError error;
        tokens << watcher->addFileAtPath(path, 0x7f, &printer, options, &error);
        if (!error.isNull())
            return line.failure(u"cannot watch \"%1\": %2"_s.arg(path, error.localizedDescription()));
        printer.print(u"watching"_s, path);
    }

    if (::pipe2(interruptPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return line.failure(u"cannot prepare for Ctrl-C: %1"_s.arg(QString::fromLocal8Bit(strerror(errno))));
    struct sigaction interrupt = {}, previousInt = {}, previousTerm = {};
    interrupt.sa_handler = noteInterrupt;
    sigemptyset(&interrupt.sa_mask);
    ::sigaction(SIGINT, &interrupt, &previousInt);
    ::sigaction(SIGTERM, &interrupt, &previousTerm);
    QEventLoop loop;
    QSocketNotifier interrupted(interruptPipe[0], QSocketNotifier::Read);
    QObject::connect(&interrupted, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    loop.exec();
    ::sigaction(SIGINT, &previousInt, nullptr);
    ::sigaction(SIGTERM, &previousTerm, nullptr);
    ::close(interruptPipe[0]);
    ::close(interruptPipe[1]);
    printer.print(u"stopped"_s, {});
    return ExitSuccess;
}

// The tour's delegate: remembers what it heard.
class TourFileListener : public QObject
{
    Q_OBJECT

public:
    QStringList heard;

public slots:
    void fileWatcher(VeltoFileWatcher *, quint32 action, const QString &) { heard << describeAction(action); }
};

// Runs the event loop until \a count changes are heard, for at most five seconds; no fixed pause.
QString awaitChanges(TourFileListener &listener, qsizetype count)
{
    const QDeadlineTimer deadline(5000);
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (listener.heard.size() >= count || deadline.hasExpired())
            loop.quit();
    });
    check.start(1);
    loop.exec();
    const QString heard = listener.heard.isEmpty() ? u"nothing within 5 s"_s : listener.heard.join(u", "_s);
    listener.heard.clear();
    return heard;
}

void fileWatcherStop(Tour &tour)
{
    tour.stop(u"Watching a file while it is written, renamed and saved over"_s);
    tour.writeFile(u"notes.txt"_s, "first draft\n");
    TourFileListener listener;
    VeltoFileWatcher *watcher = VeltoFileWatcher::instance();
    const auto token = watcher->addFileAtPath(tour.path(u"notes.txt"_s), 0x7f, &listener,
                                              VeltoFileWatcher::Option::FollowAtomicSaves);
    tour.say(u"watching notes.txt for every kind of change, following atomic saves; another process's"_s);
    tour.say(u"changes would be heard the same way, on the main thread, kinds in a fixed order"_s);

    QFile notes(tour.path(u"notes.txt"_s));
    if (notes.open(QIODevice::ReadWrite) && notes.write("FIRST") == 5)
        notes.close();
    tour.say(u"overwrote its first word in place          -> heard: %1"_s.arg(awaitChanges(listener, 1)));
    QFile::rename(tour.path(u"notes.txt"_s), tour.path(u"notes-old.txt"_s));
    tour.say(u"renamed it to notes-old.txt                -> heard: %1"_s.arg(awaitChanges(listener, 1)));
    tour.say(u"  (the watch stays with the file and reports it under the path it was added with)"_s);
    tour.writeFile(u"notes.txt.new"_s, "second draft\n");
    QFile::rename(tour.path(u"notes.txt.new"_s), tour.path(u"notes.txt"_s));
    tour.say(u"saved a new notes.txt atomically           -> heard: %1"_s.arg(awaitChanges(listener, 1)));
    tour.say(u"  (written beside it and renamed onto the name: the watch moved to the new file)"_s);
    if (notes.open(QIODevice::Append) && notes.write("more\n") == 5)
        notes.close();
    tour.say(u"appended to the new notes.txt              -> heard: %1"_s.arg(awaitChanges(listener, 2)));
    watcher->removeFileWithToken(token);
}

const bool registered = registerCommand({
    .name = "watch",
    .summary = "print changes to files as they happen",
    .synopsis = {"PATH..."},
    .description = "Watches each PATH (a file or a folder) and prints one line per change, as it happens: the "
                   "time, what happened (renamed, written, deleted, attributes changed, size increased, link "
                   "count changed, access revoked) and the path. A renamed file is still watched and reported "
                   "under the path it had. Changes the kernel could not keep up with are reported as lost. "
                   "Runs until interrupted: Ctrl-C (or SIGTERM) stops it with status 0. A PATH that does not "
                   "exist or cannot be watched is an error (status 1).",
    .options = {QCommandLineOption(u"follow-atomic-saves"_s,
                                   u"When another file is renamed onto a watched name (an atomic save), watch "
                                   "that file from then on and report a write."_s)},
    .arguments = {1, -1},
    .run = runWatch,
}) && registerTourStop(500, fileWatcherStop);

} // namespace

#include "WatchCommand.moc"

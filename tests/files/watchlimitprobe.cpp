// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The file watcher's limits, met for real without touching the machine's: this program enters a user
// namespace of its own, lowers the inotify limits of that namespace, and prints what the watcher does.
//
//   watchlimitprobe WATCHES FILE...
//
// With at most WATCHES watches, it adds each FILE to a queue ("add FILE: ok" or "add FILE: error CODE:
// TEXT"), printing log lines ("log: ...") and limit notifications ("notification: ..."), then "watched: N".
// With no inotify instance left, it prints what making a queue answers ("init: error CODE: TEXT") and
// whether a VeltoFileWatcher still hands out tokens. Exits with 77 when no user namespace can be made.

#include "FWFileWatcher.h"
#include "FWKQueue.h"
#include "VeltoFileWatcher.h"
#include "VeltoNotificationCenter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <cerrno>
#include <cstring>
#include <sched.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QTextStream out(stdout);

bool writeTo(const char *file, const QByteArray &text)
{
    QFile target(QString::fromLatin1(file));
    return target.open(QIODevice::WriteOnly) && target.write(text) == text.size() && target.flush();
}

// A namespace in which this process is root, so that it may set the namespace's own limits.
QString enterUserNamespace()
{
    const uid_t uid = getuid();
    const gid_t gid = getgid();
    if (unshare(CLONE_NEWUSER) != 0)
        return u"unshare: "_s + QString::fromLocal8Bit(strerror(errno));
    if (!writeTo("/proc/self/setgroups", "deny") || !writeTo("/proc/self/uid_map", "0 " + QByteArray::number(uid) + " 1")
        || !writeTo("/proc/self/gid_map", "0 " + QByteArray::number(gid) + " 1"))
        return u"cannot map this user into the namespace"_s;
    return {};
}

void printLogLine(QtMsgType, const QMessageLogContext &, const QString &message)
{
    out << "log: " << message << '\n';
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    // Before any thread exists: a process with threads cannot enter a user namespace.
    if (const QString problem = enterUserNamespace(); !problem.isEmpty()) {
        out << problem << '\n';
        return 77;
    }
    if (!writeTo("/proc/sys/user/max_inotify_watches", argv[1])) {
        out << "cannot lower the watch limit of the namespace\n";
        return 77;
    }
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(printLogLine);
    const auto token = VeltoNotificationCenter::defaultCenter()->addObserverForName(
        FWKQueueWatchLimitReachedNotification, nullptr, [](const VeltoNotification &notification) {
            out << "notification: " << notification.name()
                << " path=" << notification.userInfo().value(FWFileWatcherPathKey).toString()
                << " limit=" << notification.userInfo().value(FWFileWatcherLimitKey).toString() << '\n';
        });

    auto queue = FWKQueue::init();
    if (!queue)
        return 1;
    for (int i = 2; i < argc; ++i) {
        const QString file = QString::fromLocal8Bit(argv[i]);
        VeltoError error;
        const bool added = queue->addPath(file, &error); // its log line and notification come first
        out << "add " << file << ": "
            << (added ? u"ok"_s : u"error %1: %2"_s.arg(error.code()).arg(error.localizedDescription())) << '\n';
    }
    out << "watched: " << queue->watchedPaths().size() << '\n';

    if (!writeTo("/proc/sys/user/max_inotify_instances", "0"))
        return 1;
    VeltoError error;
    if (FWKQueue::init(&error))
        out << "init: a queue\n";
    else
        out << "init: error " << error.code() << ": " << error.localizedDescription() << '\n';
    VeltoFileWatcher watcher;
    VeltoError refusal;
    const bool tokenMade = bool(watcher.addFileAtPath(QString::fromLocal8Bit(argv[2]), 2, &watcher, {}, &refusal));
    out << "watcher without a queue: " << (tokenMade ? "token" : "none") << ", error " << refusal.code() << '\n';
    out.flush();
    VeltoNotificationCenter::defaultCenter()->removeObserver(token);
    return 0;
}

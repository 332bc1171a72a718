// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// What the file watcher's tests share: running their other process (tests/files/filechanger.cpp), whose
// changes the watcher must see as real kernel events (define VELTO_FILE_CHANGER as its path), and waiting
// for deliveries.

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

#ifdef VELTO_FILE_CHANGER
/// runFileChanger: runs the changer with \a arguments to the end; empty on success, else what went wrong.
/// The calling thread does nothing else meanwhile (a test may rely on that to hold back deliveries).
[[nodiscard]] inline QString runFileChanger(const QStringList &arguments, int timeoutMilliseconds = 120000)
{
    QProcess changer;
    changer.start(QStringLiteral(VELTO_FILE_CHANGER), arguments);
    if (!changer.waitForFinished(timeoutMilliseconds))
        return QStringLiteral("the file changer did not finish: ") + changer.errorString();
    if (changer.exitStatus() != QProcess::NormalExit || changer.exitCode() != 0)
        return QString::fromLocal8Bit(changer.readAllStandardError());
    return {};
}
#endif

/// runEventLoopUntil: runs the event loop until \a done answers true or \a timeoutMilliseconds have passed;
/// whether it is done. Unlike QTest::qWaitFor, it never pauses between events, so a watcher thread that
/// waits for each of its calls to run on the main thread is not held to one call per pause.
[[nodiscard]] inline bool runEventLoopUntil(const std::function<bool()> &done, int timeoutMilliseconds = 60000)
{
    if (done())
        return true;
    const QDeadlineTimer deadline(timeoutMilliseconds);
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (done() || deadline.hasExpired())
            loop.quit();
    });
    check.start(5);
    loop.exec();
    return done();
}

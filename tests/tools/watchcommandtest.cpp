// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto watch` as a user runs it: changes made by another process are printed as they happen, and
// Ctrl-C (SIGINT) ends it cleanly with status 0.

#include "watchertestsupport.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

class WatchCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void printsChangesUntilInterrupted_data();
    void printsChangesUntilInterrupted();

private:
    // Waits until the watch has printed \a count lines.
    static bool waitForLines(QProcess &watch, QStringList &lines, qsizetype count)
    {
        return runEventLoopUntil([&] {
            lines += QString::fromUtf8(watch.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
            return lines.size() >= count || watch.state() == QProcess::NotRunning;
        }) && lines.size() >= count;
    }
};

void WatchCommandTest::printsChangesUntilInterrupted_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("changes"); // %f: the watched file
    QTest::addColumn<QStringList>("expected"); // what is printed after "watching", before "stopped"

    QTest::newRow("append") << QStringList() << QStringList{u"append"_s, u"%f"_s, u"x"_s}
                                   << QStringList{u"written"_s, u"size increased"_s};
    QTest::newRow("atomic save, not followed") << QStringList() << QStringList{u"save"_s, u"%f"_s, u"new"_s}
                                               << QStringList{u"deleted"_s, u"link count changed"_s};
    QTest::newRow("atomic save, followed") << QStringList{u"--follow-atomic-saves"_s}
                                           << QStringList{u"save"_s, u"%f"_s, u"new"_s} << QStringList{u"written"_s};
}

void WatchCommandTest::printsChangesUntilInterrupted()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, changes);
    QFETCH(QStringList, expected);
    QTemporaryDir dir;
    const QString file = dir.filePath(u"notes.txt"_s);
    QFile create(file);
    QVERIFY(create.open(QIODevice::WriteOnly) && create.write("hello\n") == 6);
    create.close();

    QProcess watch;
    watch.start(QStringLiteral(VELTO_TOOL), QStringList{u"watch"_s} + options + QStringList{file});
    QStringList lines;
    QVERIFY2(waitForLines(watch, lines, 1), watch.readAllStandardError().constData());
    changes.replaceInStrings(u"%f"_s, file);
    QCOMPARE(runFileChanger(changes), QString());
    QVERIFY2(waitForLines(watch, lines, 1 + expected.size()), qPrintable(lines.join(u'\n')));

    ::kill(pid_t(watch.processId()), SIGINT);
    QVERIFY(watch.waitForFinished(30000));
    QCOMPARE(watch.exitStatus(), QProcess::NormalExit);
    QCOMPARE(watch.exitCode(), 0);
    lines += QString::fromUtf8(watch.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(QString::fromUtf8(watch.readAllStandardError()), QString());

    // Each line: the time, what happened, and the path.
    const QRegularExpression form(u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  ([a-z ]+?)(?:  (.+))?$"_s);
    QStringList happened;
    for (const QString &line : std::as_const(lines)) {
        const auto match = form.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.captured(2), match.captured(1) == u"stopped" ? QString() : file);
        happened << match.captured(1);
    }
    QCOMPARE(happened, QStringList{u"watching"_s} + expected + QStringList{u"stopped"_s});
}

QTEST_GUILESS_MAIN(WatchCommandTest)
#include "watchcommandtest.moc"

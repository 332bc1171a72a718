// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTToolSearch_p.h"
#include "VeltoException.h"
#include "VeltoTask.h"
#include "veltotest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <future>

using namespace Qt::StringLiterals;

namespace {

QString runShell(const QString &script, VeltoError *error = nullptr)
{
    return VeltoTask::launchTaskReturningStdoutAndGetError(
        [&](QProcess &task) {
            task.setProgram(u"/bin/sh"_s);
            task.setArguments({u"-c"_s, script});
        },
        error);
}

bool writeExecutable(const QString &path, const QByteArray &script)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(script) == script.size()
           && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
}

} // namespace

class TaskTest : public QObject
{
    Q_OBJECT

private slots:
    void toolOutputAndStatus_data();
    void toolOutputAndStatus();
    void standardErrorStaysOutUnlessMerged();
    void toolsThatNeverRanThrow();
    void runsOnBackgroundThreads();
    void searchOrder_data();
    void searchOrder();
    void searchWithoutWhich();
    void systemTools();
    void cachedLookupsSearchAndLogOnce();
};

void TaskTest::toolOutputAndStatus_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("output"); // null: no output
    QTest::addColumn<int>("code");      // 0: no error
    QTest::addColumn<QString>("text");

    QTest::newRow("prints and exits 0") << u"printf 'hello\\nworld\\n'"_s << u"hello\nworld\n"_s << 0 << QString();
    QTest::newRow("prints nothing") << u"exit 0"_s << u""_s << 0 << QString();
    QTest::newRow("UTF-8") << u"printf 'caf\\303\\251 \\342\\202\\254'"_s << u"café €"_s << 0 << QString();
    QTest::newRow("neither UTF-8 nor ASCII") << u"printf 'caf\\351'"_s << QString() << 0 << QString();
    QTest::newRow("exits 1") << u"exit 1"_s << QString() << 5 << u"NSTask for /bin/sh failed: 1"_s;
    QTest::newRow("prints, then exits 3") << u"echo partial; exit 3"_s << QString() << 5 << u"NSTask for /bin/sh failed: 3"_s;
    QTest::newRow("killed by a signal") << u"kill -KILL $$"_s << QString() << 5 << u"NSTask for /bin/sh failed: 9"_s;
    QTest::newRow("more than a pipe holds") << u"head -c 1048576 /dev/zero | tr '\\000' a"_s << QString(1048576, u'a')
                                            << 0 << QString();
}

void TaskTest::toolOutputAndStatus()
{
    QFETCH(QString, script);
    QFETCH(QString, output);
    QFETCH(int, code);
    QFETCH(QString, text);
    VeltoError error;
    const QString result = runShell(script, &error);
    QCOMPARE(result, output);
    QCOMPARE(result.isNull(), output.isNull());
    if (code == 0) {
        QVERIFY2(error.isNull(), qPrintable(error.description()));
    } else {
        QCOMPARE(error.domain(), VeltoCoreErrorDomain);
        QCOMPARE(error.code(), code);
        QCOMPARE(error.localizedDescription(), text);
        QCOMPARE(error.descriptionForUserVelto(), text);
    }
    QCOMPARE(runShell(script), output); // the same without an error out-parameter
}

void TaskTest::standardErrorStaysOutUnlessMerged()
{
    QCOMPARE(runShell(u"echo to-stderr >&2; echo to-stdout"_s), u"to-stdout\n"_s);
    const QString merged = VeltoTask::launchTaskReturningStdoutAndGetError([](QProcess &task) {
        task.setProgram(u"/bin/sh"_s);
        task.setArguments({u"-c"_s, u"echo to-stderr >&2"_s});
        task.setProcessChannelMode(QProcess::MergedChannels);
    });
    QCOMPARE(merged, u"to-stderr\n"_s);
    // Forwarding standard output too would lose it: it is captured whatever the block chose.
    const QString forwarded = VeltoTask::launchTaskReturningStdoutAndGetError([](QProcess &task) {
        task.setProgram(u"/bin/echo"_s);
        task.setArguments({u"captured"_s});
        task.setProcessChannelMode(QProcess::ForwardedChannels);
    });
    QCOMPARE(forwarded, u"captured\n"_s);
}

void TaskTest::toolsThatNeverRanThrow()
{
    VeltoError error;
    const auto missing = veltoThrown([&] {
        (void)VeltoTask::launchTaskReturningStdoutAndGetError(
            [](QProcess &task) { task.setProgram(u"/nonexistent/velto-tool"_s); }, &error);
    });
    QVERIFY(missing && missing->name() == VeltoInvalidArgumentException);
    QVERIFY2(missing->reason().startsWith(u"task not launched: Exception was thrown. "
                                          u"NSInvalidArgumentException: launch path not accessible: /nonexistent/velto-tool ("_s),
             qPrintable(missing->reason()));

    VELTO_COMPARE_THROWN((void)VeltoTask::launchTaskReturningStdoutAndGetError(
                             [](QProcess &) { throw std::runtime_error("no arguments for this tool"); }, &error),
                         VeltoInvalidArgumentException,
                         u"task not launched: Exception was thrown. std::runtime_error: no arguments for this tool"_s);

    const auto noProgram = veltoThrown([&] { (void)VeltoTask::launchTaskReturningStdoutAndGetError({}, &error); });
    QVERIFY(noProgram && noProgram->name() == VeltoInvalidArgumentException);
    QVERIFY2(noProgram->reason().startsWith(u"task not launched: "_s), qPrintable(noProgram->reason()));
    QVERIFY(error.isNull()); // the exception left; nothing was handed out
}

void TaskTest::runsOnBackgroundThreads()
{
    std::vector<std::future<std::pair<QString, VeltoError>>> runs;
    for (int index = 0; index < 4; ++index) {
        runs.push_back(std::async(std::launch::async, [index] {
            VeltoError error;
            const QString output = runShell(u"echo thread %1; exit %2"_s.arg(index).arg(index % 2), &error);
            return std::pair(output, error);
        }));
    }
    for (int index = 0; index < 4; ++index) {
        const auto [output, error] = runs[size_t(index)].get();
        if (index % 2 == 0) {
            QCOMPARE(output, u"thread %1\n"_s.arg(index));
        } else {
            QVERIFY(output.isNull());
            QCOMPARE(error.localizedDescription(), u"NSTask for /bin/sh failed: 1"_s);
        }
    }
}

void TaskTest::searchOrder_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("found"); // relative to the temporary folder; null when not found

    QTest::newRow("first folder wins") << u"both"_s << u"first/both"_s;
    QTest::newRow("second folder") << u"second-only"_s << u"second/second-only"_s;
    QTest::newRow("which, trimmed") << u"elsewhere"_s << u"/opt/tools/elsewhere"_s;
    QTest::newRow("which says no") << u"nope"_s << QString();
    QTest::newRow("which prints nothing") << u"silent"_s << QString();
    QTest::newRow("which fails") << u"unknown"_s << QString();
    QTest::newRow("empty name") << QString() << QString();
}

void TaskTest::searchOrder()
{
    QFETCH(QString, tool);
    QFETCH(QString, found);
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QDir root(folder.path());
    QVERIFY(root.mkpath(u"first"_s) && root.mkpath(u"second"_s));
    for (const QString &path : {u"first/both"_s, u"second/both"_s, u"second/second-only"_s})
        QVERIFY(writeExecutable(root.filePath(path), "#!/bin/sh\n"));
    // A `which` with the answers of the table: a path padded with white space, a "no ..." answer, silence.
    QVERIFY(writeExecutable(root.filePath(u"which"_s), "#!/bin/sh\n"
                                                       "case \"$1\" in\n"
                                                       "  elsewhere) printf '  /opt/tools/elsewhere \\n\\n' ;;\n"
                                                       "  nope) echo \"no nope in (/usr/bin:/bin)\" ;;\n"
                                                       "  silent) ;;\n"
                                                       "  *) exit 1 ;;\n"
                                                       "esac\n"));
    const VTToolSearch search{{root.filePath(u"first"_s), root.filePath(u"second"_s)}, root.filePath(u"which"_s)};
    const QString expected = found.isNull() || found.startsWith(u'/') ? found : root.filePath(found);
    const QString result = search.find(tool);
    QCOMPARE(result, expected);
    QCOMPARE(result.isNull(), expected.isNull());
}

void TaskTest::searchWithoutWhich()
{
    QTemporaryDir folder;
    const VTToolSearch search{{folder.path()}, folder.filePath(u"which"_s)};
    QTest::ignoreMessage(QtWarningMsg, "*** the 'which' command is not available");
    QVERIFY(search.find(u"anything"_s).isNull());
}

void TaskTest::systemTools()
{
    QCOMPARE(VeltoTask::calculateCommandLineExecutablePathForToolName(u"sh"_s), u"/usr/bin/sh"_s);
    // A tool that lives in /usr/sbin only.
    const QStringList administration = QDir(u"/usr/sbin"_s).entryList(QDir::Files | QDir::System);
    const auto sbinOnly = std::find_if(administration.cbegin(), administration.cend(), [](const QString &name) {
        return !QFileInfo::exists(u"/usr/bin/"_s + name);
    });
    if (sbinOnly != administration.cend())
        QCOMPARE(VeltoTask::calculateCommandLineExecutablePathForToolName(*sbinOnly), u"/usr/sbin/"_s + *sbinOnly);

    // Elsewhere on the PATH: the real `which` finds it.
    QTemporaryDir folder;
    const QString name = u"velto-path-tool-%1"_s.arg(QCoreApplication::applicationPid());
    QVERIFY(writeExecutable(folder.filePath(name), "#!/bin/sh\n"));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path);
    const QString found = VeltoTask::calculateCommandLineExecutablePathForToolName(name);
    qputenv("PATH", path);
    QCOMPARE(found, folder.filePath(name));
}

void TaskTest::cachedLookupsSearchAndLogOnce()
{
    VeltoCache<QString> &cache = VTToolPathCache();
    QCOMPARE(cache.name(), u"com.velto.cache.commandLineTools"_s);
    const QString missing = u"velto-missing-tool-%1"_s.arg(QCoreApplication::applicationPid());
    const QByteArray line = "*** the '" + missing.toUtf8() + "' command is not available on this computer";

    QTest::ignoreMessage(QtWarningMsg, line.constData());
    QVERIFY(VeltoTask::filePathForCommandLineExecutableWithName(missing).isNull());
    QCOMPARE(cache.objectForKey(missing), std::optional<QString>(QString())); // the "not found" mark
    // A dropped entry only repeats the search, and with it the line.
    cache.removeObjectForKey(missing);
    QTest::ignoreMessage(QtWarningMsg, line.constData());
    QVERIFY(VeltoTask::filePathForCommandLineExecutableWithName(missing).isNull());
    QTest::failOnWarning(QRegularExpression(u"command is not available"_s));
    QVERIFY(VeltoTask::filePathForCommandLineExecutableWithName(missing).isNull()); // answered by the cache

    QCOMPARE(VeltoTask::filePathForCommandLineExecutableWithName(u"sh"_s), u"/usr/bin/sh"_s);
    QCOMPARE(cache.objectForKey(u"sh"_s), std::optional<QString>(u"/usr/bin/sh"_s));
    // An answer in the cache is believed: a planted entry shows the cache is asked first.
    cache.setObject(u"/planted/sh"_s, u"sh"_s);
    QCOMPARE(VeltoTask::filePathForCommandLineExecutableWithName(u"sh"_s), u"/planted/sh"_s);
    cache.removeObjectForKey(u"sh"_s);
    QCOMPARE(VeltoTask::filePathForCommandLineExecutableWithName(u"sh"_s), u"/usr/bin/sh"_s);
    QVERIFY(VeltoTask::filePathForCommandLineExecutableWithName(QString()).isNull());
}

QTEST_GUILESS_MAIN(TaskTest)
#include "tasktest.moc"

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// velto: the command-line face of VeltoCore. `velto tour` walks through what the library does on real
// files in a temporary folder; the other commands answer one question each. Commands register
// themselves (Commands.h).

#include "Commands.h"
#include "Manual.h"

#include "VeltoExceptionReportingApplication.h"
#include "veltocore_version.h"

#include <QCoreApplication>
#include <QApplication>
#include <QTextStream>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QString toolUsage()
{
    QString usage = u"Usage: velto COMMAND [options] [arguments]\n"
                    "       velto help COMMAND\n"
                    "       velto --version\n\n"
                    "Commands:\n"_s;
    const QList<VeltoCommand> commands = registeredCommands();
    for (const VeltoCommand &command : commands)
        usage += u"  "_s + QString::fromLatin1(command.name).leftJustified(12) + QString::fromUtf8(command.summary) + u'\n';
    usage += u"  "_s + u"help"_s.leftJustified(12) + u"this text, or a command's help\n\n"_s;
    usage += u"Exit status: 0 done, 1 a reported error, 2 bad usage.\n"_s;
    return usage;
}

int usageError(QTextStream &err, const QString &problem)
{
    err << "velto: " << problem << "\n\n" << toolUsage();
    return ExitUsage;
}

int help(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    if (arguments.isEmpty()) {
        out << toolUsage();
        return ExitSuccess;
    }
    if (arguments.size() > 1)
        return usageError(err, u"help takes one command, not \"%1\""_s.arg(arguments.join(u' ')));
    const VeltoCommand *command = findCommand(arguments.first());
    if (!command)
        return usageError(err, u"no command \"%1\""_s.arg(arguments.first()));
    out << commandHelp(*command);
    return ExitSuccess;
}

// Only commands that need Qt's font services or menus (`font`, `tour`) get a QApplication; the others
// never load a platform plug-in. It is offscreen unless the caller chose a platform: the tool shows no
// windows.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[])
{
    const VeltoCommand *command = argc > 1 ? findCommand(QString::fromLocal8Bit(argv[1])) : nullptr;
    if (!command || !command->needsGuiApplication)
        return std::make_unique<VeltoExceptionReportingApplication<QCoreApplication>>(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<VeltoExceptionReportingApplication<QApplication>>(argc, argv);
}

} // namespace

int main(int argc, char *argv[])
{
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication &app = *application;
    QCoreApplication::setApplicationName(u"velto"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELTOCORE_VERSION_STRING));
    QTextStream out(stdout);
    QTextStream err(stderr);

    const QStringList arguments = app.arguments().mid(1);
    const QString first = arguments.value(0);
    if (arguments.isEmpty())
        return usageError(err, u"no command given"_s);
    if (first == u"help" || first == u"--help" || first == u"-h")
        return help(arguments.mid(1), out, err);
    if (first == u"--version" || first == u"-v") {
        out << "velto " << VELTOCORE_VERSION_STRING << '\n';
        return ExitSuccess;
    }
    // Hidden: the build writes the manual page and the shell completion from the commands themselves.
    if (first == u"--manual-page") {
        out << manualPage(toolUsage());
        return ExitSuccess;
    }
    if (first == u"--bash-completion") {
        out << bashCompletion();
        return ExitSuccess;
    }
    if (first.startsWith(u'-'))
        return usageError(err, u"unknown option \"%1\""_s.arg(first));
    if (const VeltoCommand *command = findCommand(first))
        return runCommand(*command, arguments.mid(1), out, err);
    return usageError(err, u"no command \"%1\""_s.arg(first));
}

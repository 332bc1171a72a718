// velto: the command-line face of VeltoCore. `velto tour` walks through what the library does on real
// files in a temporary folder; the other commands answer one question each. Commands register
// themselves (Commands.h).

#include "Commands.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

void printUsage(QTextStream &stream)
{
    stream << "usage: velto <command> [arguments]\n\nCommands:\n";
    for (const VeltoCommand &command : registeredCommands())
        stream << "  " << QString::fromLatin1(command.name).leftJustified(10) << ' ' << command.summary << '\n';
    stream << "  " << u"help"_s.leftJustified(10) << " this text (also --help, -h)\n";
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"velto"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELTOCORE_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);

    const QStringList arguments = app.arguments().mid(1);
    const QString name = arguments.value(0);
    if (name.isEmpty() || name == u"help" || name == u"--help" || name == u"-h") {
        printUsage(name.isEmpty() ? err : out);
        return name.isEmpty() ? 2 : 0;
    }
    for (const VeltoCommand &command : registeredCommands()) {
        if (name == QLatin1StringView(command.name))
            return command.run(arguments.mid(1), out, err);
    }
    err << "velto: unknown command \"" << name << "\"\n\n";
    printUsage(err);
    return 2;
}

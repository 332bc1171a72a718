// velto: the command-line face of VeltoCore. `velto tour` walks through what the library does on real
// files in a temporary folder; the other commands answer one question each.

#include "Commands.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Usage = R"(usage: velto <command> [arguments]

Commands:
  tour       a short guided run through the library on real files in a temporary folder
  sysinfo    facts about this machine and system, one per line as "name: value"
  help       this text (also --help, -h)
)";

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"velto"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELTOCORE_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);

    const QStringList arguments = app.arguments().mid(1);
    const QString command = arguments.value(0);
    if (command.isEmpty() || command == u"help" || command == u"--help" || command == u"-h") {
        out << Usage;
        return command.isEmpty() ? 2 : 0;
    }
    if (command == u"tour")
        return runTourCommand(out);
    if (command == u"sysinfo")
        return runSysinfoCommand(out);
    err << "velto: unknown command \"" << command << "\"\n\n" << Usage;
    return 2;
}

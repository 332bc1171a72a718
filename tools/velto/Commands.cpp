// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Commands.h"

#include "VeltoException.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

// Function-local statics: registration runs during static initialisation of other files.
std::map<QString, VeltoCommand> &commandTable()
{
    static std::map<QString, VeltoCommand> table;
    return table;
}

std::multimap<int, void (*)(Tour &)> &stopTable()
{
    static std::multimap<int, void (*)(Tour &)> table;
    return table;
}

const QCommandLineOption &helpOption()
{
    static const QCommandLineOption option({u"h"_s, u"help"_s}, u"Show this help and exit."_s);
    return option;
}

QString optionNames(const QCommandLineOption &option)
{
    QStringList names;
    for (const QString &name : option.names())
        names << (name.size() == 1 ? u"-"_s : u"--"_s) + name;
    QString text = names.join(u", "_s);
    if (!option.valueName().isEmpty())
        text += u' ' + option.valueName();
    return text;
}

} // namespace

CommandLine::CommandLine(const VeltoCommand &command, const QCommandLineParser &parser, QTextStream &out,
                         QTextStream &err)
    : command(command), arguments(parser.positionalArguments()), out(out), err(err), parser(parser)
{
}

int CommandLine::usageError(const QString &problem) const
{
    err << "velto " << command.name << ": " << problem << "\n\n" << commandUsage(command);
    err << "Try \"velto help " << command.name << "\" for more.\n";
    err.flush();
    return ExitUsage;
}

int CommandLine::failure(const QString &message) const
{
    err << "velto " << command.name << ": " << message << '\n';
    err.flush();
    return ExitFailure;
}

bool registerCommand(const VeltoCommand &command)
{
    return commandTable().emplace(QString::fromLatin1(command.name), command).second;
}

QList<VeltoCommand> registeredCommands()
{
    QList<VeltoCommand> list;
    for (const auto &entry : commandTable())
        list.append(entry.second);
    return list;
}

const VeltoCommand *findCommand(const QString &name)
{
    const auto found = commandTable().find(name);
    return found == commandTable().end() ? nullptr : &found->second;
}

QString commandUsage(const VeltoCommand &command)
{
    QString usage;
    const QList<const char *> forms = command.synopsis.isEmpty() ? QList<const char *>{""} : command.synopsis;
    for (qsizetype i = 0; i < forms.size(); ++i) {
        usage += (i == 0 ? u"Usage: "_s : u"       "_s) + u"velto "_s + QLatin1StringView(command.name);
        if (!command.options.isEmpty())
            usage += u" [options]"_s;
        if (*forms.at(i))
            usage += u' ' + QString::fromUtf8(forms.at(i));
        usage += u'\n';
    }
    return usage;
}

QList<std::pair<QString, QString>> commandOptions(const VeltoCommand &command)
{
    QList<std::pair<QString, QString>> options;
    for (const QCommandLineOption &option : command.options)
        options.append({optionNames(option), option.description()});
    options.append({optionNames(helpOption()), helpOption().description()});
    return options;
}

QString wrapped(const QString &text, qsizetype width)
{
    QStringList paragraphs = text.trimmed().split(u'\n');
    for (QString &paragraph : paragraphs) {
        QString line;
        QStringList lines;
        const QStringList words = paragraph.split(u' ', Qt::SkipEmptyParts);
        for (const QString &word : words) {
            if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
                lines << line;
                line.clear();
            }
            line += (line.isEmpty() ? QString() : u" "_s) + word;
        }
        lines << line;
        paragraph = lines.join(u'\n');
    }
    return paragraphs.join(u'\n');
}

QString commandHelp(const VeltoCommand &command)
{
    QString help = commandUsage(command) + u'\n' + QString::fromUtf8(command.summary) + u'\n';
    if (*command.description)
        help += u'\n' + wrapped(QString::fromUtf8(command.description), 78) + u'\n';
    const auto options = commandOptions(command);
    qsizetype width = 0;
    for (const auto &option : options)
        width = std::max(width, option.first.size());
    help += u"\nOptions:\n"_s;
    for (const auto &[names, description] : options)
        help += u"  "_s + names.leftJustified(width + 2) + description + u'\n';
    return help;
}

int runCommand(const VeltoCommand &command, const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    parser.addOptions(command.options);
    parser.addOption(helpOption());
    // The parser wants the program's name first.
    const bool parsed = parser.parse(QStringList{u"velto"_s} + arguments);
    const CommandLine line(command, parser, out, err);
    if (!parsed)
        return line.usageError(parser.errorText());
    if (parser.isSet(helpOption())) {
        out << commandHelp(command);
        out.flush();
        return ExitSuccess;
    }
    const qsizetype count = line.arguments.size();
    if (count < command.arguments.minimum)
        return line.usageError(u"missing arguments"_s);
    if (command.arguments.maximum >= 0 && count > command.arguments.maximum)
        return line.usageError(u"unexpected argument \"%1\""_s.arg(line.arguments.at(command.arguments.maximum)));
    // A programming error the library raises (a tool that cannot be started, say) is reported like any
    // other failure rather than ending the tool with an uncaught exception.
    int status = ExitFailure;
    try {
        status = command.run(line);
    } catch (const VeltoException &exception) {
        status = line.failure(exception.name() + u": "_s + exception.reason());
    } catch (const std::exception &exception) {
        status = line.failure(QString::fromLocal8Bit(exception.what()));
    }
    out.flush();
    err.flush();
    return status;
}

bool registerTourStop(int order, void (*stop)(Tour &))
{
    stopTable().emplace(order, stop);
    return true;
}

QList<void (*)(Tour &)> registeredTourStops()
{
    QList<void (*)(Tour &)> list;
    for (const auto &entry : stopTable())
        list.append(entry.second);
    return list;
}

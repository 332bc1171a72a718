// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Manual.h"

#include "Commands.h"

#include "veltocore_version.h"

using namespace Qt::StringLiterals;

namespace {

// roff escapes: a backslash, and a line that would start with a control character.
QString roff(const QString &text)
{
    QString escaped = text;
    escaped.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
    QStringList lines = escaped.split(u'\n');
    for (QString &line : lines) {
        if (line.startsWith(u'.') || line.startsWith(u'\''))
            line.prepend(u"\\&"_s);
    }
    return lines.join(u'\n');
}

QString preformatted(const QString &text)
{
    return u".nf\n"_s + roff(text.trimmed()) + u"\n.fi\n"_s;
}

} // namespace

QString manualPage(const QString &overview)
{
    QString page = u".TH VELTO 1 \"\" \"VeltoCore %1\" \"User Commands\"\n"_s.arg(QStringLiteral(VELTOCORE_VERSION_STRING));
    page += u".SH NAME\nvelto \\- the VeltoCore library from the command line\n"_s;
    page += u".SH SYNOPSIS\n"_s + preformatted(overview.section(u"\n\n"_s, 0, 0));
    page += u".SH DESCRIPTION\n"_s
            u"velto runs the parts of the VeltoCore library that make sense on their own: a guided tour on "
            u"real files, and commands that answer one question each.\n"_s;
    page += u".SH COMMANDS\n"_s;
    const QList<VeltoCommand> commands = registeredCommands();
    for (const VeltoCommand &command : commands) {
        page += u".SS %1\n"_s.arg(QLatin1StringView(command.name)) + roff(QString::fromUtf8(command.summary)) + u'\n';
        page += preformatted(commandUsage(command));
        const QStringList paragraphs = QString::fromUtf8(command.description).split(u'\n', Qt::SkipEmptyParts);
        for (const QString &paragraph : paragraphs)
            page += u".PP\n"_s + roff(paragraph) + u'\n';
        for (const auto &[names, description] : commandOptions(command))
            page += u".TP\n.B "_s + roff(names) + u'\n' + roff(description) + u'\n';
    }
    page += u".SH EXIT STATUS\n0 when the command did its work, 1 when it reported an error (its text on "
            u"standard error), 2 for bad usage (the problem and the usage on standard error).\n"_s;
    return page;
}

QString bashCompletion()
{
    QString cases;
    const QList<VeltoCommand> commands = registeredCommands();
    QStringList names{u"help"_s};
    for (const VeltoCommand &command : commands) {
        names << QString::fromLatin1(command.name);
        QStringList options{u"--help"_s};
        for (const QCommandLineOption &option : command.options) {
            for (const QString &name : option.names())
                options << (name.size() == 1 ? u"-"_s : u"--"_s) + name;
        }
        cases += u"    %1) words=\"%2\"; options=\"%3\" ;;\n"_s.arg(QLatin1StringView(command.name),
                                                                 command.words.join(u' '), options.join(u' '));
    }
    return uR"(# bash completion for velto, made by `velto --bash-completion`.
_velto()
{
    local current=${COMP_WORDS[COMP_CWORD]}
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W "%1 --help --version" -- "$current"))
        return
    fi
    local words="" options=""
    case ${COMP_WORDS[1]} in
%2    help) words="%1" ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [ "$COMP_CWORD" -eq 2 ] && [ -n "$words" ]; then
        COMPREPLY=($(compgen -W "$words" -- "$current"))
    else
        COMPREPLY=($(compgen -f -- "$current"))
    fi
}
complete -o filenames -F _velto velto
)"_s.arg(names.join(u' '), cases);
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The velto tool's commands and tour stops register themselves from their own files, so a subsystem
// adds its command or stop without touching the others:
//
//   const bool registered = registerCommand({
//       .name = "which",
//       .summary = "find a command-line tool",
//       .synopsis = {"TOOL"},
//       .description = "Prints the full path of TOOL ...",
//       .arguments = {1, 1},
//       .run = runWhich,
//   });
//   const bool stop = registerTourStop(700, geometryTourStop);
//
// Exit statuses are the same for every command: 0 done, 1 a reported error (its text on standard
// error), 2 bad usage (the problem and the command's usage on standard error).

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QStringList>
#include <QTextStream>

class Tour;
class CommandLine;

enum ExitStatus : int { ExitSuccess = 0, ExitFailure = 1, ExitUsage = 2 };

/// A command: `velto <name> [options] [arguments]`.
struct VeltoCommand
{
    /// How many positional arguments the command takes; maximum -1 means any number.
    struct ArgumentCount
    {
        int minimum = 0;
        int maximum = 0;
    };

    const char *name = nullptr;
    const char *summary = nullptr;          ///< one line for `velto --help`
    QList<const char *> synopsis;           ///< each form of the arguments after the name
    const char *description = "";           ///< paragraphs for `velto help NAME` and the man page
    QList<QCommandLineOption> options;      ///< besides -h/--help, which every command has
    ArgumentCount arguments;
    QStringList words;                      ///< first arguments offered by shell completion
    int (*run)(const CommandLine &line) = nullptr;
    bool needsGuiApplication = false;       ///< runs under a QApplication (fonts, menus), offscreen unless QT_QPA_PLATFORM says otherwise
};

/// A parsed invocation of one command, with the streams it writes to.
class CommandLine
{
public:
    CommandLine(const VeltoCommand &command, const QCommandLineParser &parser, QTextStream &out, QTextStream &err);

    const VeltoCommand &command;
    const QStringList arguments; ///< the positional arguments, options removed
    QTextStream &out;
    QTextStream &err;

    [[nodiscard]] bool isSet(const QString &option) const { return parser.isSet(option); }
    [[nodiscard]] QString value(const QString &option) const { return parser.value(option); }
    /// usageError: "velto NAME: problem" and the command's usage on standard error; returns ExitUsage.
    int usageError(const QString &problem) const;
    /// failure: "velto NAME: message" on standard error; returns ExitFailure.
    int failure(const QString &message) const;

private:
    const QCommandLineParser &parser;
};

bool registerCommand(const VeltoCommand &command);
/// The registered commands, sorted by name.
QList<VeltoCommand> registeredCommands();
/// The command called \a name, or nullptr.
const VeltoCommand *findCommand(const QString &name);

/// commandUsage: the "Usage:" lines of \a command.
QString commandUsage(const VeltoCommand &command);
/// commandOptions: each option's names ("-o, --output FILE") and description, --help last.
QList<std::pair<QString, QString>> commandOptions(const VeltoCommand &command);
/// wrapped: \a text with each line broken at spaces to at most \a width characters where it can be.
QString wrapped(const QString &text, qsizetype width);
/// commandHelp: usage, description and options of \a command, as `velto help NAME` prints them.
QString commandHelp(const VeltoCommand &command);
/// runCommand: parses \a arguments (after the command's name) and runs \a command.
int runCommand(const VeltoCommand &command, const QStringList &arguments, QTextStream &out, QTextStream &err);

/// Adds a tour stop; stops run in increasing \a order (the frame's stops use 100 to 199).
bool registerTourStop(int order, void (*stop)(Tour &));
/// The registered stops in order.
QList<void (*)(Tour &)> registeredTourStops();

#pragma once

// The velto tool's commands and tour stops register themselves from their own files, so a subsystem
// adds its command or stop without touching the others:
//
//   static const bool registered = registerCommand({"version", "parse and compare versions", runVersion});
//   static const bool stop = registerTourStop(700, geometryTourStop);

#include <QList>
#include <QStringList>
#include <QTextStream>

class Tour;

/// A command: `velto <name> [arguments]`. run() returns the process's exit status.
struct VeltoCommand
{
    const char *name;
    const char *summary;
    int (*run)(const QStringList &arguments, QTextStream &out, QTextStream &err);
};

bool registerCommand(const VeltoCommand &command);
/// The registered commands, sorted by name.
QList<VeltoCommand> registeredCommands();

/// Adds a tour stop; stops run in increasing \a order (the frame's stops use 100 to 199).
bool registerTourStop(int order, void (*stop)(Tour &));
/// The registered stops in order.
QList<void (*)(Tour &)> registeredTourStops();

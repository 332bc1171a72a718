#pragma once

#include <QStringList>
#include <QTextStream>

// Each command writes to out and returns the process exit status.
int runSysinfoCommand(QTextStream &out);
int runTourCommand(QTextStream &out);

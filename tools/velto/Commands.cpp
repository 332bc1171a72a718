#include "Commands.h"

#include <algorithm>
#include <map>

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

} // namespace

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

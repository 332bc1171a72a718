// `velto sysinfo`: every fact the library knows about this machine and system, one per line as
// "name: value", in a form that is easy to read and to grep.

#include "Commands.h"

#include "VeltoApplication.h"
#include "VeltoSystemInfo.h"
#include "VeltoSystemVersions.h"

using namespace Qt::StringLiterals;

namespace {

// The library answers "unknown" with a null or empty string; say so rather than print nothing.
QString orUnknown(const QString &value)
{
    return value.isEmpty() ? u"(unknown)"_s : value;
}

} // namespace

int runSysinfoCommand(const QStringList &, QTextStream &out, QTextStream &)
{
    const QList<std::pair<QString, QString>> facts = {
        {u"system version"_s, VeltoSystemVersion_PrettyString()},
        {u"kernel"_s, orUnknown(VeltoSystem_KernelVersionString())},
        {u"distribution"_s, orUnknown(VeltoSystem_DistributionName())},
        {u"toolkit version"_s, VeltoSystem_AppKitVersionString()},
        {u"cpu 64-bit"_s, VeltoSystem_CPUIs64Bit() ? u"yes"_s : u"no"_s},
        {u"cpu count"_s, QString::number(VeltoSystem_CPUCount())},
        {u"cpu speed MHz"_s, QString::number(VeltoSystem_CPUSpeed())},
        {u"RAM bytes"_s, QString::number(VeltoSystem_RAM())},
        {u"model"_s, orUnknown(VeltoSystem_MacModelName())},
        {u"primary language"_s, orUnknown(VeltoSystem_PrimaryLanguageCode())},
        {u"user"_s, VeltoSystem_CurrentUserName()},
        {u"computer name"_s, orUnknown(VeltoSystem_ComputerName())},
        {u"root volume"_s, VeltoSystem_RootVolumeName()},
        {u"architecture"_s, VeltoApplication::runningArchitectureString()},
    };
    for (const auto &[name, value] : facts)
        out << name << ": " << value << '\n';
    out.flush();
    return 0;
}

namespace {

const bool registered = registerCommand(
    {"sysinfo", "facts about this machine and system, one per line as \"name: value\"", runSysinfoCommand});

} // namespace

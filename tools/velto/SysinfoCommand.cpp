// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto sysinfo`: every fact the library knows about this machine and system, one per line as
// "name: value", in a form that is easy to read and to grep.

#include "Commands.h"

#include "VeltoApplication.h"
#include "VeltoSystemInfo.h"
#include "VeltoSystemVersions.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// The library answers "unknown" with a null or empty string; say so rather than print nothing.
QString shown(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? u"yes"_s : u"no"_s;
    return value.toString().isEmpty() ? u"(unknown)"_s : value.toString();
}

struct Fact
{
    QString label;
    QString key; ///< the name in the JSON form
    QVariant value; ///< a string (empty when unknown), a number or a Boolean
};

} // namespace

int runSysinfoCommand(const CommandLine &line)
{
    const QList<Fact> facts = {
        {u"system version"_s, u"systemVersion"_s, VeltoSystemVersion_PrettyString()},
        {u"kernel"_s, u"kernel"_s, VeltoSystem_KernelVersionString()},
        {u"distribution"_s, u"distribution"_s, VeltoSystem_DistributionName()},
        {u"toolkit version"_s, u"toolkitVersion"_s, VeltoSystem_AppKitVersionString()},
        {u"cpu 64-bit"_s, u"cpuIs64Bit"_s, VeltoSystem_CPUIs64Bit()},
        {u"cpu count"_s, u"cpuCount"_s, VeltoSystem_CPUCount()},
        {u"cpu speed MHz"_s, u"cpuSpeedMHz"_s, qint64(VeltoSystem_CPUSpeed())},
        {u"RAM bytes"_s, u"ramBytes"_s, quint64(VeltoSystem_RAM())},
        {u"model"_s, u"model"_s, VeltoSystem_MacModelName()},
        {u"primary language"_s, u"primaryLanguage"_s, VeltoSystem_PrimaryLanguageCode()},
        {u"user"_s, u"user"_s, VeltoSystem_CurrentUserName()},
        {u"computer name"_s, u"computerName"_s, VeltoSystem_ComputerName()},
        {u"root volume"_s, u"rootVolume"_s, VeltoSystem_RootVolumeName()},
        {u"architecture"_s, u"architecture"_s, VeltoApplication::runningArchitectureString()},
    };
    if (line.isSet(u"json"_s)) {
        QJsonObject object;
        for (const Fact &fact : facts) {
            const bool unknown = fact.value.typeId() == QMetaType::QString && fact.value.toString().isEmpty();
            object.insert(fact.key, unknown ? QJsonValue() : QJsonValue::fromVariant(fact.value));
        }
        line.out << QJsonDocument(object).toJson(QJsonDocument::Indented);
        return ExitSuccess;
    }
    for (const Fact &fact : facts)
        line.out << fact.label << ": " << shown(fact.value) << '\n';
    return ExitSuccess;
}

namespace {

const bool registered = registerCommand({
    .name = "sysinfo",
    .summary = "facts about this machine and system",
    .description = "Prints every fact the library knows about this machine and system, one per line as "
                   "\"name: value\" (\"(unknown)\" where the system does not tell), or with --json as one "
                   "JSON object whose unknown facts are null.",
    .options = {QCommandLineOption(u"json"_s, u"Print one JSON object."_s)},
    .run = runSysinfoCommand,
});

} // namespace

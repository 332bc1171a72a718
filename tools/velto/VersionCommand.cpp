// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto version parse TEXT` shows how the library reads a product version (display form such as
// "2.1 beta 3" or bundle form such as "0201.0002.03"); `velto version compare` orders two of them.
// The tour's version stop lives here too.

#include "Commands.h"
#include "Tour.h"

#include "VeltoDate.h"
#include "VeltoVersion.h"

#include <QHash>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

QString releaseTypeName(VeltoReleaseType type)
{
    static const QStringList names = {u"unknown"_s, u"alpha"_s, u"beta"_s, u"fc"_s, u"release"_s};
    return names.value(qsizetype(type), u"unknown"_s);
}

QString hexInteger(quint64 value)
{
    return u"0x%1"_s.arg(value, 10, 16, QChar(u'0'));
}

// Reads \a text as a display string, else as a bundle version string; on failure \a problem says why.
std::optional<VeltoVersion> readVersion(const QString &text, QString *form, QString *problem)
{
    VeltoError displayError;
    if (auto version = VeltoVersion::initWithDisplayString(text, &displayError)) {
        *form = u"display string"_s;
        return version;
    }
    VeltoError bundleError;
    if (auto version = VeltoVersion::initWithBundleVersionString(text, &bundleError)) {
        *form = u"bundle version string"_s;
        return version;
    }
    *problem = u"%1 is not a version: as a display string, %2 [code %3]; as a bundle version string, %4 [code %5]"_s
                   .arg(quoted(text), displayError.localizedDescription())
                   .arg(displayError.code())
                   .arg(bundleError.localizedDescription())
                   .arg(bundleError.code());
    return std::nullopt;
}

int parseVersion(const CommandLine &line, const QString &text)
{
    QString form;
    QString problem;
    const std::optional<VeltoVersion> version = readVersion(text, &form, &problem);
    if (!version)
        return line.failure(problem);
    const VeltoVersion fromFields(version->majorVersion(), version->minorVersion(), version->revision(),
                                  version->releaseType(), version->releaseIncrement());
    QString display = quoted(version->displayString());
    if (fromFields.displayString() != version->displayString())
        display += u"  (as written; from the fields: %1)"_s.arg(quoted(fromFields.displayString()));
    const QList<std::pair<QString, QString>> lines = {
        {u"read as"_s, form},
        {u"major"_s, QString::number(version->majorVersion())},
        {u"minor"_s, QString::number(version->minorVersion())},
        {u"revision"_s, QString::number(version->revision())},
        {u"release type"_s, u"%1 (%2)"_s.arg(int(version->releaseType())).arg(releaseTypeName(version->releaseType()))},
        {u"release increment"_s, QString::number(version->releaseIncrement())},
        {u"display string"_s, display},
        {u"bundle version string"_s, quoted(version->bundleVersionString())},
        {u"ordered integer"_s, hexInteger(version->orderedInteger())},
    };
    for (const auto &[name, value] : lines)
        line.out << (name + u':').leftJustified(23) << value << '\n';
    return ExitSuccess;
}

// The relations a script can test: each holds for the comparison results it lists.
const QHash<QString, QList<int>> &relations()
{
    static const QHash<QString, QList<int>> table = {
        {u"lt"_s, {-1}}, {u"le"_s, {-1, 0}}, {u"eq"_s, {0}}, {u"ge"_s, {0, 1}}, {u"gt"_s, {1}},
    };
    return table;
}

// `compare A B` prints -1, 0 or 1; `compare A OP B` prints nothing and answers with its exit status.
int compareVersions(const CommandLine &line, const QStringList &operands)
{
    const QString relation = operands.size() == 3 ? operands.at(1) : QString();
    if (operands.size() == 3 && !relations().contains(relation))
        return line.usageError(u"\"%1\" is not one of lt, le, eq, ge, gt"_s.arg(relation));
    QString form;
    QString problem;
    const std::optional<VeltoVersion> a = readVersion(operands.first(), &form, &problem);
    const std::optional<VeltoVersion> b = a ? readVersion(operands.last(), &form, &problem) : std::nullopt;
    if (!a || !b)
        return line.failure(problem);
    const int order = a->compareVersion(*b);
    if (relation.isNull()) {
        line.out << order << '\n';
        return ExitSuccess;
    }
    return relations().value(relation).contains(order) ? ExitSuccess : ExitFailure;
}

int runVersionCommand(const CommandLine &line)
{
    const QString action = line.arguments.first();
    const QStringList operands = line.arguments.mid(1);
    if (action == u"parse")
        return operands.size() == 1 ? parseVersion(line, operands.first()) : line.usageError(u"parse takes one version"_s);
    if (action == u"compare") {
        return operands.size() == 2 || operands.size() == 3
            ? compareVersions(line, operands)
            : line.usageError(u"compare takes two versions, or two versions around a relation"_s);
    }
    return line.usageError(u"no action \"%1\""_s.arg(action));
}

void versionStop(Tour &tour)
{
    tour.stop(u"Product versions and release dates"_s);
    const auto parsed = VeltoVersion::initWithDisplayString(u"  1.2 Beta 3\n"_s);
    tour.say(u"\"  1.2 Beta 3\\n\" reads as %1.%2.%3, %4 %5; display %6, bundle form %7"_s
                 .arg(parsed->majorVersion())
                 .arg(parsed->minorVersion())
                 .arg(parsed->revision())
                 .arg(releaseTypeName(parsed->releaseType()))
                 .arg(parsed->releaseIncrement())
                 .arg(quoted(parsed->displayString()), quoted(parsed->bundleVersionString())));
    VeltoVersion changed = *parsed;
    changed.setMajorVersion(7);
    tour.say(u"after setMajorVersion(7) it still shows %1 (cached text), but orders as %2"_s
                 .arg(quoted(changed.displayString()), hexInteger(changed.orderedInteger())));
    const auto lenient = VeltoVersion::initWithBundleVersionString(u"0102.0305.01"_s);
    tour.say(u"bundle form \"0102.0305.01\" has release type 05, read as unknown: %1"_s
                 .arg(quoted(lenient->displayString())));
    for (const QString &bad : {u"01.2"_s, u"1.2  beta 3"_s, u"1.2 release 1"_s}) {
        VeltoError error;
        (void)VeltoVersion::initWithDisplayString(bad, &error);
        tour.say(u"%1 -> %2"_s.arg(quoted(bad).leftJustified(16), error.description()));
    }
    VeltoError error;
    (void)VeltoVersion::initWithBundleVersionString(u"0201.0002.3"_s, &error);
    tour.say(u"%1 -> %2"_s.arg(quoted(u"0201.0002.3"_s).leftJustified(16), error.description()));

    QList<VeltoVersion> versions;
    for (const QString &text : {u"2.0"_s, u"2.0 beta 9"_s, u"1.9.9"_s, u"2.0 fc 1"_s, u"2.0 alpha 2"_s, u"2.0.1"_s})
        versions.append(*VeltoVersion::initWithDisplayString(text));
    std::sort(versions.begin(), versions.end());
    QStringList sorted;
    for (const VeltoVersion &version : versions)
        sorted << version.displayString();
    tour.say(u"sorted: %1"_s.arg(sorted.join(u" < "_s)));

    const VeltoDate released = VeltoDate::dateWithYear(2024, 13, 1, 9, 30, 0, QTimeZone("Europe/Berlin"));
    tour.say(u"release date from the components 2024-13-01 09:30 Europe/Berlin (month 13 carries over):"_s);
    tour.say(u"  %1 -> %2 UTC"_s.arg(released.description(),
                                     released.date().toUTC().toString(u"yyyy-MM-dd HH:mm:ss"_s)));
}

const bool registered = registerCommand({
    .name = "version",
    .summary = "parse and compare product versions",
    .synopsis = {"parse TEXT", "compare A B", "compare A lt|le|eq|ge|gt B"},
    .description = "TEXT, A and B are display strings (\"2.1 beta 3\") or bundle version strings "
                   "(\"0201.0002.03\").\n\n"
                   "parse prints the fields, both textual forms and the ordering integer.\n"
                   "compare A B prints -1, 0 or 1 as A is older than, the same as, or newer than B.\n"
                   "compare A OP B prints nothing: it exits with 0 when the relation holds and 1 when it "
                   "does not (a version that cannot be read is reported, also with 1), so scripts can "
                   "write: velto version compare \"$installed\" lt 2.1 && upgrade",
    .arguments = {2, 4},
    .words = {u"parse"_s, u"compare"_s},
    .run = runVersionCommand,
}) && registerTourStop(900, versionStop);

} // namespace

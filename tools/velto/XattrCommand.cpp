// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto xattr list|get|set|rm PATH [NAME [VALUE]]`: a file's extended attributes as the library reads
// and writes them (names without a namespace live in Linux's "user." namespace).

#include "Commands.h"

#include "VeltoFileManager.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

int listAttributes(const CommandLine &line, const QUrl &file)
{
    VeltoError error;
    const std::optional<QSet<QString>> names = VeltoFileManager::readExtendedAttributeNamesForFileAtURL(file, &error);
    if (!names)
        return line.failure(error.descriptionForUserVelto());
    QStringList sorted(names->cbegin(), names->cend());
    std::sort(sorted.begin(), sorted.end());
    for (const QString &name : sorted)
        line.out << name << '\n';
    return ExitSuccess;
}

int getAttribute(const CommandLine &line, const QUrl &file, const QString &name)
{
    VeltoError error;
    QByteArray data;
    if (!VeltoFileManager::readExtendedAttribute(name, nullptr, &data, file, &error))
        return line.failure(error.descriptionForUserVelto());
    if (data.isNull())
        return line.failure(u"%1 has no attribute \"%2\""_s.arg(file.toLocalFile(), name));
    if (line.isSet(u"hex"_s)) {
        line.out << QString::fromLatin1(data.toHex()) << '\n';
        return ExitSuccess;
    }
    const QString text = VeltoFileManager::readStringExtendedAttribute(name, file, &error);
    if (!error.isNull())
        return line.failure(error.descriptionForUserVelto() + u" (try --hex)"_s);
    line.out << text << '\n';
    return ExitSuccess;
}

int runXattr(const CommandLine &line)
{
    const QString action = line.arguments.at(0);
    const QUrl file = QUrl::fromLocalFile(line.arguments.at(1));
    const QStringList rest = line.arguments.mid(2);
    VeltoError error;
    if (action == u"list")
        return rest.isEmpty() ? listAttributes(line, file) : line.usageError(u"list takes a path only"_s);
    if (action == u"get")
        return rest.size() == 1 ? getAttribute(line, file, rest.at(0)) : line.usageError(u"get takes a path and a name"_s);
    if (action == u"set") {
        if (rest.size() != 2)
            return line.usageError(u"set takes a path, a name and a value"_s);
        return VeltoFileManager::writeExtendedAttribute(rest.at(0), rest.at(1).toUtf8(), file, &error)
            ? ExitSuccess
            : line.failure(error.descriptionForUserVelto());
    }
    if (action == u"rm") {
        if (rest.size() != 1)
            return line.usageError(u"rm takes a path and a name"_s);
        return VeltoFileManager::removeExtendedAttribute(rest.at(0).toUtf8(), file, &error)
            ? ExitSuccess
            : line.failure(error.descriptionForUserVelto());
    }
    return line.usageError(u"no action \"%1\""_s.arg(action));
}

const bool registered = registerCommand({
    .name = "xattr",
    .summary = "list, read, write and remove extended attributes",
    .synopsis = {"list PATH", "get PATH NAME", "set PATH NAME VALUE", "rm PATH NAME"},
    .description = "Works on the extended attributes of PATH itself (a symbolic link is not followed). A NAME "
                   "without a namespace is in the \"user.\" namespace: \"com.velto.note\" is stored as "
                   "\"user.com.velto.note\", and list shows it without the prefix.\n\n"
                   "list prints one name per line, sorted. get prints the value as UTF-8 text, or with --hex "
                   "as hexadecimal digits; an attribute that is not there is an error. set stores VALUE's "
                   "UTF-8 bytes. rm removes the attribute; one that is not there is an error.",
    .options = {QCommandLineOption(u"hex"_s, u"get: print the value's bytes in hexadecimal."_s)},
    .arguments = {2, 4},
    .words = {u"list"_s, u"get"_s, u"set"_s, u"rm"_s},
    .run = runXattr,
});

} // namespace

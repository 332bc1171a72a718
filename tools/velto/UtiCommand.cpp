// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto uti EXT|MIME|UTI`: the type identifier, MIME type and file-name extension that belong together.

#include "Commands.h"

#include "VeltoUTI.h"

using namespace Qt::StringLiterals;

namespace {

QString shown(const QString &value)
{
    return value.isEmpty() ? u"(none)"_s : value;
}

int runUti(const CommandLine &line)
{
    const QString given = line.arguments.first();
    QString identifier;
    if (given.contains(u'/'))
        identifier = VeltoUTI::UTIForPasteboardType(given);
    else if (VeltoUTI::isKnownUTI(given) || !VeltoUTI::pasteboardTypeForUTI(given).isNull())
        identifier = given;
    else
        identifier = VeltoUTI::UTIForFileExtension(given.startsWith(u'.') ? given.mid(1) : given);
    if (identifier.isEmpty())
        return line.failure(u"no type identifier is known for \"%1\""_s.arg(given));
    line.out << "identifier: " << identifier << '\n'
             << "MIME type: " << shown(VeltoUTI::pasteboardTypeForUTI(identifier)) << '\n'
             << "extension: " << shown(VeltoUTI::fileExtensionForUTI(identifier)) << '\n';
    return ExitSuccess;
}

const bool registered = registerCommand({
    .name = "uti",
    .summary = "convert between type identifiers, MIME types and extensions",
    .synopsis = {"EXT|MIME|UTI"},
    .description = "Prints the type identifier (\"public.png\"), the MIME type (\"image/png\") and the file-name "
                   "extension (\"png\") that belong to the one given. A word with a \"/\" is read as a MIME type, "
                   "a known identifier as an identifier, anything else as an extension (a leading dot is "
                   "allowed). Status 1 when no identifier is known for it.",
    .arguments = {1, 1},
    .run = runUti,
});

} // namespace

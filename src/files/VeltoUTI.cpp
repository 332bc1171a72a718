// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoUTI.h"

#include "VTTypeIdentifierTable_p.h"

#include <QMimeDatabase>

using namespace Qt::StringLiterals;

namespace {

const VTTypeIdentifierRow *rowForIdentifier(const QString &identifier)
{
    for (const VTTypeIdentifierRow &row : VTTypeIdentifierTable::rows()) {
        if (identifier.compare(QLatin1StringView(row.identifier), Qt::CaseInsensitive) == 0)
            return &row;
    }
    return nullptr;
}

// The first row whose MIME type is \a type, compared whole (parameters included) and without case.
const VTTypeIdentifierRow *rowForMimeType(QStringView type)
{
    for (const VTTypeIdentifierRow &row : VTTypeIdentifierTable::rows()) {
        if (type.compare(QLatin1StringView(row.mimeType), Qt::CaseInsensitive) == 0)
            return &row;
    }
    return nullptr;
}

// The row of a MIME type: the type as written, else the database's name for it or one of its aliases.
const VTTypeIdentifierRow *rowForMimeType(const QMimeType &type)
{
    if (!type.isValid())
        return nullptr;
    if (const VTTypeIdentifierRow *row = rowForMimeType(type.name()))
        return row;
    for (const QString &alias : type.aliases()) {
        if (const VTTypeIdentifierRow *row = rowForMimeType(alias))
            return row;
    }
    return nullptr;
}

QMimeType mimeTypeOf(const VTTypeIdentifierRow &row)
{
    // The database knows types without their parameters.
    const QString type = QString::fromLatin1(row.mimeType).section(u';', 0, 0).trimmed();
    return QMimeDatabase().mimeTypeForName(type);
}

} // namespace

const QSet<QString> &VeltoUTI::knownUTIs()
{
    static const QSet<QString> known{u"com.apple.pasteboard.promised-file-content-type"_s,
                                     u"com.apple.pasteboard.promised-file-url"_s, QString(VeltoUTI_EPS),
                                     u"public.url"_s, QString(VeltoUTI_URLName)};
    return known;
}

bool VeltoUTI::isKnownUTI(const QString &string)
{
    if (!string.contains(u'.'))
        return false;
    if (knownUTIs().contains(string) || string.startsWith(OwnIdentifierPrefix))
        return true;
    return !fileExtensionForUTI(string).isEmpty();
}

QString VeltoUTI::fileExtensionForUTI(const QString &identifier)
{
    const VTTypeIdentifierRow *row = rowForIdentifier(identifier);
    if (!row)
        return {};
    if (*row->extension)
        return QString::fromLatin1(row->extension);
    const QString suffix = mimeTypeOf(*row).preferredSuffix();
    return suffix.isEmpty() ? QString() : suffix;
}

QString VeltoUTI::UTIForFileExtension(const QString &extension)
{
    if (extension.isEmpty())
        return {};
    for (const VTTypeIdentifierRow &row : VTTypeIdentifierTable::rows()) {
        if (extension.compare(QLatin1StringView(row.extension), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(row.identifier);
    }
    // Every type whose file names match, the best match first.
    const QMimeDatabase database;
    const QString fileName = u"file."_s + extension;
    QList<QMimeType> candidates{database.mimeTypeForFile(fileName, QMimeDatabase::MatchExtension)};
    candidates += database.mimeTypesForFileName(fileName);
    for (const QMimeType &type : std::as_const(candidates)) {
        if (type.isDefault())
            continue;
        if (const VTTypeIdentifierRow *row = rowForMimeType(type))
            return QString::fromLatin1(row->identifier);
    }
    return {};
}

QString VeltoUTI::pasteboardTypeForUTI(const QString &identifier)
{
    const VTTypeIdentifierRow *row = rowForIdentifier(identifier);
    return row && *row->mimeType ? QString::fromLatin1(row->mimeType) : QString();
}

QString VeltoUTI::UTIForPasteboardType(const QString &type)
{
    if (type.isEmpty())
        return {};
    const VTTypeIdentifierRow *row = rowForMimeType(QStringView(type));
    if (!row)
        row = rowForMimeType(QMimeDatabase().mimeTypeForName(type.section(u';', 0, 0).trimmed()));
    return row ? QString::fromLatin1(row->identifier) : QString();
}

QStringList VeltoUTI::pasteboardTypesForUTIs(const QStringList &identifiers, VeltoUTICulling culling)
{
    QStringList types;
    types.reserve(identifiers.size());
    for (const QString &identifier : identifiers) {
        if (const QString type = pasteboardTypeForUTI(identifier); !type.isNull())
            types.append(type);
        else if (culling == VeltoUTICulling::KeepUnknown)
            types.append(identifier);
    }
    return types;
}

QStringList VeltoUTI::UTIsForPasteboardTypes(const QStringList &types, VeltoUTICulling culling)
{
    QStringList identifiers;
    identifiers.reserve(types.size());
    for (const QString &type : types) {
        if (isKnownUTI(type))
            identifiers.append(type);
        else if (const QString identifier = UTIForPasteboardType(type); !identifier.isNull())
            identifiers.append(identifier);
        else if (culling == VeltoUTICulling::KeepUnknown)
            identifiers.append(type);
    }
    return identifiers;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VariantMap+VeltoCorePlist.h"

#include "VTFileAccess_p.h"
#include "VeltoFileManager.h"
#include "VTNumberConversion_p.h"
#include "Variant+VeltoCore.h"
#include "VeltoPropertyList.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// Types of one property-list class answer for each other: all numbers, both list types, both map types.
int plistClass(int typeId)
{
    if (VTNumberConversion::isNumber(QVariant(QMetaType(typeId))))
        return QMetaType::Double;
    if (typeId == QMetaType::QStringList)
        return QMetaType::QVariantList;
    if (typeId == QMetaType::QVariantHash)
        return QMetaType::QVariantMap;
    return typeId;
}

bool isOfClass(const QVariant &value, QMetaType type)
{
    return value.isValid() && plistClass(value.typeId()) == plistClass(type.id());
}

// The name a value's type is reported by; a missing value reads "(null)".
QString className(const QVariant &value)
{
    return value.isValid() ? QString::fromLatin1(value.typeName()) : u"(null)"_s;
}

QVariant typeMismatch(const QString &key, QMetaType type, const QVariant &found, VeltoError *error)
{
    // The key fills the first place and the type the second, against the wording: callers rely on it.
    if (error)
        *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorPlistType,
                                             u"Expected value with class %1 for plist key \"%2\", found %3."_s
                                                 .arg(key, QString::fromLatin1(type.name()), className(found)));
    return {};
}

} // namespace

QVariant plistObjectVeltoForKey(const QVariantMap &map, const QString &key, QMetaType type, const QVariant &nilPlaceholder,
                                VeltoError *error)
{
    const QVariant value = map.value(key);
    if (!value.isValid())
        return nilPlaceholder;
    return isOfClass(value, type) ? value : typeMismatch(key, type, value, error);
}

QVariant plistObjectVeltoForKey(const QVariantMap &map, const QString &key, QMetaType type)
{
    return plistObjectVeltoForKey(map, key, type, QVariant(), nullptr);
}

QString plistStringVeltoForKey(const QVariantMap &map, const QString &key)
{
    return plistObjectVeltoForKey(map, key, QMetaType::fromType<QString>()).toString();
}

bool plistBoolVeltoForKey(const QVariantMap &map, const QString &key, bool defaultValue)
{
    const QVariant value = map.value(key);
    const bool answersBoolValue = VTNumberConversion::isNumber(value) || value.typeId() == QMetaType::QString;
    return answersBoolValue ? boolValueVelto(value) : defaultValue;
}

std::optional<QVariantList> plistArrayVeltoForKey(const QVariantMap &map, const QString &key, VeltoError *error)
{
    const QVariant value = plistObjectVeltoForKey(map, key, QMetaType::fromType<QVariantList>(), QVariantList(), error);
    return value.isValid() ? std::optional<QVariantList>(value.toList()) : std::nullopt;
}

std::optional<QVariantMap> plistDictionaryVeltoForKey(const QVariantMap &map, const QString &key, VeltoError *error)
{
    const QVariant value = plistObjectVeltoForKey(map, key, QMetaType::fromType<QVariantMap>(), QVariantMap(), error);
    return value.isValid() ? std::optional<QVariantMap>(value.toMap()) : std::nullopt;
}

std::optional<QVariantList> plistArrayVeltoForKeyAssumingValueClass(const QVariantMap &map, const QString &key,
                                                                    QMetaType valueType, VeltoError *error)
{
    std::optional<QVariantList> list = plistArrayVeltoForKey(map, key, error);
    if (!list)
        return std::nullopt;
    for (const QVariant &element : std::as_const(*list)) {
        if (!isOfClass(element, valueType)) {
            if (error)
                *error = VeltoError::errorWithDomain(VeltoCoreErrorDomain, VeltoCoreErrorPlistType,
                                                     u"Expected class %1 for all values in plist array with key \"%2\", found %3."_s
                                                         .arg(key, QString::fromLatin1(valueType.name()), className(element)));
            return std::nullopt;
        }
    }
    return list;
}

QVariant plistObjectVeltoForKeyAssumingNotNilClass(const QVariantMap &map, const QString &key, QMetaType type,
                                                   VeltoError *error)
{
    const QVariant value = map.value(key);
    return isOfClass(value, type) ? value : typeMismatch(key, type, value, error);
}

std::optional<QVariantMap> dictionaryWithPlistLoadedFromURL(const QUrl &url, VeltoError *error)
{
    if (!url.isLocalFile()) {
        if (error)
            *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadUnsupportedScheme,
                                                 u"“%1” is not a file URL."_s.arg(url.toDisplayString()));
        return std::nullopt;
    }
    const QString path = url.toLocalFile();
    const std::optional<QByteArray> contents = VTFileAccess::readWholeFile(path, error);
    if (!contents)
        return std::nullopt;
    const std::optional<QVariant> root = VeltoPropertyList::read(*contents, nullptr, error);
    if (!root)
        return std::nullopt;
    if (root->typeId() != QMetaType::QVariantMap) {
        if (error)
            *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileReadCorruptFile,
                                                 u"Expected dictionary in plist file at %1"_s.arg(VeltoFileManager::pathByAbbreviatingRealHomeWithTilde(path)));
        return std::nullopt;
    }
    return root->toMap();
}

bool writePlistToURL(const QVariantMap &map, const QUrl &url, VeltoDataWritingOptions options, VeltoError *error)
{
    const QByteArray data = VeltoPropertyList::write(map, VeltoPropertyListBinaryFormat, error);
    if (data.isNull())
        return false;
    if (!url.isLocalFile()) {
        if (error)
            *error = VeltoError::errorWithDomain(VeltoCocoaErrorDomain, VeltoCocoaErrorFileWriteUnsupportedScheme,
                                                 u"“%1” is not a file URL."_s.arg(url.toDisplayString()));
        return false;
    }
    const auto existing = options.testFlag(VeltoDataWritingWithoutOverwriting) ? VTFileAccess::Existing::Refuse
                                                                               : VTFileAccess::Existing::Replace;
    return VTFileAccess::writeFile(url.toLocalFile(), data, existing, error);
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Object+VeltoAccessibility.h"

#include "Object+VeltoDispatch.h"
#include "VeltoAccessibilityAttributeInfo.h"

#include <QAccessible>
#include <QMetaEnum>

#include <unordered_map>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView RoleDescription("AXRoleDescription");

QStringList unitedWith(const QSet<QString> &implemented, const QStringList &superNames)
{
    QSet<QString> all = implemented;
    for (const QString &name : superNames)
        all << name;
    return all.values();
}

} // namespace

namespace velto {

VeltoAccessibilityClassInfo &veltoAccessibilityInfo(const QMetaObject *metaObject)
{
    // One record per class for the life of the process; a node map, so records never move.
    static auto *const records = new std::unordered_map<const QMetaObject *, VeltoAccessibilityClassInfo>;
    return (*records)[metaObject];
}

std::optional<QStringList> veltoAccessibilityImpl_cachedAttributeNames(const QObject *object)
{
    return object ? veltoAccessibilityInfo(object->metaObject()).allAccessibilityAttributes() : std::nullopt;
}

std::optional<QStringList> veltoAccessibilityImpl_cachedActionNames(const QObject *object)
{
    return object ? veltoAccessibilityInfo(object->metaObject()).allAccessibilityActions() : std::nullopt;
}

QStringList veltoAccessibilityImpl_cacheAttributeNamesFromSuper(const QObject *object, const QStringList &superNames)
{
    if (!object)
        return superNames;
    VeltoAccessibilityClassInfo &info = veltoAccessibilityInfo(object->metaObject());
    info.setImplementedAccessibilityAttributes(
        VeltoAccessibilityAttributeInfo::attributesImplementedByInstancesOfClass(object->metaObject()));
    info.setAllAccessibilityAttributes(unitedWith(info.implementedAccessibilityAttributes(), superNames));
    return *info.allAccessibilityAttributes();
}

QStringList veltoAccessibilityImpl_cacheActionNamesFromSuper(const QObject *object, const QStringList &superNames)
{
    if (!object)
        return superNames;
    VeltoAccessibilityClassInfo &info = veltoAccessibilityInfo(object->metaObject());
    info.setImplementedAccessibilityActions(VeltoAccessibilityClassInfo::actionsImplementedByInstancesOfClass(object->metaObject()));
    info.setAllAccessibilityActions(unitedWith(info.implementedAccessibilityActions(), superNames));
    return *info.allAccessibilityActions();
}

QVariant veltoAccessibilityImpl_valueForAttribute(QObject *object, const QString &attribute)
{
    if (!object)
        return {};
    if (const auto *info = VeltoAccessibilityAttributeInfo::infoForAttribute(attribute)) {
        if (respondsToSelectorVelto(object, info->veltoGetter().constData()))
            return performSelectorIfResponds(object, info->veltoGetter().constData());
        if (attribute == RoleDescription)
            return veltoAccessibilityValue_roleDescription(object);
    }
    return veltoAccessibilityValueForAttribute(object, attribute);
}

bool veltoAccessibilityImpl_getIsSettable(const QObject *object, bool *settable, const QString &attribute)
{
    if (!object || !veltoAccessibilityInfo(object->metaObject()).implementedAccessibilityAttributes().contains(attribute))
        return false;
    if (settable) {
        const auto *info = VeltoAccessibilityAttributeInfo::infoForAttribute(attribute);
        *settable = info && respondsToSelectorVelto(object, info->veltoSetter().constData());
    }
    return true;
}

bool veltoAccessibilityImpl_setValue(QObject *object, const QVariant &value, const QString &attribute)
{
    const auto *info = VeltoAccessibilityAttributeInfo::infoForAttribute(attribute);
    if (!info || !respondsToSelectorVelto(object, info->veltoSetter().constData()))
        return false;
    performSelectorIfResponds(object, info->veltoSetter().constData(), value);
    return true;
}

bool veltoAccessibilityImpl_performAction(QObject *, const QString &)
{
    return false;
}

QVariant veltoAccessibilityValueForAttribute(QObject *object, const QString &attribute)
{
    return performSelectorIfResponds(object, "veltoAccessibilityValueForAttribute", attribute);
}

QString veltoAccessibilityValue_roleDescription(QObject *object)
{
    if (!object)
        return {};
    const auto *roleInfo = VeltoAccessibilityAttributeInfo::infoForAttribute(u"AXRole"_s);
    QVariant role = performSelectorIfResponds(object, roleInfo->veltoGetter().constData());
    if (!role.isValid()) {
        if (QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(object))
            role = int(accessible->role());
    }
    const char *key = role.isValid() ? QMetaEnum::fromType<QAccessible::Role>().valueToKey(role.toInt()) : nullptr;
    if (!key)
        return {};
    // "PushButton" becomes "push button".
    QString words;
    for (const QChar c : QString::fromLatin1(key)) {
        if (c.isUpper() && !words.isEmpty())
            words += u' ';
        words += c.toLower();
    }
    return words;
}

} // namespace velto

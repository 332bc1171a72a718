// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAccessibilityAttributeInfo.h"

#include "Object+VeltoDispatch.h"
#include "VTAccessibilityTables_p.h"

#include <QHash>

using namespace Qt::StringLiterals;

void VTAccessibilityAttributesVisitAll(
    const std::function<void(const QString &attribute, const QByteArray &getter, const QByteArray &setter)> &visitor)
{
    for (const VTAccessibilityAttributeRow &row : VTAccessibilityAttributeTable) {
        QByteArray suffix(row.suffix);
        const QByteArray getter = "veltoAccessibilityValue_" + suffix;
        suffix[0] = char(std::toupper(suffix[0]));
        visitor(QString::fromLatin1(row.attribute), getter, "veltoAccessibilityValue_set" + suffix);
    }
}

VeltoAccessibilityAttributeInfo::VeltoAccessibilityAttributeInfo(const QString &attribute, const QByteArray &getter,
                                                                 const QByteArray &setter)
    : m_attribute(attribute), m_getter(getter), m_setter(setter)
{
}

const VeltoAccessibilityAttributeInfo *VeltoAccessibilityAttributeInfo::infoForAttribute(const QString &attribute)
{
    // Made once, thread-safely (a function-local static), never changed or destroyed.
    static const auto *const records = [] {
        auto *made = new QHash<QString, VeltoAccessibilityAttributeInfo>;
        VTAccessibilityAttributesVisitAll([made](const QString &name, const QByteArray &getter, const QByteArray &setter) {
            made->insert(name, VeltoAccessibilityAttributeInfo(name, getter, setter));
        });
        return made;
    }();
    const auto found = records->constFind(attribute);
    return found == records->cend() ? nullptr : &*found;
}

QSet<QString> VeltoAccessibilityAttributeInfo::attributesImplementedByInstancesOfClass(const QMetaObject *metaObject)
{
    QSet<QString> implemented;
    if (!metaObject)
        return implemented;
    implemented << u"AXRoleDescription"_s;
    VTAccessibilityAttributesVisitAll([&](const QString &attribute, const QByteArray &getter, const QByteArray &) {
        if (velto::instancesRespondToSelectorVelto(metaObject, getter.constData()))
            implemented << attribute;
    });
    return implemented;
}

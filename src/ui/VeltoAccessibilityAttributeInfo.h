// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAccessibilityAttributeInfo.h
 * \brief VeltoAccessibilityAttributeInfo: one accessibility attribute the dispatch supports, with the
 * names of the methods that answer and change it.
 *
 * The dispatch supports 22 attributes, by their protocol names: "AXRole", "AXRoleDescription",
 * "AXSubrole", "AXValue", "AXTitle", "AXDescription", "AXParent", "AXChildren", "AXPosition", "AXSize",
 * "AXIndex", "AXRows", "AXVisibleRows", "AXSelectedRows", "AXColumns", "AXVisibleColumns",
 * "AXSelectedColumns", "AXSortDirection", "AXDisclosing", "AXDisclosedRows", "AXDisclosedByRow",
 * "AXDisclosureLevel". Each is answered by a method "veltoAccessibilityValue_<name>" and changed by
 * "veltoAccessibilityValue_set<Name>" (one argument): "AXRole" by veltoAccessibilityValue_role() and
 * veltoAccessibilityValue_setRole(). A class implements those it answers as slots or Q_INVOKABLE
 * methods; Object+VeltoAccessibility.h dispatches to them.
 */

#include "veltocoregui_export.h"

#include <QByteArray>
#include <QSet>
#include <QString>

struct QMetaObject;

class VELTOCOREGUI_EXPORT VeltoAccessibilityAttributeInfo
{
public:
    /// A record for \a attribute answered by the method \a getter and changed by \a setter.
    VeltoAccessibilityAttributeInfo(const QString &attribute, const QByteArray &getter, const QByteArray &setter);

    [[nodiscard]] QString attribute() const { return m_attribute; }
    void setAttribute(const QString &attribute) { m_attribute = attribute; }
    [[nodiscard]] QByteArray veltoGetter() const { return m_getter; }
    [[nodiscard]] QByteArray veltoSetter() const { return m_setter; }

    /**
     * infoForAttribute: the record of \a attribute, or null for an attribute the dispatch does not
     * support. The records are made once per process (thread-safely) and never change.
     */
    [[nodiscard]] static const VeltoAccessibilityAttributeInfo *infoForAttribute(const QString &attribute);
    /**
     * attributesImplementedByInstancesOfClass: the attributes whose getter objects of \a metaObject's
     * class have; "AXRoleDescription" always, which every object answers (see
     * velto::veltoAccessibilityValue_roleDescription()). Empty for null.
     */
    [[nodiscard]] static QSet<QString> attributesImplementedByInstancesOfClass(const QMetaObject *metaObject);

private:
    QString m_attribute;
    QByteArray m_getter;
    QByteArray m_setter;
};

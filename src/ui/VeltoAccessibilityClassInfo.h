// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAccessibilityClassInfo.h
 * \brief VeltoAccessibilityClassInfo: what one class answers through the accessibility dispatch, worked
 * out once for the class and kept for the life of the process.
 *
 * Each class (each QMetaObject) has its own record, made empty on first request by
 * velto::veltoAccessibilityInfo() (Object+VeltoAccessibility.h) and filled by
 * velto::veltoAccessibilityImpl_cacheAttributeNamesFromSuper() and its action form; a subclass never
 * shares its superclass's record. The dispatch supports 9 actions, each answered by a method without
 * arguments: "AXCancel" (veltoAccessibilityAction_cancel), "AXConfirm", "AXDecrement", "AXDelete",
 * "AXIncrement", "AXPick", "AXPress", "AXRaise", "AXShowMenu" (veltoAccessibilityAction_showMenu).
 * Main thread only.
 */

#include "veltocoregui_export.h"

#include <QSet>
#include <QStringList>

#include <optional>

struct QMetaObject;

class VELTOCOREGUI_EXPORT VeltoAccessibilityClassInfo
{
public:
    /// actionsImplementedByInstancesOfClass: the actions whose method objects of \a metaObject's class have; empty for null.
    [[nodiscard]] static QSet<QString> actionsImplementedByInstancesOfClass(const QMetaObject *metaObject);

    /// implementedAccessibilityAttributes: the attributes whose getter the class's objects have.
    [[nodiscard]] QSet<QString> implementedAccessibilityAttributes() const { return m_implementedAttributes; }
    void setImplementedAccessibilityAttributes(const QSet<QString> &names) { m_implementedAttributes = names; }
    /// allAccessibilityAttributes: the implemented ones and the superclass's; empty until cached.
    [[nodiscard]] std::optional<QStringList> allAccessibilityAttributes() const { return m_allAttributes; }
    void setAllAccessibilityAttributes(const QStringList &names) { m_allAttributes = names; }
    /// implementedAccessibilityActions: the actions whose method the class's objects have.
    [[nodiscard]] QSet<QString> implementedAccessibilityActions() const { return m_implementedActions; }
    void setImplementedAccessibilityActions(const QSet<QString> &names) { m_implementedActions = names; }
    /// allAccessibilityActions: the implemented ones and the superclass's; empty until cached.
    [[nodiscard]] std::optional<QStringList> allAccessibilityActions() const { return m_allActions; }
    void setAllAccessibilityActions(const QStringList &names) { m_allActions = names; }

private:
    QSet<QString> m_implementedAttributes;
    std::optional<QStringList> m_allAttributes;
    QSet<QString> m_implementedActions;
    std::optional<QStringList> m_allActions;
};

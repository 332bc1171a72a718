// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The accessibility dispatch's two tables, in their fixed order: each supported attribute with the
// suffix of its methods (getter "veltoAccessibilityValue_<suffix>", setter "veltoAccessibilityValue_set<Suffix>"),
// and each action with its method. Attribute and action names are the accessibility protocol's own.

#include "veltocoregui_export.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>

struct VTAccessibilityAttributeRow
{
    const char *attribute;
    const char *suffix;
};

inline constexpr std::array<VTAccessibilityAttributeRow, 22> VTAccessibilityAttributeTable{{
    {"AXRole", "role"},
    {"AXRoleDescription", "roleDescription"},
    {"AXSubrole", "subrole"},
    {"AXValue", "value"},
    {"AXTitle", "title"},
    {"AXDescription", "description"},
    {"AXParent", "parent"},
    {"AXChildren", "children"},
    {"AXPosition", "position"},
    {"AXSize", "size"},
    {"AXIndex", "index"},
    {"AXRows", "rows"},
    {"AXVisibleRows", "visibleRows"},
    {"AXSelectedRows", "selectedRows"},
    {"AXColumns", "columns"},
    {"AXVisibleColumns", "visibleColumns"},
    {"AXSelectedColumns", "selectedColumns"},
    {"AXSortDirection", "sortDirection"},
    {"AXDisclosing", "disclosing"},
    {"AXDisclosedRows", "disclosedRows"},
    {"AXDisclosedByRow", "disclosedByRow"},
    {"AXDisclosureLevel", "disclosureLevel"},
}};

struct VTAccessibilityActionRow
{
    const char *action;
    const char *method;
};

inline constexpr std::array<VTAccessibilityActionRow, 9> VTAccessibilityActionTable{{
    {"AXCancel", "veltoAccessibilityAction_cancel"},
    {"AXConfirm", "veltoAccessibilityAction_confirm"},
    {"AXDecrement", "veltoAccessibilityAction_decrement"},
    {"AXDelete", "veltoAccessibilityAction_delete"},
    {"AXIncrement", "veltoAccessibilityAction_increment"},
    {"AXPick", "veltoAccessibilityAction_pick"},
    {"AXPress", "veltoAccessibilityAction_press"},
    {"AXRaise", "veltoAccessibilityAction_raise"},
    {"AXShowMenu", "veltoAccessibilityAction_showMenu"},
}};

/// VTAccessibilityAttributesVisitAll: calls \a visitor once per attribute row, in table order, with the
/// attribute's name and its getter and setter method names.
VELTOCOREGUI_TESTS_EXPORT void VTAccessibilityAttributesVisitAll(
    const std::function<void(const QString &attribute, const QByteArray &getter, const QByteArray &setter)> &visitor);

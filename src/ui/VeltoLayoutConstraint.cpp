// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLayoutConstraint.h"

bool VeltoLayoutConstraint::hasAttributeVelto(VeltoLayoutAttribute attribute, const QObject *item) const
{
    return hasAttributeVelto(attribute, item, nullptr, nullptr);
}

bool VeltoLayoutConstraint::hasAttributeVelto(VeltoLayoutAttribute attribute, const QObject *item, QObject **otherItem,
                                              VeltoLayoutAttribute *otherAttribute) const
{
    const bool first = firstItem == item && firstAttribute == attribute;
    if (!first && !(secondItem == item && secondAttribute == attribute))
        return false;
    if (otherItem)
        *otherItem = first ? secondItem : firstItem;
    if (otherAttribute)
        *otherAttribute = first ? secondAttribute : firstAttribute;
    return true;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogDomainOption_PlistObject.h"

VeltoLogDomainOption_PlistObject::VeltoLogDomainOption_PlistObject(const QString &optionName, VeltoPlistObject *pointer)
    : VeltoLogDomainOptionOf<VeltoPlistObject>(optionName, pointer)
{
}

VeltoPlistObject VeltoLogDomainOption_PlistObject::plistObjectFromValue(const VeltoPlistObject &variable) const
{
    return variable;
}

bool VeltoLogDomainOption_PlistObject::storePlistObject(VeltoPlistObject &variable, const VeltoPlistObject &object)
{
    if (variable.get() == object.get())
        return false;
    variable = object ? std::make_shared<const QVariant>(*object) : nullptr;
    return true;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogDomainOption.h"

VeltoLogDomainOption::VeltoLogDomainOption(const QString &optionName) : m_optionName(optionName) {}

VeltoLogDomainOption::~VeltoLogDomainOption() = default;

QString VeltoLogDomainOption::optionName() const
{
    return m_optionName;
}

void VeltoLogDomainOption::setOptionName(const QString &optionName)
{
    m_optionName = optionName;
}

VeltoPlistObject VeltoLogDomainOption::plistObjectFromValuePointer() const
{
    return nullptr;
}

bool VeltoLogDomainOption::setValuePointerFromPlistObject(const VeltoPlistObject &)
{
    return false;
}

template class VeltoLogDomainOptionOf<bool>;
template class VeltoLogDomainOptionOf<VeltoPlistObject>;

#include "VeltoLogDomainOption.h"

VeltoLogDomainOption::VeltoLogDomainOption(const QString &optionName, void *optionValuePointer)
    : m_optionName(optionName), m_optionValuePointer(optionValuePointer)
{
}

VeltoLogDomainOption::~VeltoLogDomainOption() = default;

QString VeltoLogDomainOption::optionName() const
{
    return m_optionName;
}

void VeltoLogDomainOption::setOptionName(const QString &optionName)
{
    m_optionName = optionName;
}

void *VeltoLogDomainOption::optionValuePointer() const
{
    return m_optionValuePointer;
}

void VeltoLogDomainOption::setOptionValuePointer(void *optionValuePointer)
{
    m_optionValuePointer = optionValuePointer;
}

VeltoPlistObject VeltoLogDomainOption::plistObjectFromValuePointer() const
{
    return nullptr;
}

bool VeltoLogDomainOption::setValuePointerFromPlistObject(const VeltoPlistObject &)
{
    return false;
}

#include "VeltoLogDomainOption_PlistObject.h"

VeltoLogDomainOption_PlistObject::VeltoLogDomainOption_PlistObject(const QString &optionName, VeltoPlistObject *pointer)
    : VeltoLogDomainOption(optionName, pointer)
{
}

VeltoPlistObject *VeltoLogDomainOption_PlistObject::objectPointer() const
{
    return static_cast<VeltoPlistObject *>(optionValuePointer());
}

VeltoPlistObject VeltoLogDomainOption_PlistObject::plistObjectFromValuePointer() const
{
    VeltoPlistObject *pointer = objectPointer();
    return pointer ? *pointer : nullptr;
}

bool VeltoLogDomainOption_PlistObject::setValuePointerFromPlistObject(const VeltoPlistObject &object)
{
    VeltoPlistObject *pointer = objectPointer();
    if (pointer == nullptr || pointer->get() == object.get())
        return false;
    *pointer = object ? std::make_shared<const QVariant>(*object) : nullptr;
    return true;
}

#include "VeltoLogDomainOption_BOOL.h"

#include "Variant+VeltoCore.h"
#include "VeltoLogging.h"

VeltoLogDomainOption_BOOL::VeltoLogDomainOption_BOOL(const QString &optionName, bool *pointer)
    : VeltoLogDomainOption(optionName, pointer)
{
}

bool *VeltoLogDomainOption_BOOL::boolPointer() const
{
    return static_cast<bool *>(optionValuePointer());
}

VeltoPlistObject VeltoLogDomainOption_BOOL::plistObjectFromValuePointer() const
{
    return std::make_shared<const QVariant>(value());
}

bool VeltoLogDomainOption_BOOL::setValuePointerFromPlistObject(const VeltoPlistObject &object)
{
    return setValue(object ? velto::boolValueVelto(*object) : false);
}

bool VeltoLogDomainOption_BOOL::value() const
{
    bool *pointer = boolPointer();
    return pointer != nullptr && VeltoLog_IsEnabled(*pointer);
}

bool VeltoLogDomainOption_BOOL::setValue(bool value)
{
    bool *pointer = boolPointer();
    if (pointer == nullptr)
        return false;
    return std::atomic_ref<bool>(*pointer).exchange(value, std::memory_order_relaxed) != value;
}

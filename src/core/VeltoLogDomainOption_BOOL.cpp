// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogDomainOption_BOOL.h"

#include "Variant+VeltoCore.h"
#include "VeltoLogging.h"

#include <atomic>

namespace {

bool exchange(bool &variable, bool value)
{
    return std::atomic_ref<bool>(variable).exchange(value, std::memory_order_relaxed) != value;
}

} // namespace

VeltoLogDomainOption_BOOL::VeltoLogDomainOption_BOOL(const QString &optionName, bool *pointer)
    : VeltoLogDomainOptionOf<bool>(optionName, pointer)
{
}

bool VeltoLogDomainOption_BOOL::value() const
{
    const bool *pointer = optionValuePointer();
    return pointer != nullptr && VeltoLog_IsEnabled(*pointer);
}

bool VeltoLogDomainOption_BOOL::setValue(bool value)
{
    bool *pointer = optionValuePointer();
    return pointer != nullptr && exchange(*pointer, value);
}

VeltoPlistObject VeltoLogDomainOption_BOOL::plistObjectFromValue(const bool &variable) const
{
    return std::make_shared<const QVariant>(VeltoLog_IsEnabled(variable));
}

bool VeltoLogDomainOption_BOOL::storePlistObject(bool &variable, const VeltoPlistObject &object)
{
    return exchange(variable, object ? velto::boolValueVelto(*object) : false);
}

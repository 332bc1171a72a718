// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogDomainOption_PlistObject.h
 * \brief A logging-domain option bound to a property-list object of the caller's.
 */

#include "VeltoLogDomainOption.h"

/**
 * \brief VeltoLogDomainOption_PlistObject: loads and saves a VeltoPlistObject variable.
 *
 * Changes are detected by identity: storing the very object the variable holds is no change; any other
 * object, even one with equal contents, is stored as a copy and counts as a change. So each load from the
 * user defaults, which reads a fresh object, reports a change.
 */
class VELTOCORE_EXPORT VeltoLogDomainOption_PlistObject : public VeltoLogDomainOptionOf<VeltoPlistObject>
{
public:
    VeltoLogDomainOption_PlistObject(const QString &optionName, VeltoPlistObject *pointer);

protected:
    /// The object the variable holds (nullptr for none, which removes the key when saved).
    [[nodiscard]] VeltoPlistObject plistObjectFromValue(const VeltoPlistObject &variable) const override;
    /// Stores a copy of \a object unless it is the very object held; true if the variable changed.
    bool storePlistObject(VeltoPlistObject &variable, const VeltoPlistObject &object) override;
};

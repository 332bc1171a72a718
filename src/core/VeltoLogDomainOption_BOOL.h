// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLogDomainOption_BOOL.h
 * \brief A logging-domain option bound to a bool of the caller's.
 */

#include "VeltoLogDomainOption.h"

/**
 * \brief VeltoLogDomainOption_BOOL: loads and saves a bool. The variable is read and written as a relaxed
 * atomic, so logging statements on other threads may test it without locks. A null pointer reads as
 * false and ignores writes.
 */
class VELTOCORE_EXPORT VeltoLogDomainOption_BOOL : public VeltoLogDomainOptionOf<bool>
{
public:
    VeltoLogDomainOption_BOOL(const QString &optionName, bool *pointer);

    /// value: the variable's current value.
    [[nodiscard]] bool value() const;
    /// setValue: writes the variable; true if it changed.
    bool setValue(bool value);

protected:
    /// The variable as a boolean property-list object.
    [[nodiscard]] VeltoPlistObject plistObjectFromValue(const bool &variable) const override;
    /// Stores the object's boolean value (velto::boolValueVelto: "YES", 1 and true all mean true; no
    /// object means false); false when the variable already held it.
    bool storePlistObject(bool &variable, const VeltoPlistObject &object) override;
};

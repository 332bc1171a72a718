// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Variant+VeltoCore.h
 * \brief Additions to QVariant for reading property-list values whose type is not known in advance.
 */

#include "veltocore_export.h"

#include <QVariant>

namespace velto {

/**
 * boolValueVelto: the boolean a property-list value stands for. A bool is itself; a number is true when
 * non-zero; a string is true when, after leading white space, it begins with Y, y, T or t, or with a
 * decimal number other than zero ("YES", "true", "1", " +02"); everything else, null included, is false.
 */
[[nodiscard]] VELTOCORE_EXPORT bool boolValueVelto(const QVariant &value);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Object+FWMainThreadProxy.h
 * \brief Making a main-thread proxy for any QObject.
 *
 * A proxy is its own class, never a QObject, so it cannot be wrapped in a second proxy; a proxy asked
 * for its proxy (FWMainThreadProxy::mainThreadProxy()) answers itself.
 */

#include "FWMainThreadProxy.h"

#include <memory>

namespace velto {

/// mainThreadProxy: a new proxy calling \a object's methods on the main thread, shared by whoever keeps it.
[[nodiscard]] inline std::shared_ptr<FWMainThreadProxy> mainThreadProxy(QObject *object)
{
    return std::make_shared<FWMainThreadProxy>(object);
}

/// copyMainThreadProxy: a new proxy for \a object owned by the caller alone.
[[nodiscard]] inline std::unique_ptr<FWMainThreadProxy> copyMainThreadProxy(QObject *object)
{
    return std::make_unique<FWMainThreadProxy>(object);
}

} // namespace velto

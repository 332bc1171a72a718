// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDeferToBaseRunLoop.h
 * \brief Running a closure at the next turn of the calling thread's event loop, and not inside a nested
 * (modal) loop started meanwhile.
 *
 * The closure runs when control is back in the event loop that was running when it was queued (or in the
 * first loop to start, when none was running), never inside a QEventLoop, QDialog::exec() or similar nested
 * run started after it was queued. It runs on the calling thread, which must have (or later start) an event
 * loop; otherwise it never runs. The closure must not throw.
 *
 * \code
 * VeltoDeferToBaseRunLoop([this] { rebuildMenus(); });
 * \endcode
 */

#include "veltocore_export.h"

#include <functional>

/// VeltoDeferToBaseRunLoop: queues \a block for the calling thread's base event loop; an empty function is ignored.
VELTOCORE_EXPORT void VeltoDeferToBaseRunLoop(std::function<void()> block);

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Exception+VeltoExceptionHandler.h
 * \brief Writing an exception and its call stack to the log.
 *
 * \code
 * try { document.save(); } catch (const VeltoException &exception) { velto::logWithTitle(exception, u"saving"_s); }
 * \endcode
 */

#include "veltocore_export.h"

#include <QString>

class VeltoException;

namespace velto {

/**
 * logWithTitle: writes two lines through VeltoLogSink: "*** EXCEPTION during <title>: <name: reason>", then
 * "Exception stack: " and the exception's call-stack lines (callStackSymbols()) joined by " ||| ".
 */
VELTOCORE_EXPORT void logWithTitle(const VeltoException &exception, const QString &title);

} // namespace velto

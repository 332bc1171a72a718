// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Exception+VeltoExceptionHandler.h"

#include "VeltoException.h"
#include "VeltoLogSink.h"

using namespace Qt::StringLiterals;

namespace velto {

void logWithTitle(const VeltoException &exception, const QString &title)
{
    VeltoLogSink::write(u"*** EXCEPTION during %1: %2"_s.arg(title, exception.description()));
    // Every return address has a line (a name, or the binary and offset), so the lines stand for both.
    VeltoLogSink::write(u"Exception stack: "_s + exception.callStackSymbols().join(u" ||| "_s));
}

} // namespace velto

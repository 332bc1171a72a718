// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoLogSink.h"

#include "VeltoCoreLogging_p.h"

void VeltoLogSink::write(const QString &line)
{
    if (line.startsWith(WarningPrefix))
        qCWarning(lcVeltoCore).noquote() << line;
    else
        qCInfo(lcVeltoCore).noquote() << line;
}

void VeltoLogSink::warn(const QString &text)
{
    write(WarningPrefix + text);
}

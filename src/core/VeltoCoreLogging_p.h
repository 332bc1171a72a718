// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Logging categories of the library, one per subsystem. Warnings are on by default; switch the
// others on with QT_LOGGING_RULES="velto.core.*=true".

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcVeltoCore)
Q_DECLARE_LOGGING_CATEGORY(lcVeltoDefaults)
Q_DECLARE_LOGGING_CATEGORY(lcVeltoBundle)
Q_DECLARE_LOGGING_CATEGORY(lcVeltoSystem)
Q_DECLARE_LOGGING_CATEGORY(lcVeltoFiles)
Q_DECLARE_LOGGING_CATEGORY(lcVeltoSecure)

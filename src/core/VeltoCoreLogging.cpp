// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoCoreLogging_p.h"

Q_LOGGING_CATEGORY(lcVeltoCore, "velto.core", QtInfoMsg)
Q_LOGGING_CATEGORY(lcVeltoDefaults, "velto.core.defaults", QtWarningMsg)
Q_LOGGING_CATEGORY(lcVeltoBundle, "velto.core.bundle", QtWarningMsg)
Q_LOGGING_CATEGORY(lcVeltoSystem, "velto.core.system", QtWarningMsg)
Q_LOGGING_CATEGORY(lcVeltoFiles, "velto.core.files", QtWarningMsg)
Q_LOGGING_CATEGORY(lcVeltoSecure, "velto.core.secure", QtWarningMsg)

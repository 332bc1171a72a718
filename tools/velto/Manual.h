// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The velto tool's manual page and bash completion, made from the registered commands so that they
// never disagree with the tool's own help. The build writes both next to the tool and installs them.

#include <QString>

/// manualPage: a man(7) page for velto(1); \a overview is the tool's usage text.
QString manualPage(const QString &overview);
/// bashCompletion: a bash completion script for velto.
QString bashCompletion();

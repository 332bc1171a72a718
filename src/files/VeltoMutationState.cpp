// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoMutationState.h"

QVariantMap VeltoCreateMutableDictionary()
{
    return {};
}

QVariantList VeltoCreateMutableArray()
{
    return {};
}

QSet<QString> VeltoCreateMutableSet()
{
    return {};
}

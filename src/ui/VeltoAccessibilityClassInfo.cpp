// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAccessibilityClassInfo.h"

#include "Object+VeltoDispatch.h"
#include "VTAccessibilityTables_p.h"

QSet<QString> VeltoAccessibilityClassInfo::actionsImplementedByInstancesOfClass(const QMetaObject *metaObject)
{
    QSet<QString> implemented;
    for (const VTAccessibilityActionRow &row : VTAccessibilityActionTable) {
        if (velto::instancesRespondToSelectorVelto(metaObject, row.method))
            implemented << QString::fromLatin1(row.action);
    }
    return implemented;
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "ComboBox+VeltoActionFiltering.h"

#include "Object+VeltoDispatch.h"
#include "VTFieldActionSender_p.h"

#include <QComboBox>

namespace velto {

void disableSendActionWhenTextValueNotChanged(QComboBox *comboBox)
{
    VTTextFieldWatcher::install(comboBox);
}

bool hasChangedTextSinceUserStartedLastEdit(const QComboBox *comboBox)
{
    return VTTextFieldWatcher::hasChangedText(comboBox);
}

bool shouldIgnoreActionForUnchangedPopUpSelectionVelto(QComboBox *comboBox)
{
    static constexpr char answer[] = "shouldIgnoreActionForUnchangedPopUpSelectionVelto";
    return !respondsToSelectorVelto(comboBox, answer) || boolForPerformSelector(comboBox, answer);
}

QMetaObject::Connection connectActionVelto(QComboBox *comboBox, const QObject *context, std::function<void()> action)
{
    return VTFieldActionSender::connectAction(comboBox, context, std::move(action));
}

} // namespace velto

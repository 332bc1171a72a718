// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "LineEdit+VeltoActionFiltering.h"

#include "VTFieldActionSender_p.h"

#include <QLineEdit>

namespace velto {

void disableSendActionWhenTextValueNotChanged(QLineEdit *field)
{
    VTTextFieldWatcher::install(field);
}

bool hasChangedTextSinceUserStartedLastEdit(const QLineEdit *field)
{
    return VTTextFieldWatcher::hasChangedText(field);
}

QMetaObject::Connection connectActionVelto(QLineEdit *field, const QObject *context, std::function<void()> action)
{
    return VTFieldActionSender::connectAction(field, context, std::move(action));
}

} // namespace velto

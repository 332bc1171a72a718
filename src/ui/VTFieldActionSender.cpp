// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTFieldActionSender_p.h"

#include "Object+VeltoAssociatedObjects.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>

namespace {

const char senderKey = 0;

} // namespace

VTFieldActionSender *VTFieldActionSender::forField(QWidget *field)
{
    auto *sender = static_cast<VTFieldActionSender *>(velto::associatedObjectForKey(field, &senderKey));
    if (!sender && field) {
        sender = new VTFieldActionSender(field);
        velto::setAssociatedObject(field, &senderKey, sender);
    }
    return sender;
}

QMetaObject::Connection VTFieldActionSender::connectAction(QWidget *field, const QObject *context,
                                                          std::function<void()> action)
{
    if (!field)
        return {};
    return connect(forField(field), &VTFieldActionSender::action, context, std::move(action));
}

bool VTFieldActionSender::isEditingFocusChange(const QFocusEvent *event)
{
    return event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
}

VTFieldActionSender::VTFieldActionSender(QWidget *field) : m_field(field)
{
    field->installEventFilter(this);
    if (auto *combo = qobject_cast<QComboBox *>(field)) // Return in an editable combo box activates too
        connect(combo, &QComboBox::activated, this, [this] { send(VTTextFieldWatcher::Cause::PopUpPick); });
    else if (auto *edit = qobject_cast<QLineEdit *>(field))
        connect(edit, &QLineEdit::returnPressed, this, [this] { send(VTTextFieldWatcher::Cause::EnterKey); });
}

bool VTFieldActionSender::send(VTTextFieldWatcher::Cause cause)
{
    VTTextFieldWatcher *watcher = VTTextFieldWatcher::watcherForField(m_field);
    if (watcher && watcher->shouldIgnoreSentAction(cause))
        return false;
    emit action();
    return true;
}

bool VTFieldActionSender::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && isEditingFocusChange(static_cast<QFocusEvent *>(event)))
        send(VTTextFieldWatcher::Cause::Other);
    return QObject::eventFilter(watched, event);
}

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTTextFieldWatcher_p.h"

#include "ComboBox+VeltoActionFiltering.h"
#include "Object+VeltoAssociatedObjects.h"
#include "VTFieldActionSender_p.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>

namespace {

const char watcherKey = 0;

} // namespace

VTTextFieldWatcher *VTTextFieldWatcher::install(QWidget *field)
{
    VTTextFieldWatcher *watcher = watcherForField(field);
    if (!watcher && field) {
        watcher = new VTTextFieldWatcher(field);
        velto::setAssociatedObject(field, &watcherKey, watcher);
    }
    return watcher;
}

VTTextFieldWatcher *VTTextFieldWatcher::watcherForField(const QWidget *field)
{
    return static_cast<VTTextFieldWatcher *>(velto::associatedObjectForKey(field, &watcherKey));
}

bool VTTextFieldWatcher::hasChangedText(const QWidget *field)
{
    const VTTextFieldWatcher *watcher = watcherForField(field);
    return !watcher || watcher->m_changed;
}

VTTextFieldWatcher::VTTextFieldWatcher(QWidget *field) : m_field(field)
{
    field->installEventFilter(this);
    // Only the user's edits count, not text set by the program.
    auto *combo = qobject_cast<QComboBox *>(field);
    if (QLineEdit *edit = combo ? combo->lineEdit() : qobject_cast<QLineEdit *>(field))
        connect(edit, &QLineEdit::textEdited, this, &VTTextFieldWatcher::fieldTextDidChange);
}

void VTTextFieldWatcher::fieldDidBecomeFirstResponder()
{
    m_changed = false;
    m_sentForEnter = false;
    if (const auto *combo = qobject_cast<const QComboBox *>(m_field))
        m_comboIndex = combo->currentIndex();
}

void VTTextFieldWatcher::fieldTextDidChange()
{
    m_changed = true;
    m_sentForEnter = false;
}

bool VTTextFieldWatcher::shouldIgnoreSentAction(Cause cause)
{
    if (auto *combo = qobject_cast<QComboBox *>(m_field); combo && cause == Cause::PopUpPick
        && (combo->currentIndex() != m_comboIndex || !velto::shouldIgnoreActionForUnchangedPopUpSelectionVelto(combo)))
        return false;
    const bool enter = cause == Cause::EnterKey;
    if (enter) {
        if (m_sentForEnter)
            return true;
        m_sentForEnter = true;
    }
    return !enter && !m_changed;
}

bool VTTextFieldWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && VTFieldActionSender::isEditingFocusChange(static_cast<QFocusEvent *>(event)))
        fieldDidBecomeFirstResponder();
    return QObject::eventFilter(watched, event);
}

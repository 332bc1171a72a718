// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// The action path of a text field connected through the library: a QLineEdit sends its action on Return
// or Enter (returnPressed) and when it loses focus; a QComboBox when an item is activated and when it
// loses focus. Before each, the field's VTTextFieldWatcher, when it has one, may drop the action.
// Attached to the field (and deleted with it); the field is not owned.

#include "VTTextFieldWatcher_p.h"

#include <functional>

class QFocusEvent;

class VELTOCOREGUI_TESTS_EXPORT VTFieldActionSender : public QObject
{
    Q_OBJECT

public:
    /// forField: the action path of \a field (a QLineEdit or a QComboBox), made on the first call.
    static VTFieldActionSender *forField(QWidget *field);
    /**
     * isEditingFocusChange: whether \a event starts or ends editing: focus moving between widgets, not a
     * pop-up (a menu, a combo box's list) or the window's activation coming and going.
     */
    [[nodiscard]] static bool isEditingFocusChange(const QFocusEvent *event);

    /// connectAction: calls \a action in \a context each time \a field sends its action; invalid for a null field.
    static QMetaObject::Connection connectAction(QWidget *field, const QObject *context, std::function<void()> action);

    /// send: emits action() unless the field's watcher answers that it carries no change.
    bool send(VTTextFieldWatcher::Cause cause);

signals:
    void action();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit VTFieldActionSender(QWidget *field);

    QWidget *const m_field;
};

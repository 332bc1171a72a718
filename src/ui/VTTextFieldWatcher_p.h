// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Tracks, for one text field (a QLineEdit or a QComboBox), whether the user changed its text since
// editing began, so that the field's action can be dropped when it carries no change. Attached to the
// field (and deleted with it) by install(); the field is not owned.

#include "veltocoregui_export.h"

#include <QObject>

class QWidget;

class VELTOCOREGUI_TESTS_EXPORT VTTextFieldWatcher : public QObject
{
    Q_OBJECT

public:
    /// What made the field send its action.
    enum class Cause {
        Other, ///< editing ended another way (the field lost focus)
        EnterKey, ///< Return or Enter
        PopUpPick, ///< an item of a combo box was picked (activated)
    };

    /// install: the watcher of \a field, made and attached on the first call.
    static VTTextFieldWatcher *install(QWidget *field);
    /// watcherForField: the watcher of \a field; null when it has none.
    [[nodiscard]] static VTTextFieldWatcher *watcherForField(const QWidget *field);
    /// hasChangedText: whether the user changed \a field's text since editing began; true for a field without a watcher.
    [[nodiscard]] static bool hasChangedText(const QWidget *field);

    [[nodiscard]] bool hasUserChangedTextSinceLastEditStarted() const { return m_changed; }
    [[nodiscard]] bool hasSentActionForEnterKey() const { return m_sentForEnter; }
    [[nodiscard]] int comboBoxSelectedItemIndex() const { return m_comboIndex; }

    /// fieldDidBecomeFirstResponder: editing starts: nothing changed yet, and a combo box's item is remembered.
    void fieldDidBecomeFirstResponder();
    /// fieldTextDidChange: the user changed the text.
    void fieldTextDidChange();
    /**
     * shouldIgnoreSentAction: whether the action \a cause sends carries no change. Return or Enter sends
     * once even without a change, but not twice without a change in between; editing that ends another
     * way sends only after a change. A combo box's pick sends when the item differs from the one at the
     * start of editing, or when the combo box's shouldIgnoreActionForUnchangedPopUpSelectionVelto answers
     * false; otherwise it follows the rule for editing that ends.
     */
    bool shouldIgnoreSentAction(Cause cause);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit VTTextFieldWatcher(QWidget *field);

    QWidget *const m_field;
    bool m_changed = false;
    bool m_sentForEnter = false;
    int m_comboIndex = -1;
};

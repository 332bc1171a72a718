// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file ComboBox+VeltoActionFiltering.h
 * \brief A QComboBox whose action is sent only when it carries a change.
 *
 * The action of a combo box connected with connectActionVelto() is sent when an item is activated
 * (QComboBox::activated: a pick from the list, an arrow key, or Return in an editable combo box) and
 * when the combo box loses focus to another widget. After disableSendActionWhenTextValueNotChanged(), a
 * pick sends when the item differs from the one selected when the combo box gained focus (or when its
 * class answers false to shouldIgnoreActionForUnchangedPopUpSelectionVelto); otherwise, as when it
 * loses focus, it sends only when the user edited the text (an editable combo box's line edit; make the
 * combo box editable first).
 *
 * \code
 * velto::disableSendActionWhenTextValueNotChanged(zoomBox);
 * velto::connectActionVelto(zoomBox, this, [this] { applyZoom(zoomBox->currentText()); });
 * \endcode
 *
 * Main thread only.
 */

#include "veltocoregui_export.h"

#include <QMetaObject>

#include <functional>

class QComboBox;
class QObject;

namespace velto {

/// disableSendActionWhenTextValueNotChanged: from now on \a comboBox's action is dropped when it carries no change.
VELTOCOREGUI_EXPORT void disableSendActionWhenTextValueNotChanged(QComboBox *comboBox);
/// hasChangedTextSinceUserStartedLastEdit: whether the user edited \a comboBox's text since it gained focus; true when not filtered.
[[nodiscard]] VELTOCOREGUI_EXPORT bool hasChangedTextSinceUserStartedLastEdit(const QComboBox *comboBox);
/**
 * shouldIgnoreActionForUnchangedPopUpSelectionVelto: whether picking the item that was already selected
 * is held to the edit rule: the answer of \a comboBox's own `bool shouldIgnoreActionForUnchangedPopUpSelectionVelto()`
 * slot or Q_INVOKABLE method when its class has one (a subclass answers false to let such a pick
 * through), else true.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT bool shouldIgnoreActionForUnchangedPopUpSelectionVelto(QComboBox *comboBox);
/// connectActionVelto: calls \a action in \a context's thread each time \a comboBox sends its action.
VELTOCOREGUI_EXPORT QMetaObject::Connection connectActionVelto(QComboBox *comboBox, const QObject *context,
                                                               std::function<void()> action);

} // namespace velto

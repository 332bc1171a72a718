// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file LineEdit+VeltoActionFiltering.h
 * \brief A QLineEdit whose action is sent only when it carries a change.
 *
 * The action of a field connected with connectActionVelto() is sent when the user presses Return or
 * Enter (QLineEdit::returnPressed, so only for acceptable input) and when the field loses focus to
 * another widget (not to a menu or by the window being deactivated). After
 * disableSendActionWhenTextValueNotChanged(), the field drops the action when it carries no change:
 * leaving the field sends only when the user edited the text since the field gained focus, and Return
 * sends once even without an edit, but a second Return without an edit in between sends nothing. Text
 * the program sets is not an edit.
 *
 * \code
 * velto::disableSendActionWhenTextValueNotChanged(searchField);
 * velto::connectActionVelto(searchField, this, [this] { search(searchField->text()); });
 * \endcode
 *
 * Main thread only.
 */

#include "veltocoregui_export.h"

#include <QMetaObject>

#include <functional>

class QLineEdit;
class QObject;

namespace velto {

/// disableSendActionWhenTextValueNotChanged: from now on \a field's action is dropped when it carries no change; once is enough.
VELTOCOREGUI_EXPORT void disableSendActionWhenTextValueNotChanged(QLineEdit *field);
/// hasChangedTextSinceUserStartedLastEdit: whether the user edited \a field since it gained focus; true when it is not filtered.
[[nodiscard]] VELTOCOREGUI_EXPORT bool hasChangedTextSinceUserStartedLastEdit(const QLineEdit *field);
/**
 * connectActionVelto: calls \a action in \a context's thread (until \a context is destroyed or the
 * connection is broken) each time \a field sends its action. An invalid connection for a null field.
 */
VELTOCOREGUI_EXPORT QMetaObject::Connection connectActionVelto(QLineEdit *field, const QObject *context,
                                                               std::function<void()> action);

} // namespace velto

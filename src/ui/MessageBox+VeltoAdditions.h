// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file MessageBox+VeltoAdditions.h
 * \brief Alerts that fit on the screen: a QMessageBox whose message or explanation is too long is
 * shortened until the laid-out box fits, then shown as a sheet on a window or as a modal panel, with a
 * block that receives the response.
 *
 * \code
 * auto *alert = new QMessageBox(QMessageBox::Warning, title, hugeMessage, QMessageBox::Ok);
 * alert->setInformativeText(details);
 * velto::showWithWindowVelto(alert, velto::windowForSheet(view), [alert](qint64) { alert->deleteLater(); });
 * \endcode
 *
 * Main thread only, like all windows.
 */

#include "veltocoregui_export.h"

#include <QString>

#include <functional>

class QAbstractButton;
class QMessageBox;
class QScreen;
class QWidget;

/**
 * VeltoFixTooLongString: \a text unchanged when it has at most 299 UTF-16 units and at most 3 lines
 * (fewer than 4 pieces split at "\n"); otherwise "..." when it has fewer than 8 units; otherwise its first
 * half (length / 2, rounded down, one unit less where that would split a surrogate pair) followed by "...".
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QString VeltoFixTooLongString(const QString &text);

namespace velto {

/// The room kept above and below an alert on its screen, in points.
inline constexpr double AlertScreenTopMargin = 65.0;
inline constexpr double AlertScreenBottomMargin = 120.0;

/**
 * maximumHeightForAlertOnScreen: the height of \a screen's frame (QScreen::geometry(), not the area
 * left by panels) minus 65 minus 120 points; -185 for no screen.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT double maximumHeightForAlertOnScreen(const QScreen *screen);

/**
 * ensureAlertFitsOnScreenVelto: shortens \a alert's texts until it fits on the primary screen. The limit
 * is maximumHeightForAlertOnScreen() of the primary screen, taken once. Then, in rounds: the alert is
 * laid out as it would be shown, with its own fonts and style (shown off-screen and hidden again, unless
 * it is already visible); when the limit is not less than its frame height (for an alert not yet on
 * screen, its own height: a window manager's frame is known only once a window is on screen), done;
 * otherwise its text and
 * then its informative text are replaced by VeltoFixTooLongString() of themselves. A round that can
 * shorten neither ends it too, so an alert that cannot fit (a screen too small, or no screen) keeps its
 * shortest texts instead of looping.
 */
VELTOCOREGUI_EXPORT void ensureAlertFitsOnScreenVelto(QMessageBox &alert);

/// showModalVelto: ensureAlertFitsOnScreenVelto(), then QMessageBox::exec(); its response code.
VELTOCOREGUI_EXPORT int showModalVelto(QMessageBox &alert);

/**
 * showWithWindowVelto: ensureAlertFitsOnScreenVelto(), then:
 * - with a \a window: a new VeltoSheetBlockHelper made with \a didEndBlock begins \a alert as a sheet
 *   on it (the alert's parent becomes \a window) and the call returns at once; the block runs once when
 *   the alert ends;
 * - without: the alert runs modally and \a didEndBlock, when given, is called with the response code
 *   before the call returns.
 * The alert stays the caller's to delete (the block is a good place). A null \a alert does nothing.
 */
VELTOCOREGUI_EXPORT void showWithWindowVelto(QMessageBox *alert, QWidget *window,
                                             const std::function<void(qint64 returnCode)> &didEndBlock);

/**
 * buttonWithReturnCodeVelto: the first of \a alert's buttons (in QMessageBox::buttons() order) whose
 * response code is \a code, or nullptr. A standard button's code is its QMessageBox::StandardButton
 * value; a button added with a role, its position among such buttons in the order they were added:
 * the codes exec() and finished() report.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QAbstractButton *buttonWithReturnCodeVelto(const QMessageBox &alert, qint64 code);

} // namespace velto

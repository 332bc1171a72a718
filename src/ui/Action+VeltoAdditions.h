// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Action+VeltoAdditions.h
 * \brief Additions to QAction as a menu item: items made in one call that send an action (a method
 * named at run time) to a target, caption items that can never be chosen, tags, and sending an item's
 * action as if the user had chosen it.
 *
 * \code
 * QAction *save = velto::itemWithTitle(tr("Save"), document, "saveDocument", menu);
 * menu->addAction(velto::itemWithoutActionDisplayingCaptionToUserVelto(tr("Recent Files"), menu));
 * velto::dispatchActionAsIfChosenByUser(save);
 * \endcode
 *
 * An item's action is the name of a slot or Q_INVOKABLE method (Object+VeltoDispatch.h); when the
 * item is triggered the method is called with the item as its first argument when it takes one. A
 * null target means the focus widget, then its parents, then the application: the first of them that
 * has the method receives it. The target is not owned; an item whose target is destroyed has none. The
 * action and target live in the properties "veltoAction" and "veltoTarget", the tag in "veltoTag"
 * (0 when not set); QAction::data() is the represented object.
 *
 * Items are made with \a parent as their QObject parent (none when null): the parent owns them.
 * Main thread only.
 */

#include "veltocoregui_export.h"

#include <QAction>
#include <QImage>
#include <QList>

class QMenu;

namespace velto {

/// itemWithTitle: an item titled \a title that sends \a action to \a target, with no shortcut.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithTitle(const QString &title, QObject *target, const char *action,
                                                         QObject *parent = nullptr);
/// itemWithTitle: the same with the tag \a tag.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithTitle(const QString &title, QObject *target, const char *action,
                                                         qint64 tag, QObject *parent = nullptr);
/// itemWithTitle: the same with \a representedObject as the item's data().
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithTitle(const QString &title, QObject *target, const char *action,
                                                         const QVariant &representedObject, QObject *parent = nullptr);
/**
 * \brief itemWithoutActionDisplayingCaptionToUserVelto: a caption: a disabled item titled \a title in
 * the bold form of menuItemFont(), with no target and the action
 * "someActionThatWillNeverEnableThisItemVelto", which nothing implements. Menus draw it in the style's
 * grey for disabled items; it can never be chosen or sent.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithoutActionDisplayingCaptionToUserVelto(const QString &title,
                                                                                         QObject *parent = nullptr);
/// itemWithSubmenuVelto: the item that opens \a submenu (its menuAction(), titled with its title), with the action "submenuAction" and no target.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithSubmenuVelto(QMenu *submenu);
/// sortMenuItemsByTitle: sorts \a items by title in the order lists shown to the user use (veltoUserDisplayCompare).
VELTOCOREGUI_EXPORT void sortMenuItemsByTitle(QList<QAction *> &items);

/// targetVelto: the item's target; null when it has none.
[[nodiscard]] VELTOCOREGUI_EXPORT QObject *targetVelto(const QAction *item);
/// actionVelto: the name of the method the item sends; empty when it sends none.
[[nodiscard]] VELTOCOREGUI_EXPORT QByteArray actionVelto(const QAction *item);
/// tagVelto: the item's tag; 0 when none was set.
[[nodiscard]] VELTOCOREGUI_EXPORT qint64 tagVelto(const QAction *item);
/// setTagVelto: sets the item's tag.
VELTOCOREGUI_EXPORT void setTagVelto(QAction *item, qint64 tag);
/// menuVelto: the first menu that holds \a item; null when none does.
[[nodiscard]] VELTOCOREGUI_EXPORT QMenu *menuVelto(const QAction *item);

/// setStateFromBool: makes the item checkable and checked for true, unchecked for false.
VELTOCOREGUI_EXPORT void setStateFromBool(QAction *item, bool on);
/**
 * \brief dispatchActionAsIfChosenByUser: does what choosing the item does. A disabled item, or one
 * whose target lacks its action, beeps instead. An item in a menu is made the menu's active item and
 * triggered; any other sends its action to its target (or along the focus chain), or is triggered when
 * it has no action of ours.
 * \return false when it beeped.
 */
VELTOCOREGUI_EXPORT bool dispatchActionAsIfChosenByUser(QAction *item);
/// removeFromMenu: removes the item from menuVelto(); false when no menu holds it. The item is not deleted.
VELTOCOREGUI_EXPORT bool removeFromMenu(QAction *item);
/// setImageUsingNormalSizeVelto: the item's icon: \a image scaled, keeping its proportions, to fit the style's small icon size (16 points in Qt's styles); a null image removes the icon.
VELTOCOREGUI_EXPORT void setImageUsingNormalSizeVelto(QAction *item, const QImage &image);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Menu+VeltoAdditions.h
 * \brief Additions to QMenu: adding and removing items in bulk, tidying separators after removals,
 * submenus and their parent items, and finding items by tag or action anywhere in a menu tree.
 *
 * \code
 * velto::removeItemsInRange(menu, VeltoMakeRange(2, 3));
 * velto::removeSuperfluousSeparatorItems(menu);
 * QMenu *holder = nullptr;
 * if (QAction *paste = velto::itemWithActionNestedSearch(menuBarMenu, "paste", &holder))
 *     paste->setEnabled(canPaste);
 * \endcode
 *
 * Items are QActions with the target, action and tag of Action+VeltoAdditions.h. A submenu's item is
 * its menuAction(); a menu's supermenu is the first menu that holds that item. Removed items are not
 * deleted: the caller (or the item's QObject parent) still owns them. Main thread only.
 */

#include "VeltoRange.h"
#include "veltocoregui_export.h"

#include <QAction>
#include <QList>
#include <QMenu>

#include <functional>

namespace velto {

/// removeItemsInRange: removes the items of \a range, last first; an empty range removes nothing.
/// \throws VeltoException NSRangeException when \a range reaches past the last item.
VELTOCOREGUI_EXPORT void removeItemsInRange(QMenu *menu, VeltoRange range);
/**
 * \brief removeSuperfluousSeparatorItems: removes trailing separators, the second of two adjacent
 * ones and one at the top, in one pass from the bottom: a separator stays only when an ordinary item
 * lies below it before the next separator and it is not the first item. So [separator, separator, A]
 * keeps its second separator, which is then the first item.
 */
VELTOCOREGUI_EXPORT void removeSuperfluousSeparatorItems(QMenu *menu);
/// addItems: adds \a items at the end in order; the menu becomes the parent of those that have none.
VELTOCOREGUI_EXPORT void addItems(QMenu *menu, const QList<QAction *> &items);
/// insertItems: inserts \a items in order starting at \a index, as addItems() does.
/// \throws VeltoException NSRangeException when \a index is negative or past the end.
VELTOCOREGUI_EXPORT void insertItems(QMenu *menu, const QList<QAction *> &items, qint64 index);
/// addItemWithTitle: adds and returns itemWithTitle(\a title, \a target, \a action), owned by the menu.
VELTOCOREGUI_EXPORT QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action);
/// addItemWithTitle: the same with a tag.
VELTOCOREGUI_EXPORT QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action,
                                              qint64 tag);
/// addItemWithTitle: the same with a represented object.
VELTOCOREGUI_EXPORT QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action,
                                              const QVariant &representedObject);
/// addItemWithSubmenuVelto: adds and returns itemWithSubmenuVelto(\a submenu); the menu becomes the submenu's parent when it has none.
VELTOCOREGUI_EXPORT QAction *addItemWithSubmenuVelto(QMenu *menu, QMenu *submenu);
/// parentMenuItem: the item of the supermenu that opens \a menu; null when no menu holds it.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *parentMenuItem(const QMenu *menu);
/// removeFromSupermenu: removes parentMenuItem() from the supermenu; false when there is none.
VELTOCOREGUI_EXPORT bool removeFromSupermenu(QMenu *menu);

/// indexOfItemWithTagIgnoringSeparatorsVelto: the index of the first item that has \a tag and is no separator; -1 when none.
[[nodiscard]] VELTOCOREGUI_EXPORT qint64 indexOfItemWithTagIgnoringSeparatorsVelto(const QMenu *menu, qint64 tag);
/// itemWithAction: the first item of \a menu itself (not its submenus) that sends \a action; null when none.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithAction(const QMenu *menu, const char *action);
/// indexOfItemWithActionVelto: the index of itemWithAction(); VeltoNotFound when none.
[[nodiscard]] VELTOCOREGUI_EXPORT qint64 indexOfItemWithActionVelto(const QMenu *menu, const char *action);

/// A visitor or test of menu items: the item, its index in its own menu, and a flag that ends the visit when set.
using VeltoMenuItemVisitor = std::function<void(QAction *item, qint64 index, bool *stop)>;
using VeltoMenuItemTest = std::function<bool(QAction *item, qint64 index, bool *stop)>;

/**
 * \brief visitItemsRecursivelyVeltoUsing: calls \a visitor for every item of the tree, breadth first:
 * all items of \a menu in order, then those of its submenus (the ones with items) in the order they
 * were met. \return false when the visitor stopped the visit, true otherwise.
 */
VELTOCOREGUI_EXPORT bool visitItemsRecursivelyVeltoUsing(QMenu *menu, const VeltoMenuItemVisitor &visitor);
/**
 * \brief itemMatchedRecursivelyVeltoAndGetIndex: the first item in visiting order that passes \a test
 * (so the shallowest, and among those the first listed), with its index in its own menu stored through
 * \a index when given; null when none passes.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemMatchedRecursivelyVeltoAndGetIndex(QMenu *menu, qint64 *index,
                                                                                 const VeltoMenuItemTest &test);
/// itemWithActionNestedSearch: the first item of the tree that sends \a action; the menu holding it and its index there are stored through \a parentMenu and \a index when given.
[[nodiscard]] VELTOCOREGUI_EXPORT QAction *itemWithActionNestedSearch(QMenu *menu, const char *action,
                                                                      QMenu **parentMenu = nullptr, qint64 *index = nullptr);

} // namespace velto

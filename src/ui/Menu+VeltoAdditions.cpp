// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Menu+VeltoAdditions.h"

#include "Action+VeltoAdditions.h"
#include "VeltoException.h"

#include <QQueue>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using TreeVisitor = std::function<void(QMenu *menu, QAction *item, qint64 index, bool *stop)>;

bool visitTree(QMenu *root, const TreeVisitor &visitor)
{
    QQueue<QMenu *> menus;
    menus.enqueue(root);
    while (!menus.isEmpty()) {
        QMenu *menu = menus.dequeue();
        const QList<QAction *> items = menu->actions();
        for (qint64 index = 0; index < items.size(); ++index) {
            bool stop = false;
            visitor(menu, items.at(index), index, &stop);
            if (stop)
                return false;
            if (QMenu *submenu = items.at(index)->menu(); submenu && !submenu->actions().isEmpty())
                menus.enqueue(submenu);
        }
    }
    return true;
}

struct Match
{
    QAction *item = nullptr;
    QMenu *menu = nullptr;
    qint64 index = -1;
};

// The first item in visiting order that passes test, with the menu that holds it.
Match firstMatch(QMenu *root, const VeltoMenuItemTest &test)
{
    Match match;
    visitTree(root, [&](QMenu *menu, QAction *item, qint64 index, bool *stop) {
        if (test(item, index, stop)) {
            match = {item, menu, index};
            *stop = true;
        }
    });
    return match;
}

void adopt(QMenu *menu, const QList<QAction *> &items)
{
    for (QAction *item : items) {
        if (!item->parent())
            item->setParent(menu);
    }
}

QAction *added(QMenu *menu, QAction *item)
{
    menu->addAction(item);
    return item;
}

} // namespace

void removeItemsInRange(QMenu *menu, VeltoRange range)
{
    const QList<QAction *> items = menu->actions();
    const quint64 count = quint64(items.size());
    if (range.location > count || range.length > count - range.location)
        throw VeltoException(VeltoRangeException, u"velto::removeItemsInRange: range {%1, %2} out of bounds; item count %3"_s
                                                      .arg(range.location)
                                                      .arg(range.length)
                                                      .arg(count));
    for (quint64 index = range.end(); index > range.location; --index)
        menu->removeAction(items.at(qsizetype(index - 1)));
}

void removeSuperfluousSeparatorItems(QMenu *menu)
{
    const QList<QAction *> items = menu->actions();
    bool itemBelow = false;
    for (qsizetype index = items.size() - 1; index >= 0; --index) {
        QAction *item = items.at(index);
        if (!item->isSeparator()) {
            itemBelow = true;
        } else if (itemBelow && index != 0) {
            itemBelow = false;
        } else {
            menu->removeAction(item);
        }
    }
}

void addItems(QMenu *menu, const QList<QAction *> &items)
{
    adopt(menu, items);
    menu->addActions(items);
}

void insertItems(QMenu *menu, const QList<QAction *> &items, qint64 index)
{
    const QList<QAction *> existing = menu->actions();
    if (index < 0 || index > existing.size())
        throw VeltoException(VeltoRangeException,
                             u"velto::insertItems: index %1 beyond bounds [0 .. %2]"_s.arg(index).arg(existing.size()));
    adopt(menu, items);
    menu->insertActions(existing.value(index), items);
}

QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action)
{
    return added(menu, itemWithTitle(title, target, action, menu));
}

QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action, qint64 tag)
{
    return added(menu, itemWithTitle(title, target, action, tag, menu));
}

QAction *addItemWithTitle(QMenu *menu, const QString &title, QObject *target, const char *action,
                          const QVariant &representedObject)
{
    return added(menu, itemWithTitle(title, target, action, representedObject, menu));
}

QAction *addItemWithSubmenuVelto(QMenu *menu, QMenu *submenu)
{
    if (!submenu->parent())
        submenu->setParent(menu, submenu->windowFlags());
    return added(menu, itemWithSubmenuVelto(submenu));
}

QAction *parentMenuItem(const QMenu *menu)
{
    return menuVelto(menu->menuAction()) ? menu->menuAction() : nullptr;
}

bool removeFromSupermenu(QMenu *menu)
{
    return removeFromMenu(menu->menuAction());
}

qint64 indexOfItemWithTagIgnoringSeparatorsVelto(const QMenu *menu, qint64 tag)
{
    const QList<QAction *> items = menu->actions();
    for (qsizetype index = 0; index < items.size(); ++index) {
        if (!items.at(index)->isSeparator() && tagVelto(items.at(index)) == tag)
            return index;
    }
    return -1;
}

QAction *itemWithAction(const QMenu *menu, const char *action)
{
    const qint64 index = indexOfItemWithActionVelto(menu, action);
    return index == qint64(VeltoNotFound) ? nullptr : menu->actions().at(index);
}

qint64 indexOfItemWithActionVelto(const QMenu *menu, const char *action)
{
    const QList<QAction *> items = menu->actions();
    for (qsizetype index = 0; index < items.size(); ++index) {
        if (actionVelto(items.at(index)) == action)
            return index;
    }
    return qint64(VeltoNotFound);
}

bool visitItemsRecursivelyVeltoUsing(QMenu *menu, const VeltoMenuItemVisitor &visitor)
{
    return visitTree(menu, [&](QMenu *, QAction *item, qint64 index, bool *stop) { visitor(item, index, stop); });
}

QAction *itemMatchedRecursivelyVeltoAndGetIndex(QMenu *menu, qint64 *index, const VeltoMenuItemTest &test)
{
    const Match match = firstMatch(menu, test);
    if (match.item && index)
        *index = match.index;
    return match.item;
}

QAction *itemWithActionNestedSearch(QMenu *menu, const char *action, QMenu **parentMenu, qint64 *index)
{
    const Match match = firstMatch(menu, [action](QAction *item, qint64, bool *) { return actionVelto(item) == action; });
    if (match.item && parentMenu)
        *parentMenu = match.menu;
    if (match.item && index)
        *index = match.index;
    return match.item;
}

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Action+VeltoAdditions.h"

#include "Font+VeltoAdditions.h"
#include "Object+VeltoDispatch.h"
#include "String+VeltoDisplay.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr char ActionProperty[] = "veltoAction";
constexpr char TargetProperty[] = "veltoTarget";
constexpr char TagProperty[] = "veltoTag";

// Where an action without a target goes: the focus widget, its parents, then the application.
QObject *receiverAlongFocusChain(const QByteArray &action)
{
    for (QObject *candidate = QApplication::focusWidget(); candidate; candidate = candidate->parent()) {
        if (respondsToSelectorVelto(candidate, action.constData()))
            return candidate;
    }
    QObject *application = QCoreApplication::instance();
    return respondsToSelectorVelto(application, action.constData()) ? application : nullptr;
}

void sendAction(const QByteArray &action, QObject *target, QAction *sender)
{
    if (QObject *receiver = target ? target : receiverAlongFocusChain(action))
        performSelectorIfResponds(receiver, action.constData(), QVariant::fromValue<QObject *>(sender));
}

QAction *makeItem(const QString &title, QObject *target, const char *action, QObject *parent)
{
    auto *item = new QAction(title, parent);
    item->setProperty(ActionProperty, QByteArray(action));
    item->setProperty(TargetProperty, QVariant::fromValue(QPointer<QObject>(target)));
    QObject::connect(item, &QAction::triggered, item,
                     [item] { sendAction(actionVelto(item), targetVelto(item), item); });
    return item;
}

} // namespace

QAction *itemWithTitle(const QString &title, QObject *target, const char *action, QObject *parent)
{
    return makeItem(title, target, action, parent);
}

QAction *itemWithTitle(const QString &title, QObject *target, const char *action, qint64 tag, QObject *parent)
{
    QAction *item = makeItem(title, target, action, parent);
    setTagVelto(item, tag);
    return item;
}

QAction *itemWithTitle(const QString &title, QObject *target, const char *action, const QVariant &representedObject,
                       QObject *parent)
{
    QAction *item = makeItem(title, target, action, parent);
    item->setData(representedObject);
    return item;
}

QAction *itemWithoutActionDisplayingCaptionToUserVelto(const QString &title, QObject *parent)
{
    QAction *item = makeItem(title, nullptr, "someActionThatWillNeverEnableThisItemVelto", parent);
    item->setFont(convertedToBoldVelto(menuItemFont()));
    item->setEnabled(false);
    return item;
}

QAction *itemWithSubmenuVelto(QMenu *submenu)
{
    QAction *item = submenu->menuAction();
    item->setProperty(ActionProperty, QByteArray("submenuAction"));
    return item;
}

void sortMenuItemsByTitle(QList<QAction *> &items)
{
    std::sort(items.begin(), items.end(),
              [](const QAction *a, const QAction *b) { return veltoUserDisplayCompare(a->text(), b->text()) < 0; });
}

QObject *targetVelto(const QAction *item)
{
    return item->property(TargetProperty).value<QPointer<QObject>>();
}

QByteArray actionVelto(const QAction *item)
{
    return item->property(ActionProperty).toByteArray();
}

qint64 tagVelto(const QAction *item)
{
    return item->property(TagProperty).toLongLong();
}

void setTagVelto(QAction *item, qint64 tag)
{
    item->setProperty(TagProperty, tag);
}

QMenu *menuVelto(const QAction *item)
{
    const QList<QObject *> holders = item->associatedObjects();
    for (QObject *holder : holders) {
        if (auto *menu = qobject_cast<QMenu *>(holder))
            return menu;
    }
    return nullptr;
}

void setStateFromBool(QAction *item, bool on)
{
    item->setCheckable(true);
    item->setChecked(on);
}

bool dispatchActionAsIfChosenByUser(QAction *item)
{
    QObject *target = targetVelto(item);
    const QByteArray action = actionVelto(item);
    if (!item->isEnabled() || (target && !respondsToSelectorVelto(target, action.constData()))) {
        QApplication::beep();
        return false;
    }
    if (QMenu *menu = menuVelto(item)) {
        menu->setActiveAction(item);
        item->trigger();
    } else if (action.isEmpty()) {
        item->trigger();
    } else {
        sendAction(action, target, item);
    }
    return true;
}

bool removeFromMenu(QAction *item)
{
    QMenu *menu = menuVelto(item);
    if (!menu)
        return false;
    menu->removeAction(item);
    return true;
}

void setImageUsingNormalSizeVelto(QAction *item, const QImage &image)
{
    if (image.isNull()) {
        item->setIcon(QIcon());
        return;
    }
    const int side = QApplication::style()->pixelMetric(QStyle::PM_SmallIconSize);
    item->setIcon(QIcon(QPixmap::fromImage(image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation))));
}

} // namespace velto

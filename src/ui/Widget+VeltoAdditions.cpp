// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Widget+VeltoAdditions.h"

#include "Object+VeltoAssociatedObjects.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

namespace {

// The constraints one view holds, attached to it (and deleted with it).
class VTHeldConstraints : public QObject
{
public:
    QList<VeltoLayoutConstraintPtr> constraints;
};

const char heldConstraintsKey = 0;

VTHeldConstraints *heldConstraints(const QWidget *view)
{
    return static_cast<VTHeldConstraints *>(velto::associatedObjectForKey(view, &heldConstraintsKey));
}

} // namespace

namespace velto {

QList<VeltoLayoutConstraintPtr> constraintsVelto(const QWidget *view)
{
    const VTHeldConstraints *held = heldConstraints(view);
    return held ? held->constraints : QList<VeltoLayoutConstraintPtr>();
}

void addConstraintVelto(QWidget *view, const VeltoLayoutConstraintPtr &constraint)
{
    if (!view || !constraint)
        return;
    VTHeldConstraints *held = heldConstraints(view);
    if (!held) {
        held = new VTHeldConstraints;
        setAssociatedObject(view, &heldConstraintsKey, held);
    }
    if (!held->constraints.contains(constraint))
        held->constraints << constraint;
}

void removeConstraintVelto(QWidget *view, const VeltoLayoutConstraintPtr &constraint)
{
    if (VTHeldConstraints *held = heldConstraints(view))
        held->constraints.removeOne(constraint);
}

void enumerateEnclosingConstraintsVelto(const QWidget *view, const ConstraintVisitor &visitor)
{
    bool stop = false;
    for (const QWidget *level = view; level && !stop; level = level->isWindow() ? nullptr : level->parentWidget()) {
        // A copy: a visitor may change what the level holds.
        const QList<VeltoLayoutConstraintPtr> constraints = constraintsVelto(level);
        for (const VeltoLayoutConstraintPtr &constraint : constraints) {
            visitor(constraint, stop);
            if (stop)
                break;
        }
    }
}

void enumerateEnclosingConstraintsVeltoPassingItemTest(const QWidget *view, const ConstraintItemTest &test,
                                                       const ConstraintVisitor &visitor)
{
    enumerateEnclosingConstraintsVelto(view, [&](const VeltoLayoutConstraintPtr &constraint, bool &stop) {
        if (test(constraint->firstItem, constraint->firstAttribute) || test(constraint->secondItem, constraint->secondAttribute))
            visitor(constraint, stop);
    });
}

void enumerateEnclosingConstraintsWithItemVelto(const QWidget *view, const QObject *item, const ConstraintVisitor &visitor)
{
    enumerateEnclosingConstraintsVeltoPassingItemTest(view, [item](QObject *side, VeltoLayoutAttribute) { return side == item; },
                                                      visitor);
}

QList<VeltoLayoutConstraintPtr> enclosingConstraintsWithItemVelto(const QWidget *view, const QObject *item)
{
    QList<VeltoLayoutConstraintPtr> found;
    enumerateEnclosingConstraintsWithItemVelto(view, item, [&found](const VeltoLayoutConstraintPtr &constraint, bool &) {
        found << constraint;
    });
    return found;
}

QList<VeltoLayoutConstraintPtr> enclosingConstraintsWithItemVelto(const QWidget *view, const QObject *item,
                                                                  const QObject *otherItem)
{
    QList<VeltoLayoutConstraintPtr> found;
    enumerateEnclosingConstraintsVelto(view, [&](const VeltoLayoutConstraintPtr &constraint, bool &) {
        if ((constraint->firstItem == item && constraint->secondItem == otherItem)
            || (constraint->firstItem == otherItem && constraint->secondItem == item))
            found << constraint;
    });
    return found;
}

QList<VeltoLayoutConstraintPtr> enclosingConstraintsWithAttributeVelto(const QWidget *view, VeltoLayoutAttribute attribute,
                                                                       const QObject *item, quint64 limit)
{
    QList<VeltoLayoutConstraintPtr> found;
    enumerateEnclosingConstraintsVelto(view, [&](const VeltoLayoutConstraintPtr &constraint, bool &stop) {
        QObject *other = nullptr;
        if (!constraint->hasAttributeVelto(attribute, view, &other, nullptr) || (item && other != item))
            return;
        found << constraint;
        stop = limit != VeltoNotFound && quint64(found.size()) >= limit;
    });
    return found;
}

VeltoLayoutConstraintPtr firstEnclosingConstraintWithAttributeVelto(const QWidget *view, VeltoLayoutAttribute attribute,
                                                                    const QObject *item, bool *ambiguous)
{
    const auto found = enclosingConstraintsWithAttributeVelto(view, attribute, item, ambiguous ? 2 : 1);
    if (ambiguous)
        *ambiguous = found.size() > 1;
    return found.value(0);
}

VeltoLayoutConstraintPtr firstUnambiguousEnclosingConstraintWithAttributeVelto(const QWidget *view,
                                                                               VeltoLayoutAttribute attribute,
                                                                               const QObject *item)
{
    bool ambiguous = false; // asked for and ignored: two constraints still give the first
    return firstEnclosingConstraintWithAttributeVelto(view, attribute, item, &ambiguous);
}

QWidget *subviewContainingEvent(const QWidget *view, const QMouseEvent *event)
{
    QWidget *deepest = nullptr;
    for (const QWidget *level = view; level && event;) {
        const QPoint point = level->mapFromGlobal(event->globalPosition()).toPoint();
        const QObjectList &children = level->children();
        QWidget *entered = nullptr;
        for (auto child = children.crbegin(); child != children.crend() && !entered; ++child) {
            auto *widget = qobject_cast<QWidget *>(*child);
            if (widget && !widget->isWindow() && widget->geometry().contains(point))
                entered = widget;
        }
        if (entered)
            deepest = entered;
        level = entered;
    }
    return deepest;
}

QWidget *dispatchEventToSubview(QWidget *view, const QMouseEvent *event)
{
    if (!view || !event)
        return view;
    QWidget *receiver = subviewContainingEvent(view, event);
    if (!receiver)
        receiver = view;
    QMouseEvent local(event->type(), receiver->mapFromGlobal(event->globalPosition()), event->scenePosition(),
                      event->globalPosition(), event->button(), event->buttons(), event->modifiers(), event->pointingDevice());
    QCoreApplication::sendEvent(receiver, &local);
    return receiver;
}

QPixmap imageWithCachedDisplayInRectVelto(QWidget *view, const VeltoRect &rect)
{
    return view ? view->grab(QRectF(rect).toAlignedRect()) : QPixmap();
}

VeltoRect visibleContentRectVelto(const QWidget *view)
{
    return view ? VeltoRect(QRectF(view->visibleRegion().boundingRect())) : VeltoRect();
}

} // namespace velto

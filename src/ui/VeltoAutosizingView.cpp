// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoAutosizingView.h"

#include "Widget+VeltoAdditions.h"

#include <QChildEvent>
#include <QCoreApplication>

#include <functional>

class VeltoAutosizingView::Private
{
public:
    // The extent of the children in one dimension: \a origin and \a size pick it out of a geometry.
    template<typename Origin, typename Size>
    static int extent(const QWidget *view, VeltoAutosizingMode mode, Origin origin, Size size)
    {
        int largest = 0;
        for (const QObject *child : view->children()) {
            const auto *widget = qobject_cast<const QWidget *>(child);
            if (!widget || widget->isWindow())
                continue;
            const QRect frame = widget->geometry();
            largest = std::max(largest, (mode == VeltoAutosizingMode::FromOrigin ? std::invoke(origin, frame) : 0)
                                          + std::invoke(size, frame));
        }
        return largest;
    }

    // Keeps \a constraint equal to \a value (making it on first use) and applies it to the view's size.
    void constrain(VeltoAutosizingView *view, VeltoLayoutConstraintPtr &constraint, VeltoLayoutAttribute attribute, int value)
    {
        if (!constraint) {
            constraint = std::make_shared<VeltoLayoutConstraint>(VeltoLayoutConstraint{
                view, attribute, VeltoLayoutRelation::Equal, nullptr, VeltoLayoutAttribute::NotAnAttribute, 0.0, 0.0});
            velto::addConstraintVelto(view, constraint);
        }
        constraint->constant = value;
        if (attribute == VeltoLayoutAttribute::Width)
            view->setFixedWidth(value);
        else
            view->setFixedHeight(value);
    }

    VeltoAutosizingMode horizontal = VeltoAutosizingMode::None;
    VeltoAutosizingMode vertical = VeltoAutosizingMode::None;
    VeltoLayoutConstraintPtr width;
    VeltoLayoutConstraintPtr height;
};

VeltoAutosizingView::VeltoAutosizingView(QWidget *parent) : QWidget(parent), d(std::make_unique<Private>()) {}

VeltoAutosizingView::~VeltoAutosizingView() = default;

VeltoAutosizingMode VeltoAutosizingView::horizontalAutosizingMode() const
{
    return d->horizontal;
}

void VeltoAutosizingView::setHorizontalAutosizingMode(VeltoAutosizingMode mode)
{
    d->horizontal = mode;
    setNeedsUpdateConstraints();
}

VeltoAutosizingMode VeltoAutosizingView::verticalAutosizingMode() const
{
    return d->vertical;
}

void VeltoAutosizingView::setVerticalAutosizingMode(VeltoAutosizingMode mode)
{
    d->vertical = mode;
    setNeedsUpdateConstraints();
}

VeltoLayoutConstraintPtr VeltoAutosizingView::widthConstraint() const
{
    return d->width;
}

VeltoLayoutConstraintPtr VeltoAutosizingView::heightConstraint() const
{
    return d->height;
}

void VeltoAutosizingView::setNeedsUpdateConstraints()
{
    // Qt merges posted layout requests, so a burst of changes is measured once.
    QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void VeltoAutosizingView::updateConstraints()
{
    if (d->horizontal != VeltoAutosizingMode::None)
        d->constrain(this, d->width, VeltoLayoutAttribute::Width,
                     Private::extent(this, d->horizontal, &QRect::x, &QRect::width));
    if (d->vertical != VeltoAutosizingMode::None)
        d->constrain(this, d->height, VeltoLayoutAttribute::Height,
                     Private::extent(this, d->vertical, &QRect::y, &QRect::height));
}

bool VeltoAutosizingView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        // Installing a filter twice keeps one, so a child added again is still watched once.
        if (QObject *child = static_cast<QChildEvent *>(event)->child(); child->isWidgetType()) {
            child->installEventFilter(this);
            setNeedsUpdateConstraints();
        }
        break;
    case QEvent::ChildRemoved: // a widget being deleted no longer says it is one
        static_cast<QChildEvent *>(event)->child()->removeEventFilter(this);
        setNeedsUpdateConstraints();
        break;
    case QEvent::LayoutRequest:
        updateConstraints();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool VeltoAutosizingView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        setNeedsUpdateConstraints();
    return QWidget::eventFilter(watched, event);
}

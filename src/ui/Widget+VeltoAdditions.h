// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file Widget+VeltoAdditions.h
 * \brief Additions to QWidget: the layout constraints a view holds and the searches over the constraints
 * enclosing it (held by the view itself, then its parent, and so on up to its window), finding and
 * feeding the deepest child under a mouse event, and snapshots.
 *
 * \code
 * bool ambiguous = false;
 * if (auto width = velto::firstEnclosingConstraintWithAttributeVelto(sidebar, VeltoLayoutAttribute::Width, nullptr, &ambiguous))
 *     width->constant = 240;
 * \endcode
 *
 * A null view holds nothing and visits nothing. Main thread only.
 */

#include "VeltoLayoutConstraint.h"
#include "VeltoRect.h"
#include "VeltoRange.h"
#include "veltocoregui_export.h"

#include <QList>
#include <QPixmap>

#include <functional>

class QMouseEvent;
class QWidget;

namespace velto {

/// The visitor of constraint walks: it may set \a stop to end the whole walk.
using ConstraintVisitor = std::function<void(const VeltoLayoutConstraintPtr &constraint, bool &stop)>;
/// A test of one side of a constraint: its item and attribute.
using ConstraintItemTest = std::function<bool(QObject *item, VeltoLayoutAttribute attribute)>;

/// constraintsVelto: the constraints \a view holds, in the order they were added.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<VeltoLayoutConstraintPtr> constraintsVelto(const QWidget *view);
/// addConstraintVelto: \a view holds \a constraint from now on (a second add of the same one does nothing).
VELTOCOREGUI_EXPORT void addConstraintVelto(QWidget *view, const VeltoLayoutConstraintPtr &constraint);
/// removeConstraintVelto: \a view no longer holds \a constraint; nothing when it did not.
VELTOCOREGUI_EXPORT void removeConstraintVelto(QWidget *view, const VeltoLayoutConstraintPtr &constraint);

/**
 * enumerateEnclosingConstraintsVelto: visits every constraint held by \a view, then by its parent, and
 * so on up to its window, each level in its order; a visitor setting stop ends the whole walk.
 */
VELTOCOREGUI_EXPORT void enumerateEnclosingConstraintsVelto(const QWidget *view, const ConstraintVisitor &visitor);
/// enumerateEnclosingConstraintsVeltoPassingItemTest: visits those whose first side, or else second side, passes \a test.
VELTOCOREGUI_EXPORT void enumerateEnclosingConstraintsVeltoPassingItemTest(const QWidget *view, const ConstraintItemTest &test,
                                                                           const ConstraintVisitor &visitor);
/// enumerateEnclosingConstraintsWithItemVelto: visits those with \a item on either side.
VELTOCOREGUI_EXPORT void enumerateEnclosingConstraintsWithItemVelto(const QWidget *view, const QObject *item,
                                                                    const ConstraintVisitor &visitor);
/// enclosingConstraintsWithItemVelto: the enclosing constraints with \a item on either side, in walk order.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<VeltoLayoutConstraintPtr> enclosingConstraintsWithItemVelto(const QWidget *view,
                                                                                                   const QObject *item);
/// enclosingConstraintsWithItemVelto: those relating \a item and \a otherItem, whichever is first.
[[nodiscard]] VELTOCOREGUI_EXPORT QList<VeltoLayoutConstraintPtr>
enclosingConstraintsWithItemVelto(const QWidget *view, const QObject *item, const QObject *otherItem);
/**
 * enclosingConstraintsWithAttributeVelto: the enclosing constraints that constrain \a view itself in
 * \a attribute (it is the first item with that first attribute, or the second item with that second
 * attribute) and whose other item is \a item (any, when \a item is null). The walk stops as soon as
 * \a limit constraints are collected (a limit of 0 acts as 1); VeltoNotFound means no limit.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QList<VeltoLayoutConstraintPtr>
enclosingConstraintsWithAttributeVelto(const QWidget *view, VeltoLayoutAttribute attribute, const QObject *item,
                                       quint64 limit = VeltoNotFound);
/**
 * firstEnclosingConstraintWithAttributeVelto: the first of those (null when none). With \a ambiguous,
 * collects up to two and sets it to whether there were two; without, stops at the first.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT VeltoLayoutConstraintPtr firstEnclosingConstraintWithAttributeVelto(
    const QWidget *view, VeltoLayoutAttribute attribute, const QObject *item, bool *ambiguous = nullptr);
/**
 * firstUnambiguousEnclosingConstraintWithAttributeVelto: asks firstEnclosingConstraintWithAttributeVelto()
 * with an ambiguity flag and ignores the flag: the first constraint comes back even when there are two.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT VeltoLayoutConstraintPtr
firstUnambiguousEnclosingConstraintWithAttributeVelto(const QWidget *view, VeltoLayoutAttribute attribute, const QObject *item);

/**
 * subviewContainingEvent: the deepest descendant of \a view under \a event's global position: at each
 * level the child widgets (windows aside) are tried from the frontmost (last) to the first, and the
 * first whose geometry contains the point is entered. Null when no child of \a view contains it.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QWidget *subviewContainingEvent(const QWidget *view, const QMouseEvent *event);
/**
 * dispatchEventToSubview: sends a copy of \a event, with its position made local to the receiver, to
 * subviewContainingEvent() or else to \a view itself, and returns the widget that received it; \a view
 * for a null event (nothing is sent).
 */
VELTOCOREGUI_EXPORT QWidget *dispatchEventToSubview(QWidget *view, const QMouseEvent *event);

/**
 * imageWithCachedDisplayInRectVelto: \a view's rendering of \a rect (view coordinates), as QWidget::grab()
 * makes it whether or not the view is on screen; a null pixmap for a null view.
 */
[[nodiscard]] VELTOCOREGUI_EXPORT QPixmap imageWithCachedDisplayInRectVelto(QWidget *view, const VeltoRect &rect);
/// visibleContentRectVelto: the bounding rectangle of \a view's visible region; the zero rectangle for null or hidden views.
[[nodiscard]] VELTOCOREGUI_EXPORT VeltoRect visibleContentRectVelto(const QWidget *view);

} // namespace velto

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoLayoutConstraint.h
 * \brief VeltoLayoutConstraint: one linear relation between attributes of two layout items,
 * "first.attribute relation multiplier × second.attribute + constant", as a record that views hold.
 *
 * Qt layouts keep no constraint objects, so the library keeps its own: a view holds constraints
 * (velto::addConstraintVelto() in Widget+VeltoAdditions.h) and the searches there find them on a view
 * and its ancestors. No solver reads them; the view that makes a constraint applies it (as
 * VeltoAutosizingView does with its size). Items are compared by address and are not owned.
 *
 * \code
 * auto gap = std::make_shared<VeltoLayoutConstraint>(VeltoLayoutConstraint{label, VeltoLayoutAttribute::Left,
 *     VeltoLayoutRelation::Equal, field, VeltoLayoutAttribute::Right, 1.0, 8.0});
 * velto::addConstraintVelto(form, gap);
 * \endcode
 */

#include "veltocoregui_export.h"

#include <QtGlobal>

#include <memory>

class QObject;

/// The attributes of a layout item a constraint relates, numbered as the layout engine numbers them.
enum class VeltoLayoutAttribute : qint64 {
    NotAnAttribute = 0,
    Left = 1,
    Right = 2,
    Top = 3,
    Bottom = 4,
    Leading = 5,
    Trailing = 6,
    Width = 7,
    Height = 8,
    CenterX = 9,
    CenterY = 10,
    LastBaseline = 11,
    FirstBaseline = 12,
};

/// How the two sides of a constraint compare.
enum class VeltoLayoutRelation : qint64 { LessThanOrEqual = -1, Equal = 0, GreaterThanOrEqual = 1 };

/// VeltoLayoutConstraint: shared by the views that hold it (std::shared_ptr gives it identity).
struct VELTOCOREGUI_EXPORT VeltoLayoutConstraint
{
    QObject *firstItem = nullptr;
    VeltoLayoutAttribute firstAttribute = VeltoLayoutAttribute::NotAnAttribute;
    VeltoLayoutRelation relation = VeltoLayoutRelation::Equal;
    QObject *secondItem = nullptr; // null for a constant size
    VeltoLayoutAttribute secondAttribute = VeltoLayoutAttribute::NotAnAttribute;
    double multiplier = 1.0;
    double constant = 0.0;

    /// hasAttributeVelto: whether the first side is (\a item, \a attribute) or else the second side is.
    [[nodiscard]] bool hasAttributeVelto(VeltoLayoutAttribute attribute, const QObject *item) const;
    /**
     * hasAttributeVelto: the same test; on a match, also reports the other side through the optional
     * \a otherItem and \a otherAttribute (the second side when the first matched, else the first side).
     */
    bool hasAttributeVelto(VeltoLayoutAttribute attribute, const QObject *item, QObject **otherItem,
                           VeltoLayoutAttribute *otherAttribute) const;
};

using VeltoLayoutConstraintPtr = std::shared_ptr<VeltoLayoutConstraint>;

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAutosizingView.h
 * \brief VeltoAutosizingView: a container whose size follows the extent of its child widgets. It holds a
 * width and a height constraint on itself (VeltoLayoutConstraint) equal to that extent and applies them
 * as its fixed size, so an enclosing layout or scroll area sees it grow and shrink with its contents.
 *
 * Each child is watched from the moment it is added: a move or resize (Qt reports those of visible
 * widgets; a hidden child's arrive when it is shown), a child added or removed marks the constraints
 * for update, and the update runs in the next layout pass (one posted QEvent::LayoutRequest, however
 * many changes came before it).
 *
 * \code
 * auto *strip = new VeltoAutosizingView(scrollArea);
 * strip->setHorizontalAutosizingMode(VeltoAutosizingMode::FromOrigin);
 * scrollArea->setWidget(strip);            // the strip widens as thumbnails are added to it
 * \endcode
 *
 * Coordinates are Qt's: the origin is the top left corner, as in a flipped view. Main thread only.
 */

#include "VeltoLayoutConstraint.h"
#include "veltocoregui_export.h"

#include <QWidget>

#include <memory>

/// How one dimension of a VeltoAutosizingView follows its children.
enum class VeltoAutosizingMode : qint64 {
    None = 0, ///< no constraint in this dimension
    LargestSize = 1, ///< the largest child size alone (any value other than 0 and 2 means this too)
    FromOrigin = 2, ///< measured from the view's origin: a child counts with its position plus its size
};

class VELTOCOREGUI_EXPORT VeltoAutosizingView : public QWidget
{
    Q_OBJECT

public:
    explicit VeltoAutosizingView(QWidget *parent = nullptr);
    ~VeltoAutosizingView() override;

    [[nodiscard]] VeltoAutosizingMode horizontalAutosizingMode() const;
    /// setHorizontalAutosizingMode: sets the width's mode and marks the constraints for update.
    void setHorizontalAutosizingMode(VeltoAutosizingMode mode);
    [[nodiscard]] VeltoAutosizingMode verticalAutosizingMode() const;
    /// setVerticalAutosizingMode: sets the height's mode and marks the constraints for update.
    void setVerticalAutosizingMode(VeltoAutosizingMode mode);

    /// widthConstraint: the width constraint this view made on itself; null until a width mode first applies.
    [[nodiscard]] VeltoLayoutConstraintPtr widthConstraint() const;
    /// heightConstraint: the same for the height.
    [[nodiscard]] VeltoLayoutConstraintPtr heightConstraint() const;

    /// setNeedsUpdateConstraints: asks for updateConstraints() in the next layout pass.
    void setNeedsUpdateConstraints();
    /**
     * updateConstraints: measures the children (per dimension: the largest size, or the largest position
     * plus size in FromOrigin mode; 0 without children), sets each constrained dimension's constraint to
     * that extent (making it, width or height equal to the constant with multiplier 0 and no second
     * item, on first use) and fixes the view's size in that dimension to it.
     */
    virtual void updateConstraints();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoAutosizingWidthView.h
 * \brief VeltoAutosizingWidthView: a VeltoAutosizingView whose width follows its children measured from
 * its origin (VeltoAutosizingMode::FromOrigin), the usual case for a horizontal strip of views.
 */

#include "VeltoAutosizingView.h"

class VELTOCOREGUI_EXPORT VeltoAutosizingWidthView : public VeltoAutosizingView
{
    Q_OBJECT

public:
    explicit VeltoAutosizingWidthView(QWidget *parent = nullptr) : VeltoAutosizingView(parent)
    {
        setHorizontalAutosizingMode(VeltoAutosizingMode::FromOrigin);
    }
};

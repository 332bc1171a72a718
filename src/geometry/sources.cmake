# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/geometry: rectangles, points and sizes and their arithmetic (the rounded outlines, which
# need Qt6::Gui, are in src/ui).
velto_layer(geometry LIBRARY VeltoCore DEPENDS core)
velto_sources(geometry
  PUBLIC_HEADERS
    VeltoPoint.h
    VeltoSize.h
    VeltoRect.h
    VeltoGeometryUtil.h
  SOURCES
    VeltoGeometryUtil.cpp
)

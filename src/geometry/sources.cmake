# Files of src/geometry: rectangle arithmetic in the VeltoCore library, rounded outlines (QPainterPath)
# in VeltoCoreGui.
velto_core_sources(
  PUBLIC_HEADERS
    VeltoPoint.h
    VeltoSize.h
    VeltoRect.h
    VeltoGeometryUtil.h
  SOURCES
    VeltoGeometryUtil.cpp
)
velto_gui_sources(
  PUBLIC_HEADERS
    PainterPath+VeltoCore.h
  SOURCES
    PainterPath+VeltoCore.cpp
    VTRoundedRectRegionBuilder_p.h
    VTRoundedRectRegionBuilder.cpp
)

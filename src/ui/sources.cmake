# Files of src/ui in the VeltoCoreGui library.
velto_layer(ui LIBRARY VeltoCoreGui DEPENDS geometry files)
velto_sources(ui
  PUBLIC_HEADERS
    VeltoMessageBoxPresenter.h
  SOURCES
    VeltoMessageBoxPresenter.cpp
)
# Sheets, alerts that fit on the screen, and the window a sheet belongs on.
velto_sources(ui
  PUBLIC_HEADERS
    VeltoSheetBlockHelper.h
    Application+VeltoSheets.h
    MessageBox+VeltoAdditions.h
    Widget+VeltoSheets.h
  SOURCES
    VeltoSheetBlockHelper.cpp
    Application+VeltoSheets.cpp
    MessageBox+VeltoAdditions.cpp
    Widget+VeltoSheets.cpp
)
# File-size fields, the attributed file size and fonts in the user defaults.
velto_sources(ui
  PUBLIC_HEADERS
    LineEdit+VeltoFileSize.h
    VeltoAttributedFileSize.h
    UserDefaults+VeltoFonts.h
  SOURCES
    LineEdit+VeltoFileSize.cpp
    VeltoAttributedFileSize.cpp
    UserDefaults+VeltoFonts.cpp
)
# Rounded-rectangle outlines.
velto_sources(ui
  PUBLIC_HEADERS
    PainterPath+VeltoCore.h
  SOURCES
    PainterPath+VeltoCore.cpp
    VTRoundedRectRegionBuilder_p.h
    VTRoundedRectRegionBuilder.cpp
)
# Tables, views and constraints, the accessibility dispatch and text fields that send only changes.
velto_sources(ui
  PUBLIC_HEADERS
    VeltoTableColumn.h
    TableView+VeltoAdditions.h
    VeltoTableView.h
    VeltoLayoutConstraint.h
    Widget+VeltoAdditions.h
    VeltoAutosizingView.h
    VeltoAutosizingWidthView.h
    VeltoAccessibilityAttributeInfo.h
    VeltoAccessibilityClassInfo.h
    Object+VeltoAccessibility.h
  SOURCES
    TableView+VeltoAdditions.cpp
    VeltoTableView.cpp
    VeltoLayoutConstraint.cpp
    Widget+VeltoAdditions.cpp
    VeltoAutosizingView.cpp
    VTAccessibilityTables_p.h
    VeltoAccessibilityAttributeInfo.cpp
    VeltoAccessibilityClassInfo.cpp
    Object+VeltoAccessibility.cpp
    VTAccessibleWidget_p.h
    VTAccessibleWidget.cpp
)

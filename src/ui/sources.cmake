# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/ui in the VeltoCoreGui library.
# HarfBuzz (OpenType layout tables, glyph names, shaping) and fontconfig (font files, character sets)
# answer the font questions Qt 6.4 cannot; both are linked privately (docs/dependencies.md).
find_package(PkgConfig REQUIRED)
pkg_check_modules(harfbuzz REQUIRED IMPORTED_TARGET GLOBAL harfbuzz>=6.0)
pkg_check_modules(fontconfig REQUIRED IMPORTED_TARGET GLOBAL fontconfig>=2.13)
velto_layer(ui LIBRARY VeltoCoreGui DEPENDS geometry files LINK PkgConfig::harfbuzz PkgConfig::fontconfig)
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
    LineEdit+VeltoActionFiltering.h
    ComboBox+VeltoActionFiltering.h
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
    LineEdit+VeltoActionFiltering.cpp
    ComboBox+VeltoActionFiltering.cpp
    VTTextFieldWatcher_p.h
    VTTextFieldWatcher.cpp
    VTFieldActionSender_p.h
    VTFieldActionSender.cpp
)

# Fonts and their feature settings, and building, tidying and searching menus.
velto_sources(ui
  PUBLIC_HEADERS
    VeltoFontFeatures.h
    VeltoFont.h
    Font+VeltoAdditions.h
    FontDatabase+VeltoAdditions.h
    Action+VeltoAdditions.h
    Menu+VeltoAdditions.h
  SOURCES
    VeltoFontFeatures.cpp
    VeltoFont.cpp
    Font+VeltoAdditions.cpp
    FontDatabase+VeltoAdditions.cpp
    VTFontFace_p.h
    VTFontFace.cpp
    VTFontconfig_p.h
    VTFontconfig.cpp
    VTFontLookup_p.h
    VTFontLookup.cpp
    Action+VeltoAdditions.cpp
    Menu+VeltoAdditions.cpp
)

# Files of src/ui in the VeltoCoreGui library.
velto_gui_sources(
  PUBLIC_HEADERS
    VeltoMessageBoxPresenter.h
  SOURCES
    VeltoMessageBoxPresenter.cpp
)
# File-size fields, the attributed file size and fonts in the user defaults.
velto_gui_sources(
  PUBLIC_HEADERS
    LineEdit+VeltoFileSize.h
    VeltoAttributedFileSize.h
    UserDefaults+VeltoFonts.h
  SOURCES
    LineEdit+VeltoFileSize.cpp
    VeltoAttributedFileSize.cpp
    UserDefaults+VeltoFonts.cpp
)

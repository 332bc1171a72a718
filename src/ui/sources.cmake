# Files of src/ui in the VeltoCoreGui library.
velto_gui_sources(
  PUBLIC_HEADERS
    VeltoMessageBoxPresenter.h
  SOURCES
    VeltoMessageBoxPresenter.cpp
)

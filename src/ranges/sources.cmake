# Files of src/ranges in the VeltoCore library.
velto_core_sources(
  PUBLIC_HEADERS
    VeltoRange.h
  SOURCES
)

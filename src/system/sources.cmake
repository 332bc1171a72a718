# Files of src/system in the VeltoCore library.
velto_core_sources(
  PUBLIC_HEADERS
    VeltoRandom.h
    VeltoSystemInfo.h
    VeltoSystemVersions.h
  SOURCES
    VeltoRandom.cpp
    VeltoSystemInfo.cpp
    VeltoSystemVersions.cpp
    VTPasswordEntry_p.h
    VTPasswordEntry.cpp
    VTSysctl_p.h
    VTSysctl.cpp
)
# Product versions and release dates.
velto_core_sources(
  PUBLIC_HEADERS
    VeltoDate.h
    VeltoVersion.h
  SOURCES
    VeltoDate.cpp
    VeltoVersion.cpp
)

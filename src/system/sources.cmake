# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/system in the VeltoCore library.
velto_layer(system LIBRARY VeltoCore DEPENDS core)
velto_sources(system
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
velto_sources(system
  PUBLIC_HEADERS
    VeltoDate.h
    VeltoDateComponents.h
    VeltoVersion.h
  SOURCES
    VeltoDate.cpp
    VeltoDateComponents.cpp
    VeltoVersion.cpp
)

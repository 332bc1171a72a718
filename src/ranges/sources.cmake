# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/ranges in the VeltoCore library.
velto_layer(ranges LIBRARY VeltoCore DEPENDS system observing)
velto_sources(ranges
  PUBLIC_HEADERS
    VeltoRangeUtil.h
    VeltoBinarySearch.h
    VeltoAbstractRangeArray.h
    VeltoMutableRangeArray.h
    VeltoRangeArray.h
    VeltoBoxedRangeArray.h
    Variant+VeltoRanges.h
    List+VeltoCore.h
    VeltoCollection.h
    VeltoIndexSet.h
    VeltoSpatialEdge.h
    VeltoSpatialArray.h
    VeltoFloatArray.h
    VeltoFloatVector.h
    VeltoDirectArray.h
    VeltoMutableOrderedSet.h
    VeltoObjectPool.h
  SOURCES
    VeltoRangeUtil.cpp
    VeltoAbstractRangeArray.cpp
    VeltoMutableRangeArray.cpp
    VeltoRangeArray.cpp
    VeltoBoxedRangeArray.cpp
    Variant+VeltoRanges.cpp
    List+VeltoCore.cpp
    VeltoIndexSet.cpp
    VeltoSpatialEdge.cpp
    VTIdentityMap_p.h
    VTChunkedSequence_p.h
    VeltoSpatialArray.cpp
    VeltoFloatArray.cpp
    VeltoFloatVector.cpp
    VeltoDirectArray.cpp
)

# Files of src/files: typed property-list access, dictionary additions, copy-on-write records and type
# identifiers.
velto_layer(files LIBRARY VeltoCore DEPENDS ranges text)
velto_sources(files
  PUBLIC_HEADERS
    VariantMap+VeltoCorePlist.h
    VariantMap+VeltoAdditions.h
    VeltoMutationState.h
    VeltoUTI.h
  SOURCES
    VariantMap+VeltoCorePlist.cpp
    VariantMap+VeltoAdditions.cpp
    VeltoMutationState.cpp
    VTFileAccess_p.h
    VTFileAccess.cpp
    VeltoUTI.cpp
    VTTypeIdentifierTable_p.h
    VTTypeIdentifierTable.cpp
)

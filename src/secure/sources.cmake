# Files of src/secure in the VeltoCore library: the file-manager and URL helpers that reliable access to
# the user's files rests on.
velto_layer(secure LIBRARY VeltoCore DEPENDS ranges text)
velto_sources(secure
  PUBLIC_HEADERS
    String+VeltoURLAdditions.h
    Url+VeltoAdditions.h
    VeltoFileIdentity.h
    VeltoFileManager.h
    VeltoURLMap.h
  SOURCES
    String+VeltoURLAdditions.cpp
    Url+VeltoAdditions.cpp
    VTURLRules_p.h
    VeltoFileIdentity.cpp
    VeltoFileManager.cpp
    VeltoURLMap.cpp
)

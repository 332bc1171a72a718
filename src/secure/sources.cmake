# Files of src/secure in the VeltoCore library: the bookmark platform and stored form of durable file
# references, and the file-manager and URL helpers they rest on.
velto_layer(secure LIBRARY VeltoCore DEPENDS ranges text)
velto_sources(secure
  PUBLIC_HEADERS
    String+VeltoURLAdditions.h
    Url+VeltoAdditions.h
    VeltoBookmarkPlatform.h
    VeltoFileIdentity.h
    VeltoFileManager.h
    VeltoLinuxBookmarkPlatform.h
    VeltoSecureURLSerialization.h
    VeltoURLMap.h
  SOURCES
    String+VeltoURLAdditions.cpp
    Url+VeltoAdditions.cpp
    VTBookmarkRecord.cpp
    VTBookmarkRecord_p.h
    VTURLRules_p.h
    VeltoBookmarkPlatform.cpp
    VeltoFileIdentity.cpp
    VeltoFileManager.cpp
    VeltoLinuxBookmarkPlatform.cpp
    VeltoSecureURLSerialization.cpp
    VeltoURLMap.cpp
)

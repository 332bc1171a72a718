# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/secure in the VeltoCore library: durable references to the user's files (secure URLs,
# their open-URL registry and stored form, the bookmark platform underneath) and the file-manager and
# URL helpers they rest on.
velto_layer(secure LIBRARY VeltoCore DEPENDS ranges text)
velto_sources(secure
  PUBLIC_HEADERS
    String+VeltoURLAdditions.h
    Url+VeltoAdditions.h
    UserDefaults+VeltoSecureURL.h
    VeltoBookmarkPlatform.h
    VeltoFileIdentity.h
    VeltoFileManager.h
    VeltoLinuxBookmarkPlatform.h
    VeltoOpenURLInfo.h
    VeltoSecureURL.h
    VeltoSecureURLSerialization.h
    VeltoSecureURL_Doc.h
    VeltoSecureURL_Subpath.h
    VeltoURLMap.h
  SOURCES
    String+VeltoURLAdditions.cpp
    Url+VeltoAdditions.cpp
    UserDefaults+VeltoSecureURL.cpp
    VTBookmarkRecord.cpp
    VTBookmarkRecord_p.h
    VTURLRules_p.h
    VeltoBookmarkPlatform.cpp
    VeltoFileIdentity.cpp
    VeltoFileManager.cpp
    VeltoLinuxBookmarkPlatform.cpp
    VeltoSecureURL+GlobalCounts.cpp
    VeltoSecureURL.cpp
    VeltoSecureURLSerialization.cpp
    VeltoSecureURL_Doc.cpp
    VeltoSecureURL_Subpath.cpp
    VeltoURLMap.cpp
)

# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/files in the VeltoCore library: the file watcher (inotify, one thread per queue, changes
# carried to the main thread), typed property-list access, dictionary additions, copy-on-write records,
# type identifiers, compressed data (zlib) and archives (libarchive).
velto_layer(files LIBRARY VeltoCore DEPENDS secure LINK ZLIB::ZLIB LibArchive::LibArchive)
velto_sources(files
  PUBLIC_HEADERS
    FWFileWatcher.h
    FWKQueue.h
    FWMainThreadProxy.h
    Object+FWMainThreadProxy.h
    VeltoFileWatcher.h
  SOURCES
    FWKQueue.cpp
    FWMainThreadProxy.cpp
    VeltoFileWatcher.cpp
    VTInotifyWatchTable_p.h
    VTInotifyWatchTable.cpp
    VTWatchedFileInfo_p.h
)
# Typed property-list access, dictionary additions, copy-on-write records and type identifiers.
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
# Compressed data and byte utilities, the incremental gzip compressor, and archives.
velto_sources(files
  PUBLIC_HEADERS
    ByteArray+VeltoAdditions.h
    FileManager+VeltoCoreArchives.h
    VeltoZipStream.h
  SOURCES
    ByteArray+VeltoAdditions.cpp
    FileManager+VeltoCoreArchives.cpp
    VeltoZipStream.cpp
    VTArchiveExtractor_p.h
    VTArchiveExtractor.cpp
    VTUtf8LocaleScope_p.h
    VTZlibCalls_p.h
)

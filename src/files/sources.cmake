# Files of src/files in the VeltoCore library: the file watcher (inotify, one thread per queue, changes
# carried to the main thread).
velto_layer(files LIBRARY VeltoCore DEPENDS secure)
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

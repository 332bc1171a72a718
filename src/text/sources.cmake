# Files of src/text: character sets, searching, the replacer and the string, number and date additions.
velto_core_sources(
  PUBLIC_HEADERS
    VeltoCharacterSet.h
    VeltoStringCompareOptions.h
    String+VeltoSearching.h
    VeltoStringReplacer.h
    String+VeltoReplacing.h
  SOURCES
    VeltoCharacterSet.cpp
    String+VeltoSearching.cpp
    VeltoStringReplacer.cpp
    String+VeltoReplacing.cpp
)

# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Files of src/text: character sets, searching, the replacer and the string, number and date additions.
velto_layer(text LIBRARY VeltoCore DEPENDS system LINK ICU::i18n ICU::uc)
velto_sources(text
  PUBLIC_HEADERS
    VeltoCharacterSet.h
    VeltoStringCompareOptions.h
    String+VeltoSearching.h
    VeltoStringReplacer.h
    String+VeltoReplacing.h
    String+VeltoDisplay.h
    String+VeltoScanning.h
    String+VeltoWords.h
    String+VeltoEncoding.h
    String+VeltoPaths.h
    StringList+VeltoEscapedList.h
  SOURCES
    VeltoCharacterSet.cpp
    String+VeltoSearching.cpp
    VeltoStringReplacer.cpp
    String+VeltoReplacing.cpp
    VTTextUtil_p.h
    String+VeltoDisplay.cpp
    String+VeltoScanning.cpp
    String+VeltoWords.cpp
    String+VeltoEncoding.cpp
    String+VeltoPaths.cpp
    StringList+VeltoEscapedList.cpp
)
# Formatters, mutable numbers, dates and typed user-defaults values.
velto_sources(text
  PUBLIC_HEADERS
    VeltoFormatter.h
    VeltoNumberFormatter.h
    VeltoFileSizeFormatter.h
    VeltoMutableNumber.h
    VeltoDateFormatter.h
    DateTime+VeltoAdditions.h
    UserDefaults+VeltoAdditions.h
    String+VeltoNumbers.h
  SOURCES
    VeltoFormatter.cpp
    VeltoNumberFormatter.cpp
    VTDecimalTrimming_p.h
    VTDecimalTrimming.cpp
    VTNumberConversion_p.h
    VeltoFileSizeFormatter.cpp
    VeltoMutableNumber.cpp
    VeltoDateFormatter.cpp
    DateTime+VeltoAdditions.cpp
    UserDefaults+VeltoAdditions.cpp
    String+VeltoNumbers.cpp
)

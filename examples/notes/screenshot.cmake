# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Takes the notes window's picture and checks what it shows against the expected description.
execute_process(COMMAND ${NOTES} --screenshot ${OUTPUT} OUTPUT_VARIABLE shown RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "notes --screenshot failed (${status})")
endif()
file(READ ${EXPECTED} expected)
if(NOT shown STREQUAL expected)
  message(FATAL_ERROR "The picture shows:\n${shown}\nexpected:\n${expected}")
endif()
# A PNG's width and height are the 8 bytes after its 16-byte header; the committed one must match.
file(READ ${OUTPUT} fresh OFFSET 16 LIMIT 8 HEX)
file(READ ${COMMITTED} committed OFFSET 16 LIMIT 8 HEX)
if(NOT fresh STREQUAL committed)
  message(FATAL_ERROR "docs/images/notes.png is out of date: build the notes-screenshot target")
endif()

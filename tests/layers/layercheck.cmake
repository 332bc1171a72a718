# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Run by ctest: builds each probe and compares the outcome with what the layer graph allows.
set(wrong "")
foreach(probe ${PROBES})
  string(REPLACE ":" ";" fields "${probe}")
  list(GET fields 0 target)
  list(GET fields 1 header)
  list(GET fields 2 expectation)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD_DIR} --target ${target}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  get_filename_component(header_name "${header}" NAME)
  string(REPLACE "+" "\\+" header_pattern "${header_name}")
  if(expectation STREQUAL "BUILDS" AND NOT result EQUAL 0)
    string(APPEND wrong "${target}: including ${header} should build but failed:\n${output}\n")
  elseif(expectation STREQUAL "FAILS")
    if(result EQUAL 0)
      string(APPEND wrong "${target}: including ${header} should fail but built\n")
    elseif(NOT output MATCHES "${header_pattern}'? ?file not found|${header_pattern}: No such file")
      string(APPEND wrong "${target}: failed for another reason than the missing ${header}:\n${output}\n")
    endif()
  endif()
  message(STATUS "${target}: ${expectation} as expected")
endforeach()
if(wrong)
  message(FATAL_ERROR "${wrong}")
endif()

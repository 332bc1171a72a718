# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Run by ctest: one invocation of the velto tool, its exit status and output checked.
if(ARGS STREQUAL "")
  set(ARGS "")
endif()
execute_process(COMMAND ${VELTO} ${ARGS} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
set(problems "")
if(NOT status STREQUAL STATUS)
  string(APPEND problems "exit status ${status}, expected ${STATUS}\n")
endif()
if(NOT STDOUT STREQUAL "" AND NOT out MATCHES "${STDOUT}")
  string(APPEND problems "standard output does not match \"${STDOUT}\"\n")
endif()
if(NOT STDERR STREQUAL "" AND NOT err MATCHES "${STDERR}")
  string(APPEND problems "standard error does not match \"${STDERR}\"\n")
endif()
if(problems)
  message(FATAL_ERROR "velto ${ARGS}:\n${problems}--- standard output:\n${out}--- standard error:\n${err}")
endif()

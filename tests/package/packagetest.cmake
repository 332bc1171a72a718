# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Run by ctest: install into a private prefix; build and run a Core-only consumer and a Gui consumer
# (through the CMake package and through pkg-config); run the installed velto tool from the prefix.
file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}\n${output}")
  endif()
  set(last_output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
foreach(file include/VeltoCore/VeltoError.h include/VeltoCore/veltocore_export.h include/VeltoCore/veltocore_version.h
             include/VeltoCore/VeltoMessageBoxPresenter.h share/doc/veltocore/LICENSE)
  if(NOT EXISTS "${prefix}/${file}")
    message(FATAL_ERROR "installed tree lacks ${file}")
  endif()
endforeach()
file(READ "${prefix}/include/VeltoCore/veltocore_version.h" version_header)
if(NOT version_header MATCHES "#define VELTOCORE_VERSION_STRING \"${VERSION}\"")
  message(FATAL_ERROR "veltocore_version.h does not name version ${VERSION}")
endif()
file(GLOB private_headers "${prefix}/include/VeltoCore/*_p.h")
if(private_headers)
  message(FATAL_ERROR "private headers were installed: ${private_headers}")
endif()

set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=address,undefined")
endif()
# The installed tool runs from its prefix alone: no LD_LIBRARY_PATH, the library found through its RPATH.
unset(ENV{LD_LIBRARY_PATH})
if(TOOL)
  run("${prefix}/bin/velto" --version)
  if(NOT last_output STREQUAL "velto ${VERSION}\n")
    message(FATAL_ERROR "installed velto --version printed: ${last_output}")
  endif()
  run("${prefix}/bin/velto" version compare "1.2 beta 3" lt 1.2)
  file(READ "${prefix}/share/man/man1/velto.1" manual)
  if(NOT manual MATCHES "^\\.TH VELTO 1 " OR NOT manual MATCHES "version compare")
    message(FATAL_ERROR "installed manual page is not velto's")
  endif()
  file(READ "${prefix}/share/bash-completion/completions/velto" completion)
  if(NOT completion MATCHES "complete -o filenames -F _velto velto")
    message(FATAL_ERROR "installed bash completion does not complete velto")
  endif()
endif()

foreach(consumer consumer-core consumer)
  run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}/../${consumer}" -B "${WORK_DIR}/${consumer}" -G Ninja
      -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_PREFIX_PATH=${prefix}
      "-DCMAKE_CXX_FLAGS=${flags}" "-DCMAKE_EXE_LINKER_FLAGS=${flags}")
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/${consumer}")
endforeach()
run("${WORK_DIR}/consumer-core/consumer-core")
if(NOT last_output MATCHES "^${VERSION} ")
  message(FATAL_ERROR "unexpected Core consumer output:\n${last_output}")
endif()

set(ENV{LD_LIBRARY_PATH} "${prefix}/lib:${prefix}/lib/x86_64-linux-gnu:$ENV{LD_LIBRARY_PATH}")
set(ENV{QT_QPA_PLATFORM} offscreen)
run("${WORK_DIR}/consumer/consumer")
if(NOT last_output MATCHES "Choose Folder\n" OR NOT last_output MATCHES "\\[com.velto.veltoCore.errorDomain code 999\\]|unknown/unspecified")
  message(FATAL_ERROR "unexpected consumer output:\n${last_output}")
endif()

# The same program built from the pkg-config files alone.
set(ENV{PKG_CONFIG_PATH} "${prefix}/lib/pkgconfig:${prefix}/lib/x86_64-linux-gnu/pkgconfig")
execute_process(COMMAND pkg-config --cflags --libs VeltoCoreGui
  RESULT_VARIABLE result OUTPUT_VARIABLE pc_flags ERROR_VARIABLE pc_error OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "pkg-config VeltoCoreGui failed: ${pc_error}")
endif()
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
separate_arguments(san_flags UNIX_COMMAND "${flags}")
run(${CXX_COMPILER} -std=c++20 -fPIC ${san_flags} "${CONSUMER_DIR}/main.cpp" -o "${WORK_DIR}/consumer-pc" ${pc_flags})
run("${WORK_DIR}/consumer-pc")
message(STATUS "consumer ran: ${last_output}")

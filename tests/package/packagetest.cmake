# Run by ctest: install, configure and build the consumer, run it.
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
foreach(header VeltoCore/VeltoError.h VeltoCore/veltocore_export.h VeltoCore/VeltoMessageBoxPresenter.h)
  if(NOT EXISTS "${prefix}/include/${header}")
    message(FATAL_ERROR "installed tree lacks include/${header}")
  endif()
endforeach()
file(GLOB private_headers "${prefix}/include/VeltoCore/*_p.h")
if(private_headers)
  message(FATAL_ERROR "private headers were installed: ${private_headers}")
endif()

set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=address,undefined")
endif()
run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/consumer" -G Ninja
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_PREFIX_PATH=${prefix}
    "-DCMAKE_CXX_FLAGS=${flags}" "-DCMAKE_EXE_LINKER_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")

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

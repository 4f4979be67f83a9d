# Installs the project from BUILD_DIR into a fresh prefix under WORK_DIR, then
# configures, builds and runs the consumer project against that prefix only.
foreach(variable BUILD_DIR WORK_DIR CONSUMER_DIR)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "${variable} is not set")
  endif()
endforeach()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "Failed (${result}): ${ARGV}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
foreach(expected
    include/VX0SESS0/KORLumViewerDef.h
    include/VX0SESS0/KORUnicodeString.h
    lib/cmake/VX0SESS0/VX0SESS0Config.cmake
    lib/cmake/VX0SESS0/VX0SESS0ConfigVersion.cmake)
  if(NOT EXISTS "${prefix}/${expected}")
    message(FATAL_ERROR "The installed tree lacks ${expected}")
  endif()
endforeach()
run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/consumer"
    "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")
run("${WORK_DIR}/consumer/consumer")

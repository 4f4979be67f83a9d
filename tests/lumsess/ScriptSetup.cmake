# Shared by the scripts that run lumsess in a test (RunLumsess.cmake,
# CompareCheckAndViewers.cmake, PoRoundTrip.cmake, PoImport.cmake):
#   require_variables(NAME...)   stops unless each -DNAME=... was given
#   isolate_environment()        unsets every variable that the platform, the
#                                tool or tracing reads, so that the machine's
#                                own never leaks into a test
#   lumsess_command(VARIABLE)    the command that runs the tool, in VARIABLE
function(require_variables)
  foreach(variable IN LISTS ARGN)
    if(NOT DEFINED ${variable})
      message(FATAL_ERROR "${variable} is not set")
    endif()
  endforeach()
endfunction()

macro(isolate_environment)
  foreach(variable KOR_DCLS_PATH KOR_MSGCATALOG_PATH KOR_ADMIN_SETTINGS KOR_LANGUAGE LC_ALL
      LC_MESSAGES LANG LUMSESS_CONFIG KORHUB_TRACE KORHUB_TRACE_FILE)
    unset(ENV{${variable}})
  endforeach()
endmacro()

# The command that runs the tool: "${LUMSESS}", after the program and options
# that the environment variable LUMSESS_LAUNCHER holds when it is set
# (tools/ci/memcheck.sh runs the tool under Valgrind so, while the test
# script itself runs as usual).
function(lumsess_command output)
  set(command)
  if(NOT "$ENV{LUMSESS_LAUNCHER}" STREQUAL "")
    separate_arguments(command UNIX_COMMAND "$ENV{LUMSESS_LAUNCHER}")
  endif()
  list(APPEND command "${LUMSESS}")
  set(${output} "${command}" PARENT_SCOPE)
endfunction()

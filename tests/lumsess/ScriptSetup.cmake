# Shared by the scripts that run lumsess in a test (RunLumsess.cmake,
# CompareCheckAndViewers.cmake, PoRoundTrip.cmake, PoImport.cmake):
#   require_variables(NAME...)   stops unless each -DNAME=... was given
#   isolate_environment()        unsets every variable that the platform, the
#                                tool or tracing reads, so that the machine's
#                                own never leaks into a test
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

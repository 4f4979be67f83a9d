# Runs `lumsess check --json` and `lumsess viewers --json` on one configuration
# and checks that check's account of each METHOD_LIST entry is what viewers
# shows: every viewer that check says is added appears under the object
# check names (or among the viewers without object) with the label check
# gives, and every viewer shown is accounted for by an entry check says is
# added. Entries that check says are skipped or stop the reading add nothing.
#
# Called as: cmake -DLUMSESS=<tool> -DCONFIG=<configuration directory> -P CompareCheckAndViewers.cmake
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/ScriptSetup.cmake")
require_variables(LUMSESS CONFIG)
lumsess_command(lumsess)
isolate_environment()
if(DEFINED LANGUAGE)
  set(ENV{KOR_LANGUAGE} "${LANGUAGE}")
endif()

execute_process(COMMAND ${lumsess} --config "${CONFIG}" --json check
  OUTPUT_VARIABLE check RESULT_VARIABLE checkStatus ERROR_QUIET)
execute_process(COMMAND ${lumsess} --config "${CONFIG}" --json viewers
  OUTPUT_VARIABLE viewers RESULT_VARIABLE viewersStatus)
if(NOT viewersStatus EQUAL 0)
  message(FATAL_ERROR "lumsess viewers failed with status ${viewersStatus}")
endif()

# The (object, command, label) triples each side gives, as "object|command|label".
set(fromCheck)
string(JSON entries GET "${check}" method_list entries)
string(JSON count LENGTH "${entries}")
math(EXPR last "${count} - 1")
foreach(i RANGE ${last})
  string(JSON status GET "${entries}" ${i} status)
  string(JSON viewer ERROR_VARIABLE noViewer GET "${entries}" ${i} viewer)
  if(status MATCHES "^kept")
    if(noViewer)
      message(FATAL_ERROR "entry ${i} is ${status} but names no viewer")
    endif()
    string(JSON label GET "${entries}" ${i} label)
    string(JSON object GET "${entries}" ${i} object_name)
    if(object STREQUAL "null")
      set(object "")
    endif()
    list(APPEND fromCheck "${object}|${viewer}|${label}")
  elseif(NOT noViewer)
    message(FATAL_ERROR "entry ${i} is ${status} but check says it adds the viewer ${viewer}")
  endif()
endforeach()

set(fromViewers)
string(JSON objects LENGTH "${viewers}")
if(objects GREATER 0)
  math(EXPR lastObject "${objects} - 1")
  foreach(o RANGE ${lastObject})
    string(JSON object GET "${viewers}" ${o} object)
    if(object STREQUAL "null")
      set(object "")
    endif()
    string(JSON shown LENGTH "${viewers}" ${o} viewers)
    math(EXPR lastShown "${shown} - 1")
    foreach(v RANGE ${lastShown})
      string(JSON command GET "${viewers}" ${o} viewers ${v} command)
      string(JSON label GET "${viewers}" ${o} viewers ${v} label)
      list(APPEND fromViewers "${object}|${command}|${label}")
    endforeach()
  endforeach()
endif()

# A viewer added twice to one object is shown once in its bag; a viewer
# without object is shown among the viewers without object only when no
# other entry gives it one.
list(REMOVE_DUPLICATES fromCheck)
foreach(triple IN LISTS fromCheck)
  if(triple MATCHES "^\\|([^|]*)\\|")
    set(command "${CMAKE_MATCH_1}")
    foreach(other IN LISTS fromCheck)
      if(other MATCHES "^[^|]+\\|${command}\\|")
        list(REMOVE_ITEM fromCheck "${triple}")
        break()
      endif()
    endforeach()
  endif()
endforeach()
list(SORT fromCheck)
list(SORT fromViewers)
if(NOT fromCheck STREQUAL fromViewers)
  message(FATAL_ERROR "check and viewers disagree:\n  check:   ${fromCheck}\n  viewers: ${fromViewers}")
endif()
list(LENGTH fromCheck added)
message(STATUS "check and viewers agree on ${added} viewers")

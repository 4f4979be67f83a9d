# Runs one lumsess command line of a test case and checks its exit status,
# its standard output and error, and (for --json) the document it prints.
#
# Called as: cmake -DLUMSESS=<tool> -DCASE=<case file> -DSOURCE_DIR=<tests/lumsess>
#                  -DRESOURCES=<bundled configuration> -DWORK_DIR=<scratch> -P RunLumsess.cmake
# The case file (written by lumsess_test) sets:
#   ARGS          the arguments
#   ENV           NAME=VALUE settings (every platform and language variable is
#                 unset first, so the machine's own never leaks in)
#   COPY          a fixture of configs/ copied to @WORK@/config
#   FILES         path=content files written under @WORK@
#   EXIT          the expected exit status
#   LINES         lines that standard output must hold, each whole and exact
#   STDOUT        regular expressions that standard output must match
#   STDOUT_NOT    regular expressions that standard output must not match
#   STDERR_LINES  lines that standard error must hold, each whole and exact;
#                 when none is given, standard error must be empty
#   STDERR        regular expressions that standard error must match
#   JSON          checks of the JSON document on standard output:
#                 "<path> = <text>", "<path> ~ <regex>", "<path> # <length>",
#                 "<path> is <TYPE>" with <path> the members and indices
#                 joined by '.', e.g. "viewers.2.viewers.0.command = Viewer2D"
#                 (no path: the document itself, e.g. "# 4")
# In every value, @SOURCE@, @RESOURCES@ and @WORK@ stand for those directories.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/ScriptSetup.cmake")
require_variables(LUMSESS CASE SOURCE_DIR RESOURCES WORK_DIR)
lumsess_command(lumsess)
include("${CASE}")
if(NOT DEFINED EXIT)
  set(EXIT 0)
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

string(ASCII 59 semicolon)
function(substitute output text)
  string(REPLACE "@SEMICOLON@" "${semicolon}" text "${text}")
  string(REPLACE "@SOURCE@" "${SOURCE_DIR}" text "${text}")
  string(REPLACE "@RESOURCES@" "${RESOURCES}" text "${text}")
  string(REPLACE "@WORK@" "${WORK_DIR}" text "${text}")
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

# The regular expression that matches iText literally.
function(literal output text)
  string(REGEX REPLACE "([][+.*()^$?|\\\\{}])" "\\\\\\1" text "${text}")
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(substitute_regex output text)
  string(REPLACE "@SEMICOLON@" "${semicolon}" text "${text}")
  foreach(name SOURCE RESOURCES WORK)
    if(name STREQUAL "SOURCE")
      literal(value "${SOURCE_DIR}")
    elseif(name STREQUAL "RESOURCES")
      literal(value "${RESOURCES}")
    else()
      literal(value "${WORK_DIR}")
    endif()
    string(REPLACE "@${name}@" "${value}" text "${text}")
  endforeach()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

# The environment: only what the case sets.
isolate_environment()
set(ENV{PWD} "${WORK_DIR}")
foreach(setting IN LISTS ENV)
  substitute(setting "${setting}")
  string(FIND "${setting}" "=" equal)
  string(SUBSTRING "${setting}" 0 ${equal} name)
  math(EXPR start "${equal} + 1")
  string(SUBSTRING "${setting}" ${start} -1 value)
  set(ENV{${name}} "${value}")
endforeach()

if(NOT "${COPY}" STREQUAL "")
  file(COPY "${SOURCE_DIR}/configs/${COPY}/" DESTINATION "${WORK_DIR}/config")
endif()
foreach(entry IN LISTS FILES)
  string(FIND "${entry}" "=" equal)
  string(SUBSTRING "${entry}" 0 ${equal} path)
  math(EXPR start "${equal} + 1")
  string(SUBSTRING "${entry}" ${start} -1 content)
  substitute(content "${content}")
  file(WRITE "${WORK_DIR}/${path}" "${content}")
endforeach()

set(arguments)
foreach(argument IN LISTS ARGS)
  substitute(argument "${argument}")
  list(APPEND arguments "${argument}")
endforeach()

execute_process(COMMAND ${lumsess} ${arguments}
  WORKING_DIRECTORY "${WORK_DIR}"
  RESULT_VARIABLE status
  OUTPUT_VARIABLE out
  ERROR_VARIABLE err)

set(failures "")
macro(fail text)
  string(APPEND failures "  - ${text}\n")
endmacro()

if(NOT status STREQUAL "${EXIT}")
  fail("exit status ${status}, expected ${EXIT}")
endif()

foreach(line IN LISTS LINES)
  substitute(line "${line}")
  string(FIND "\n${out}" "\n${line}\n" found)
  if(found EQUAL -1)
    fail("standard output lacks the line: ${line}")
  endif()
endforeach()
foreach(regex IN LISTS STDOUT)
  substitute_regex(regex "${regex}")
  if(NOT out MATCHES "${regex}")
    fail("standard output does not match: ${regex}")
  endif()
endforeach()
foreach(regex IN LISTS STDOUT_NOT)
  substitute_regex(regex "${regex}")
  if(out MATCHES "${regex}")
    fail("standard output matches, but must not: ${regex}")
  endif()
endforeach()
if("${STDERR_LINES}" STREQUAL "" AND "${STDERR}" STREQUAL "" AND NOT err STREQUAL "")
  fail("standard error is not empty")
endif()
foreach(line IN LISTS STDERR_LINES)
  substitute(line "${line}")
  string(FIND "\n${err}" "\n${line}\n" found)
  if(found EQUAL -1)
    fail("standard error lacks the line: ${line}")
  endif()
endforeach()
foreach(regex IN LISTS STDERR)
  substitute_regex(regex "${regex}")
  if(NOT err MATCHES "${regex}")
    fail("standard error does not match: ${regex}")
  endif()
endforeach()

if(NOT "${JSON}" STREQUAL "")
  string(JSON type ERROR_VARIABLE parse_error TYPE "${out}")
  if(parse_error)
    fail("standard output is not a JSON document: ${parse_error}")
  else()
    foreach(check IN LISTS JSON)
      substitute(check "${check}")
      if(NOT check MATCHES "^([^ ]*) ?(=|~|#|is) ?(.*)$")
        message(FATAL_ERROR "malformed JSON check: ${check}")
      endif()
      set(path "${CMAKE_MATCH_1}")
      set(operator "${CMAKE_MATCH_2}")
      set(expected "${CMAKE_MATCH_3}")
      string(REPLACE "." ";" members "${path}")
      if(operator STREQUAL "#")
        string(JSON actual ERROR_VARIABLE error LENGTH "${out}" ${members})
      elseif(operator STREQUAL "is")
        string(JSON actual ERROR_VARIABLE error TYPE "${out}" ${members})
      else()
        string(JSON actual ERROR_VARIABLE error GET "${out}" ${members})
      endif()
      if(error)
        fail("JSON ${path}: ${error}")
      elseif(operator STREQUAL "~")
        if(NOT actual MATCHES "${expected}")
          fail("JSON ${path} is \"${actual}\", which does not match ${expected}")
        endif()
      elseif(NOT actual STREQUAL expected)
        fail("JSON ${path} is \"${actual}\", expected \"${expected}\"")
      endif()
    endforeach()
  endif()
endif()

if(NOT failures STREQUAL "")
  list(JOIN arguments " " shown)
  message(FATAL_ERROR "lumsess ${shown}\n${failures}"
    "--- exit status ${status}\n--- standard output:\n${out}--- standard error:\n${err}")
endif()

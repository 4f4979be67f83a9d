# Runs one lumsess po import on a copy of a configuration and checks its exit
# status, its output and what became of the catalogue files.
#
# Called as: cmake -DLUMSESS=<tool> -DCONFIG=<configuration directory> -DWORK_DIR=<scratch>
#                  "-DPO_FILES=<a.po;b.po>" [-DARGS=<more arguments>] -DEXIT=<status>
#                  ["-DSTDOUT=<regex;...>"] ["-DSTDERR=<regex;...>"] [-DUNCHANGED=ON]
#                  ["-DCONTENT=<msgcatalog file>=<regex>;..."] -P PoImport.cmake
# The PO files are copied into the scratch directory and named relative to
# it on the command line, as FILE:LINE messages then show them. UNCHANGED:
# every catalogue file must be byte for byte as before. CONTENT: the file
# (relative to msgcatalog/) must match the regular expression afterwards;
# CMake reads it without its carriage returns (line ends are tested by the
# writer's own tests).
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/ScriptSetup.cmake")
require_variables(LUMSESS CONFIG WORK_DIR PO_FILES EXIT)
lumsess_command(lumsess)
isolate_environment()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
file(COPY "${CONFIG}/" DESTINATION "${WORK_DIR}/config")
set(catalogues "${WORK_DIR}/config/msgcatalog")
set(files)
foreach(po IN LISTS PO_FILES)
  file(COPY "${po}" DESTINATION "${WORK_DIR}")
  get_filename_component(name "${po}" NAME)
  list(APPEND files "${name}")
endforeach()

function(checksums output)
  file(GLOB_RECURSE paths LIST_DIRECTORIES false RELATIVE "${catalogues}" "${catalogues}/*")
  list(SORT paths)
  set(sums "")
  foreach(path IN LISTS paths)
    file(SHA256 "${catalogues}/${path}" sum)
    string(APPEND sums "${path} ${sum}\n")
  endforeach()
  set(${output} "${sums}" PARENT_SCOPE)
endfunction()

checksums(before)
execute_process(COMMAND ${lumsess} --config "${WORK_DIR}/config" po import ${files} ${ARGS}
  WORKING_DIRECTORY "${WORK_DIR}"
  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
checksums(after)

set(failures "")
if(NOT status STREQUAL "${EXIT}")
  string(APPEND failures "  - exit status ${status}, expected ${EXIT}\n")
endif()
foreach(regex IN LISTS STDOUT)
  if(NOT out MATCHES "${regex}")
    string(APPEND failures "  - standard output does not match: ${regex}\n")
  endif()
endforeach()
if("${STDERR}" STREQUAL "" AND NOT err STREQUAL "")
  string(APPEND failures "  - standard error is not empty\n")
endif()
foreach(regex IN LISTS STDERR)
  if(NOT err MATCHES "${regex}")
    string(APPEND failures "  - standard error does not match: ${regex}\n")
  endif()
endforeach()
if(UNCHANGED AND NOT before STREQUAL after)
  string(APPEND failures "  - catalogue files changed:\n${before}--- became:\n${after}")
endif()
foreach(check IN LISTS CONTENT)
  string(FIND "${check}" "=" equal)
  string(SUBSTRING "${check}" 0 ${equal} path)
  math(EXPR start "${equal} + 1")
  string(SUBSTRING "${check}" ${start} -1 regex)
  if(NOT EXISTS "${catalogues}/${path}")
    string(APPEND failures "  - ${path} does not exist\n")
  else()
    file(READ "${catalogues}/${path}" content)
    if(NOT content MATCHES "${regex}")
      string(APPEND failures "  - ${path} does not match ${regex}:\n${content}\n")
    endif()
  endif()
endforeach()
if(NOT failures STREQUAL "")
  message(FATAL_ERROR "lumsess po import ${files} ${ARGS}\n${failures}"
    "--- exit status ${status}\n--- standard output:\n${out}--- standard error:\n${err}")
endif()

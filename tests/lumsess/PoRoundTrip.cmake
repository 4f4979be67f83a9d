# The PO round trip of a configuration: export, then import, leaves every
# key's text at every level as it was; import also puts back texts that were
# changed or lost in the catalogue files since the export; msgfmt --check
# accepts every file exported.
#
# Called as: cmake -DLUMSESS=<tool> -DTEXTS=<lumsess_catalogue_texts> -DMSGFMT=<msgfmt>
#                  -DCONFIG=<configuration directory> -DWORK_DIR=<scratch> -P PoRoundTrip.cmake
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/ScriptSetup.cmake")
require_variables(LUMSESS TEXTS MSGFMT CONFIG WORK_DIR)
lumsess_command(lumsess)
isolate_environment()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
file(COPY "${CONFIG}/" DESTINATION "${WORK_DIR}/config")
set(catalogues "${WORK_DIR}/config/msgcatalog")

# Runs a command; fails the test unless it exits with status 0.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n--- exit status ${status}\n--- standard output:\n${out}"
      "--- standard error:\n${err}")
  endif()
endfunction()

# Every key's text at every level, into <output>.
function(texts output)
  execute_process(COMMAND "${TEXTS}" "${catalogues}" RESULT_VARIABLE status
    OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0 OR out STREQUAL "")
    message(FATAL_ERROR "lumsess_catalogue_texts failed (${status}): ${err}")
  endif()
  set(${output} "${out}" PARENT_SCOPE)
endfunction()

# The checksum of every catalogue file, into <output>.
function(checksums output)
  file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${catalogues}" "${catalogues}/*")
  list(SORT files)
  set(sums "")
  foreach(file IN LISTS files)
    file(SHA256 "${catalogues}/${file}" sum)
    string(APPEND sums "${file} ${sum}\n")
  endforeach()
  set(${output} "${sums}" PARENT_SCOPE)
endfunction()

function(expect_same what expected actual)
  if(NOT expected STREQUAL actual)
    file(WRITE "${WORK_DIR}/expected.txt" "${expected}")
    file(WRITE "${WORK_DIR}/actual.txt" "${actual}")
    execute_process(COMMAND diff "${WORK_DIR}/expected.txt" "${WORK_DIR}/actual.txt"
      OUTPUT_VARIABLE difference)
    message(FATAL_ERROR "${what}:\n${difference}")
  endif()
endfunction()

texts(original)
checksums(original_sums)

run(${lumsess} --config "${WORK_DIR}/config" po export "${WORK_DIR}/po")
file(GLOB_RECURSE exported "${WORK_DIR}/po/*.po" "${WORK_DIR}/po/*.pot")
file(GLOB_RECURSE translations "${WORK_DIR}/po/*.po")
list(LENGTH translations count)
if(count EQUAL 0)
  message(FATAL_ERROR "po export wrote no PO file")
endif()
foreach(file IN LISTS exported)
  run("${MSGFMT}" --check -o /dev/null "${file}")
endforeach()

# Export then import: every text as it was, every file as it was.
run(${lumsess} --config "${WORK_DIR}/config" po import ${translations})
texts(after)
expect_same("texts changed by the round trip" "${original}" "${after}")
checksums(after_sums)
expect_same("files changed by the round trip" "${original_sums}" "${after_sums}")

# Damage the language files (every non-empty value replaced, one file
# removed): the import of the same PO files puts every text back.
file(GLOB language_files "${catalogues}/*/*.msgcat")
list(SORT language_files)
list(GET language_files -1 removed)
file(REMOVE "${removed}")
list(REMOVE_ITEM language_files "${removed}")
foreach(file IN LISTS language_files)
  file(READ "${file}" content)
  string(REGEX REPLACE "(\n|^)([A-Za-z0-9_.()]+[ \t]*=[ \t]*)[^ \t\r\n][^\r\n]*" "\\1\\2stale"
    content "${content}")
  file(WRITE "${file}" "${content}")
endforeach()
texts(damaged)
if(damaged STREQUAL original)
  message(FATAL_ERROR "damaging the language files changed no text: the test tests nothing")
endif()
run(${lumsess} --config "${WORK_DIR}/config" po import ${translations})
texts(repaired)
expect_same("texts not put back by the import" "${original}" "${repaired}")

# The tests of lumsess's manual page and bash completion (MODE):
#   groff     the manual page renders with no warning under groff -ww
#   options   every long option --help shows (of lumsess and of each
#             command) is described in the manual page
#   complete  completing the last of WORDS (separated by '|') offers exactly
#             the completions EXPECT (separated by '|')
foreach(variable MODE LUMSESS MANUAL COMPLETION)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "${variable} is not set")
  endif()
endforeach()

function(run output)
  execute_process(COMMAND ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "Failed (${result}): ${ARGN}\n${out}${err}")
  endif()
  set(${output} "${out}" PARENT_SCOPE)
  set(${output}_ERROR "${err}" PARENT_SCOPE)
endfunction()

if(MODE STREQUAL "groff")
  find_program(GROFF groff)
  if(NOT GROFF)
    # The test's SKIP_REGULAR_EXPRESSION matches this message.
    message(FATAL_ERROR "groff is not installed: skipped")
  endif()
  run(rendered "${GROFF}" -ww -man -Tutf8 "${MANUAL}")
  if(NOT rendered_ERROR STREQUAL "")
    message(FATAL_ERROR "groff warns about ${MANUAL}:\n${rendered_ERROR}")
  endif()
  if(NOT rendered MATCHES "EXIT STATUS" OR NOT rendered MATCHES "ENVIRONMENT")
    message(FATAL_ERROR "The rendered manual page lacks its sections:\n${rendered}")
  endif()

elseif(MODE STREQUAL "options")
  file(READ "${MANUAL}" manual)
  string(REPLACE "\\-" "-" manual "${manual}")
  set(missing)
  foreach(command "" paths viewers show list check)
    run(help "${LUMSESS}" ${command} --help)
    string(REGEX MATCHALL "\n  +--[a-z][a-z-]*" options "${help}")
    if(NOT options)
      message(FATAL_ERROR "lumsess ${command} --help shows no option:\n${help}")
    endif()
    foreach(option IN LISTS options)
      string(STRIP "${option}" option)
      string(FIND "${manual}" "${option}" at)
      if(at EQUAL -1)
        list(APPEND missing "${option}")
      endif()
    endforeach()
  endforeach()
  if(missing)
    list(REMOVE_DUPLICATES missing)
    message(FATAL_ERROR "The manual page does not describe ${missing}")
  endif()

elseif(MODE STREQUAL "complete")
  find_program(BASH bash REQUIRED)
  # Word 0 is the program; the last word, empty or not, is the one completed.
  run(offered "${BASH}" -c [=[
      source "$1"
      COMP_WORDS=("$2") rest=$3
      while :; do
        COMP_WORDS+=("${rest%%|*}")
        [[ $rest == *"|"* ]] || break
        rest=${rest#*|}
      done
      COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
      _lumsess
      printf '%s\n' "${COMPREPLY[@]}"]=] completion "${COMPLETION}" "${LUMSESS}" "${WORDS}")
  string(REGEX REPLACE "\n$" "" offered "${offered}")
  string(REPLACE "\n" ";" offered "${offered}")
  string(REPLACE "|" ";" expected "${EXPECT}")
  list(SORT offered)
  list(SORT expected)
  if(NOT offered STREQUAL expected)
    message(FATAL_ERROR "Completing \"${WORDS}\" offers [${offered}], not [${expected}]")
  endif()

else()
  message(FATAL_ERROR "Unknown MODE ${MODE}")
endif()

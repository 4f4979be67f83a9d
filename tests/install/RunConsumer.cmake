# The installed tree, one step per test (STEP):
#   install       installs the project from BUILD_DIR into a fresh prefix
#                 under WORK_DIR and checks what it holds
#   find_package  configures, builds and runs the consumer project against
#                 that prefix only; the consumer finds the installed sample's
#                 graph files with no variable set
#   pkg-config    builds and runs the consumer with the flags pkg-config gives
#                 (skipped when pkg-config is not installed)
#   lumsess       runs the installed lumsess on the installed sample
#   subproject    builds the consumer in a project that adds the source tree
#                 (SOURCE_DIR) with add_subdirectory
foreach(variable STEP WORK_DIR CONSUMER_DIR)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "${variable} is not set")
  endif()
endforeach()

set(prefix "${WORK_DIR}/prefix")

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "Failed (${result}): ${ARGV}")
  endif()
endfunction()

# None of the machine's own configuration reaches the programs run.
foreach(variable KOR_DCLS_PATH KOR_MSGCATALOG_PATH KOR_ADMIN_SETTINGS KOR_LANGUAGE LC_ALL
    LC_MESSAGES LANG LUMSESS_CONFIG KORHUB_TRACE KORHUB_TRACE_FILE)
  unset(ENV{${variable}})
endforeach()

# Where the installed sample keeps its graph files, as its declarations name it.
get_filename_component(sample "${prefix}/share/VX0SESS0" ABSOLUTE)
set(sample_graph_files "${sample}/sessions/graphs/")

if(STEP STREQUAL "install")
  file(REMOVE_RECURSE "${WORK_DIR}")
  run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
  foreach(expected
      include/VX0SESS0/KORLumViewerDef.h
      include/VX0SESS0/KORUnicodeString.h
      lib/cmake/VX0SESS0/VX0SESS0Config.cmake
      lib/cmake/VX0SESS0/VX0SESS0ConfigVersion.cmake
      lib/pkgconfig/VX0SESS0.pc
      bin/lumsess
      share/man/man1/lumsess.1.gz
      share/bash-completion/completions/lumsess
      share/VX0SESS0/admin.settings
      share/VX0SESS0/dcls/KORBRIX.dcls
      share/VX0SESS0/dcls/MERLO.dcls
      share/VX0SESS0/msgcatalog/KORLumSessionFile.msgcat
      share/VX0SESS0/msgcatalog/LumSessionFile.msgcat
      share/VX0SESS0/msgcatalog/KORDMToolsManager.msgcat
      share/VX0SESS0/msgcatalog/fr/KORLumSessionFile.msgcat
      share/VX0SESS0/msgcatalog/de/KORDMToolsManager.msgcat
      share/VX0SESS0/sessions/graphs/engine-bracket.hub
      share/VX0SESS0/sessions/brix/released-parts.qry)
    if(NOT EXISTS "${prefix}/${expected}")
      message(FATAL_ERROR "The installed tree lacks ${expected}")
    endif()
  endforeach()
  # The installed declarations name the installed sample, not a variable.
  file(READ "${prefix}/share/VX0SESS0/dcls/KORBRIX.dcls" declarations)
  if(NOT declarations MATCHES "\nKORBRIX\\.HUB\\.GRAPHSESSION = ${sample}/sessions/graphs\n")
    message(FATAL_ERROR "The installed KORBRIX.dcls does not name the installed graph files "
      "directory ${sample}/sessions/graphs:\n${declarations}")
  endif()
  # pkg-config names the prefix itself, not a path relative to its own file.
  file(READ "${prefix}/lib/pkgconfig/VX0SESS0.pc" pc)
  if(NOT pc MATCHES "\nprefix=${prefix}\n" OR pc MATCHES "pcfiledir|\\.\\./")
    message(FATAL_ERROR "The installed VX0SESS0.pc does not name the prefix ${prefix}:\n${pc}")
  endif()

elseif(STEP STREQUAL "find_package")
  run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/consumer"
      "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_BUILD_TYPE=Release)
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")
  run("${WORK_DIR}/consumer/consumer" "${sample_graph_files}")

elseif(STEP STREQUAL "pkg-config")
  find_program(PKG_CONFIG pkg-config)
  find_program(CXX NAMES c++ g++)
  if(NOT PKG_CONFIG OR NOT CXX)
    # The test's SKIP_REGULAR_EXPRESSION matches this message.
    message(FATAL_ERROR "pkg-config or a C++ compiler is not installed: skipped")
  endif()
  set(ENV{PKG_CONFIG_PATH} "${prefix}/lib/pkgconfig")
  execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs VX0SESS0
    RESULT_VARIABLE result OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know the installed VX0SESS0")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run("${CXX}" -std=c++17 "${CONSUMER_DIR}/main.cpp" ${flags}
      "-Wl,-rpath,${prefix}/lib" -o "${WORK_DIR}/consumer-pkg-config")
  run("${WORK_DIR}/consumer-pkg-config" "${sample_graph_files}")

elseif(STEP STREQUAL "lumsess")
  # run_lumsess(<output variable> <arguments>...): runs the installed tool,
  # which must succeed quietly.
  function(run_lumsess output)
    execute_process(COMMAND "${prefix}/bin/lumsess" ${ARGN}
      WORKING_DIRECTORY "${WORK_DIR}"
      RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0 OR NOT err STREQUAL "")
      message(FATAL_ERROR "Failed (${result}): lumsess ${ARGN}\n${out}${err}")
    endif()
    set(${output} "${out}" PARENT_SCOPE)
  endfunction()

  function(expect text regex what)
    if(NOT text MATCHES "${regex}")
      message(FATAL_ERROR "The installed lumsess ${what}; its output:\n${text}")
    endif()
  endfunction()

  # The installed lumsess runs on the installed sample configuration, found
  # beside it.
  file(REAL_PATH "${prefix}/share/VX0SESS0" data)
  run_lumsess(overview)
  expect("${overview}" "bundled sample configuration in ${data}\n"
    "does not use the installed sample configuration")
  expect("${overview}" "\n  Graph files +${sample_graph_files}\n"
    "does not take the graph files path from the installed declarations")
  expect("${overview}" "\nViewers \\(4 objects, 5 viewers\\)\n" "does not show the sample viewers")
  expect("${overview}" "\nSession files \\(4\\)\n" "does not find the sample session files")
  run_lumsess(french --lang fr viewers Drawing)
  expect("${french}" "\n  Drawing +Plan\n    Viewer2D +Visualiseur 2D\n"
    "does not read the installed French catalogues")
  run_lumsess(check check)
  expect("${check}" "\nNo problem found\\.\n$" "finds problems in the installed sample configuration")

elseif(STEP STREQUAL "subproject")
  if(NOT DEFINED SOURCE_DIR)
    message(FATAL_ERROR "SOURCE_DIR is not set")
  endif()
  file(REMOVE_RECURSE "${WORK_DIR}")
  run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}"
      "-DVX0SESS0_TREE=${SOURCE_DIR}")
  run(${CMAKE_COMMAND} --build "${WORK_DIR}" --target consumer -j2)
  run("${WORK_DIR}/consumer")

else()
  message(FATAL_ERROR "Unknown STEP ${STEP}")
endif()

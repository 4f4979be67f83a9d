# Run at installation (install(CODE)): installs the sample declarations with
# ${LUMSESS_CONFIG} replaced by the installed sample directory, so that every
# program that reads them with the path variables unset -- a client of the
# library as much as lumsess -- finds the sample's session files. Comment
# lines are copied as they are. CMAKE_INSTALL_PREFIX is the prefix of this
# installation (cmake --install --prefix, or /usr for the Debian packages);
# DESTDIR, when set, is applied by file(INSTALL).
#   VX0SESS0_SAMPLE_DCLS     the source declarations (resources/dcls)
#   VX0SESS0_SAMPLE_STAGING  a scratch directory of the build tree
#   VX0SESS0_DATADIR         the sample directory relative to the prefix
get_filename_component(sample "${CMAKE_INSTALL_PREFIX}/${VX0SESS0_DATADIR}" ABSOLUTE)
file(REMOVE_RECURSE "${VX0SESS0_SAMPLE_STAGING}")
file(GLOB declarations "${VX0SESS0_SAMPLE_DCLS}/*.dcls")
foreach(declaration IN LISTS declarations)
  file(READ "${declaration}" text)
  # Every line starts after a line feed; a line that is not a comment has its
  # ${LUMSESS_CONFIG} replaced (the sample has one on a line at most).
  set(text "\n${text}")
  string(REGEX REPLACE "(\n[ \t]*[^#!\n][^\n]*)\\\${LUMSESS_CONFIG}" "\\1${sample}" text "${text}")
  string(SUBSTRING "${text}" 1 -1 text)
  get_filename_component(name "${declaration}" NAME)
  file(WRITE "${VX0SESS0_SAMPLE_STAGING}/${name}" "${text}")
endforeach()
file(GLOB staged "${VX0SESS0_SAMPLE_STAGING}/*.dcls")
file(INSTALL ${staged} DESTINATION "${sample}/dcls")

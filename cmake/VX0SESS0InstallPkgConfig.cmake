# Run at installation (install(CODE)): writes VX0SESS0.pc for the prefix of
# this installation (cmake --install --prefix, or /usr for the Debian
# packages) and installs it; DESTDIR, when set, is applied by file(INSTALL).
#   VX0SESS0_PC_TEMPLATE  cmake/VX0SESS0.pc.in
#   VX0SESS0_PC_STAGING   a scratch directory of the build tree
#   VX0SESS0_PC_DIR, VX0SESS0_PC_LIBDIR, VX0SESS0_PC_INCLUDEDIR, VX0SESS0_PC_DATADIR
#                         install directories relative to the prefix
#   PROJECT_DESCRIPTION, PROJECT_VERSION
get_filename_component(VX0SESS0_PC_PREFIX "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
configure_file("${VX0SESS0_PC_TEMPLATE}" "${VX0SESS0_PC_STAGING}/VX0SESS0.pc" @ONLY)
file(INSTALL "${VX0SESS0_PC_STAGING}/VX0SESS0.pc"
  DESTINATION "${VX0SESS0_PC_PREFIX}/${VX0SESS0_PC_DIR}")

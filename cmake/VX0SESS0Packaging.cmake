# Installation beyond the libraries and headers: the bundled sample
# configuration, the pkg-config file, and the Debian package built by
# `cpack -G DEB` from an installation under /usr.

# The sample configuration (dcls/, msgcatalog/, admin.settings, sessions/):
# lumsess uses it when no configuration is given, and the platform searches
# its dcls/ and msgcatalog/ when the path variables are unset.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/
  DESTINATION ${VX0SESS0_DATADIR})

# pkg-config: VX0SESS0.pc, relocatable through ${pcfiledir}.
set(VX0SESS0_PKGCONFIGDIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH VX0SESS0_PREFIX_FROM_PKGCONFIGDIR
  "${CMAKE_INSTALL_PREFIX}/${VX0SESS0_PKGCONFIGDIR}" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" VX0SESS0_PREFIX_FROM_PKGCONFIGDIR
  "${VX0SESS0_PREFIX_FROM_PKGCONFIGDIR}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/VX0SESS0.pc.in ${PROJECT_BINARY_DIR}/VX0SESS0.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VX0SESS0.pc DESTINATION ${VX0SESS0_PKGCONFIGDIR})

# The Debian package: libraries, headers, CMake and pkg-config files, the
# lumsess tool and the sample configuration, all under /usr.
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "vx0sess0")
set(CPACK_PACKAGE_VENDOR "VX0SESS0 maintainers")
set(CPACK_PACKAGE_CONTACT "VX0SESS0 maintainers <maintainers@vx0sess0.example.org>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "session-file library of the product-data-management client, with the lumsess tool")
set(CPACK_PACKAGE_DESCRIPTION
  "VX0SESS0 describes session files (saved product-structure graphs and saved queries) as "
  "values, finds where they live, which viewers can show them and how they read in the "
  "user's language. The package holds the VX0SESS0 and KORPlatform shared libraries, their "
  "headers, CMake and pkg-config files, the lumsess command-line tool and a sample "
  "configuration under /usr/share/VX0SESS0.")
string(JOIN "" CPACK_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION "libs")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
# The run-time dependencies (C and C++ run-time libraries) are computed from
# the binaries; the package's own libraries are found in it.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_INSTALL_LIBDIR}")
set(CPACK_SOURCE_IGNORE_FILES "/\\\\.git/" "/build/" "/build-.*/")
include(CPack)

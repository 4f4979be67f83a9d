# Installation beyond the libraries and headers: the bundled sample
# configuration, the pkg-config file, and the Debian packages built by
# `cpack -G DEB` from an installation under /usr.
#
# Three install components, one Debian package each:
#   runtime      the shared libraries                  libvx0sess0-<SONAME version>
#   development  headers, CMake and pkg-config files,
#                the libraries' .so links              libvx0sess0-dev
#   tool         lumsess, its manual page and bash
#                completion, the sample configuration  lumsess

# The sample configuration (dcls/, msgcatalog/, admin.settings, sessions/):
# lumsess uses it when no configuration is given, and the platform searches
# its dcls/ and msgcatalog/ when the path variables are unset. Its
# declarations are written at installation, naming the installed directory.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/
  DESTINATION ${VX0SESS0_DATADIR}
  COMPONENT tool
  PATTERN "*.dcls" EXCLUDE)
install(CODE "
  set(VX0SESS0_SAMPLE_DCLS [==[${PROJECT_SOURCE_DIR}/resources/dcls]==])
  set(VX0SESS0_SAMPLE_STAGING [==[${PROJECT_BINARY_DIR}/install-staging/dcls]==])
  set(VX0SESS0_DATADIR [==[${VX0SESS0_DATADIR}]==])
  include([==[${CMAKE_CURRENT_LIST_DIR}/VX0SESS0InstallSample.cmake]==])"
  COMPONENT tool)

# pkg-config: VX0SESS0.pc, written at installation for the prefix installed to.
install(CODE "
  set(VX0SESS0_PC_TEMPLATE [==[${CMAKE_CURRENT_LIST_DIR}/VX0SESS0.pc.in]==])
  set(VX0SESS0_PC_STAGING [==[${PROJECT_BINARY_DIR}/install-staging/pkgconfig]==])
  set(VX0SESS0_PC_DIR [==[${CMAKE_INSTALL_LIBDIR}/pkgconfig]==])
  set(VX0SESS0_PC_LIBDIR [==[${CMAKE_INSTALL_LIBDIR}]==])
  set(VX0SESS0_PC_INCLUDEDIR [==[${CMAKE_INSTALL_INCLUDEDIR}]==])
  set(VX0SESS0_PC_DATADIR [==[${VX0SESS0_DATADIR}]==])
  set(PROJECT_DESCRIPTION [==[${PROJECT_DESCRIPTION}]==])
  set(PROJECT_VERSION [==[${PROJECT_VERSION}]==])
  include([==[${CMAKE_CURRENT_LIST_DIR}/VX0SESS0InstallPkgConfig.cmake]==])"
  COMPONENT development)

# The Debian packages.
set(VX0SESS0_RUNTIME_PACKAGE "libvx0sess0-${PROJECT_VERSION_MAJOR}")
set(VX0SESS0_DEV_PACKAGE "libvx0sess0-dev")
set(VX0SESS0_TOOL_PACKAGE "lumsess")

# Each package carries the copyright file and the changelog (compressed, as
# Debian wants it) in its own documentation directory.
# The changelog's latest entry is the version built.
file(STRINGS "${PROJECT_SOURCE_DIR}/packaging/debian/changelog" latest LIMIT_COUNT 1)
if(NOT latest MATCHES "^vx0sess0 \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "packaging/debian/changelog starts with \"${latest}\": give it an entry "
    "for version ${PROJECT_VERSION} first.")
endif()
find_program(VX0SESS0_GZIP gzip REQUIRED)
set(changelog "${PROJECT_BINARY_DIR}/changelog.gz")
add_custom_command(OUTPUT "${changelog}"
  COMMAND "${VX0SESS0_GZIP}" -9n -c "${PROJECT_SOURCE_DIR}/packaging/debian/changelog" > "${changelog}"
  DEPENDS "${PROJECT_SOURCE_DIR}/packaging/debian/changelog"
  COMMENT "Compressing the Debian changelog"
  VERBATIM)
add_custom_target(vx0sess0_changelog ALL DEPENDS "${changelog}")
foreach(component IN ITEMS runtime development tool)
  if(component STREQUAL "runtime")
    set(package "${VX0SESS0_RUNTIME_PACKAGE}")
  elseif(component STREQUAL "development")
    set(package "${VX0SESS0_DEV_PACKAGE}")
  else()
    set(package "${VX0SESS0_TOOL_PACKAGE}")
  endif()
  install(FILES "${PROJECT_SOURCE_DIR}/packaging/debian/copyright" "${changelog}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
    COMPONENT ${component})
endforeach()

# Lintian warnings accepted, each with its reason, in the package itself.
foreach(package IN ITEMS "${VX0SESS0_RUNTIME_PACKAGE};runtime" "${VX0SESS0_DEV_PACKAGE};development")
  list(GET package 1 component)
  list(GET package 0 package)
  install(FILES "${PROJECT_SOURCE_DIR}/packaging/debian/${package}.lintian-overrides"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
    RENAME "${package}"
    COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "vx0sess0")
set(CPACK_PACKAGE_VENDOR "VX0SESS0 maintainers")
set(CPACK_PACKAGE_CONTACT "VX0SESS0 maintainers <maintainers@vx0sess0.example.org>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_SOURCE_IGNORE_FILES "/\\\\.git/" "/build/" "/build-.*/")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://vx0sess0.example.org/")
# The run-time dependencies (C and C++ run-time libraries) are computed from
# the binaries; the package's own libraries are found in the build tree.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  "${PROJECT_BINARY_DIR}/Platform" "${PROJECT_BINARY_DIR}/VirtualServices/VX0SESS0.m")
# The packages of the same build depend on each other at exactly its version.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)

# Each package's description: its first line is the synopsis (so no summary
# of the whole is prepended), the rest is wrapped below 80 columns.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(description_common
  "VX0SESS0 describes session files (saved product-structure graphs and saved\n"
  "queries) as values, finds where they live, which viewers can show them and\n"
  "how they read in the user's language.\n")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${VX0SESS0_RUNTIME_PACKAGE}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs")
# The shlibs file (written for the package with shared libraries only) and
# the ldconfig trigger. Maintainer scripts that do nothing keep CPack from
# writing ones that call ldconfig themselves, which the trigger replaces.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_SOURCE_DIR}/packaging/debian/triggers"
  "${PROJECT_SOURCE_DIR}/packaging/debian/postinst"
  "${PROJECT_SOURCE_DIR}/packaging/debian/postrm")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
  "session-file library of the product-data-management client\n"
  ${description_common}
  "This package holds the shared libraries VX0SESS0 and KORPlatform, the\n"
  "platform layer it is built on.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "${VX0SESS0_DEV_PACKAGE}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "session-file library of the product-data-management client - headers\n"
  ${description_common}
  "This package holds the headers, the CMake package (find_package(VX0SESS0))\n"
  "and the pkg-config file of VX0SESS0 and KORPlatform.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME "${VX0SESS0_TOOL_PACKAGE}")
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION "utils")
set(CPACK_DEBIAN_TOOL_DESCRIPTION
  "show and check the session-file configuration of the PDM client\n"
  ${description_common}
  "The lumsess tool shows those answers and checks the configuration behind\n"
  "them. This package also holds a sample configuration under\n"
  "/usr/share/VX0SESS0, which programs using the library read when no\n"
  "configuration is set.")
foreach(component RUNTIME DEVELOPMENT TOOL)
  string(JOIN "" CPACK_DEBIAN_${component}_DESCRIPTION ${CPACK_DEBIAN_${component}_DESCRIPTION})
endforeach()
include(CPack)

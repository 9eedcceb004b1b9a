# What `cpack -G DEB` makes of the components that are installed: the Debian packages liborvid0, liborvid-dev
# and orvid, or without liborvid0 when liborvid.a is built. scripts/package builds them for the folders that
# Debian uses.
if(NOT ORVID_IS_TOP_LEVEL OR NOT ORVID_INSTALL)
  return()
endif()

set(library_package liborvid${PROJECT_VERSION_MAJOR})
set(development_package liborvid-dev)
set(command_package orvid)
set(components development)
if(BUILD_SHARED_LIBS)
  list(APPEND components library)
endif()
if(ORVID_BUILD_TOOL)
  list(APPEND components command)
endif()

# Debian wants them in each package, and nobody else does.
foreach(component ${components})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION share/doc/${${component}_package}
    RENAME copyright COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION share/doc/${${component}_package}
    RENAME changelog COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvid)
set(CPACK_PACKAGE_VENDOR "The Orvid developers")
set(CPACK_PACKAGE_CONTACT "The Orvid developers <orvid@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # the first line of each package's description is its own
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packages/Compress.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE orvid)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
set(this_library "${library_package} (= ${PROJECT_VERSION})")
set(about "Orvid reads a JSON document into a tree of elements that know their
place, lets a program read and edit it by path, and writes it back with its
numbers digit by digit and its members in their order.")

# The shared library's own interface version would accept a YAJL without its fixes of 2023.
set(patched_yajl "libyajl2 (>= 2.1.0-3+deb12u2)")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "JSON documents with exact numbers - shared library
${about}
.
This package holds the shared library.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "${patched_yajl}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/packages/postinst ${PROJECT_SOURCE_DIR}/cmake/packages/postrm)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "JSON documents with exact numbers - development files
${about}
.
This package holds the headers, the files by which CMake and pkg-config find
the library, and the printers for GDB.")
if(BUILD_SHARED_LIBS)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${this_library}")
else()
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libyajl-dev, libgmp-dev, libre2-dev")
endif()

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME ${command_package})
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "JSON documents with exact numbers - command
${about}
.
This package holds the command orvid, which prints, reads and edits documents
by path.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
if(BUILD_SHARED_LIBS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${this_library}")
else()
  set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${patched_yajl}")
endif()
include(CPack)

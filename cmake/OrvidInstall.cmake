# What `cmake --install` installs: the headers, the library, the files by which CMake and pkg-config find
# it, the command and its manual page. Each belongs to one of three components: library (what programs need
# to run), development (what it takes to build them) and command. A project that adds this one as a
# sub-directory installs it only when it sets ORVID_INSTALL.
if(NOT ORVID_INSTALL)
  return()
endif()
include(CMakePackageConfigHelpers)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ko ${PROJECT_SOURCE_DIR}/base/include/ko
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN "*.h")

set_target_properties(orvid PROPERTIES EXPORT_NAME Orvid)
install(TARGETS orvid EXPORT OrvidTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Orvid)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/OrvidConfig.cmake.in ${PROJECT_BINARY_DIR}/OrvidConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/OrvidConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(EXPORT OrvidTargets NAMESPACE Orvid::
  DESTINATION ${package_folder} COMPONENT development)
install(FILES
  ${PROJECT_BINARY_DIR}/OrvidConfig.cmake
  ${PROJECT_BINARY_DIR}/OrvidConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/OrvidLinkLibraries.cmake
  DESTINATION ${package_folder} COMPONENT development)

# Whoever links liborvid.a links what it needs as well.
if(BUILD_SHARED_LIBS)
  set(pc_libs_private " -lyajl -lgmp -lre2")
else()
  set(pc_libs " -lyajl -lgmp -lre2")
endif()
file(RELATIVE_PATH pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
configure_file(${PROJECT_SOURCE_DIR}/cmake/orvid.pc.in ${PROJECT_BINARY_DIR}/orvid.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvid.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# GDB looks for a library's printers under the library's own folder, which is only known when it is installed.
if(BUILD_SHARED_LIBS)
  install(CODE "
    get_filename_component(libraries \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}\" ABSOLUTE)
    file(INSTALL ${PROJECT_SOURCE_DIR}/gdb/printers.py
      DESTINATION \"\${CMAKE_INSTALL_PREFIX}/share/gdb/auto-load\${libraries}\"
      RENAME liborvid.so.${PROJECT_VERSION}-gdb.py)"
    COMPONENT development)
else()
  install(FILES ${PROJECT_SOURCE_DIR}/gdb/printers.py
    DESTINATION share/orvid/gdb COMPONENT development)
endif()

if(ORVID_BUILD_TOOL)
  # The command finds the library wherever both were installed; the system's own folder needs no help.
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH to_libraries /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(orvid_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
  endif()
  install(TARGETS orvid_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
  install(FILES ${PROJECT_SOURCE_DIR}/completions/orvid.bash COMPONENT command
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME orvid)
  install(FILES ${PROJECT_SOURCE_DIR}/completions/_orvid COMPONENT command
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES ${PROJECT_SOURCE_DIR}/completions/orvid.fish COMPONENT command
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/orvid.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
endif()

# Installation: the shared library, its public headers under an include
# folder of the library's own, the CMake package ZelvoUnicode with the
# target zelvo::unicode, a pkg-config file, and the tool with its manual
# page.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Headers keep their folders below include/zelvo-unicode, so that a
# consumer writes #include "Unicode.h" or "string/String.h" and no folder
# named string/ lands loose in the prefix.
set(ZELVO_UNICODE_INSTALL_INCLUDEDIR
    "${CMAKE_INSTALL_INCLUDEDIR}/zelvo-unicode")
set(ZELVO_UNICODE_INSTALL_CMAKEDIR
    "${CMAKE_INSTALL_LIBDIR}/cmake/ZelvoUnicode")

set_target_properties(zelvo_unicode PROPERTIES EXPORT_NAME unicode)

install(TARGETS zelvo_unicode
  EXPORT ZelvoUnicodeTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  INCLUDES DESTINATION "${ZELVO_UNICODE_INSTALL_INCLUDEDIR}")

# Only the public headers: the generated fillers and the internal headers
# of the sources stay behind.
foreach(header IN LISTS ZELVO_UNICODE_PUBLIC_HEADERS)
  get_filename_component(folder "${header}" DIRECTORY)
  install(FILES "${header}"
    DESTINATION "${ZELVO_UNICODE_INSTALL_INCLUDEDIR}/${folder}")
endforeach()

install(EXPORT ZelvoUnicodeTargets
  NAMESPACE zelvo::
  FILE ZelvoUnicodeTargets.cmake
  DESTINATION "${ZELVO_UNICODE_INSTALL_CMAKEDIR}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/ZelvoUnicodeConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/ZelvoUnicodeConfig.cmake"
  INSTALL_DESTINATION "${ZELVO_UNICODE_INSTALL_CMAKEDIR}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/ZelvoUnicodeConfigVersion.cmake"
  VERSION "${PROJECT_VERSION}"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/ZelvoUnicodeConfig.cmake"
  "${PROJECT_BINARY_DIR}/ZelvoUnicodeConfigVersion.cmake"
  DESTINATION "${ZELVO_UNICODE_INSTALL_CMAKEDIR}")

# The pkg-config file finds the prefix from its own place, so the installed
# tree can be moved, or installed with --prefix to another place than the
# one configured.
set(ZELVO_UNICODE_PC_DIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
if(IS_ABSOLUTE "${ZELVO_UNICODE_PC_DIR}")
  set(ZELVO_UNICODE_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH ZELVO_UNICODE_PC_UP
    "/prefix/${ZELVO_UNICODE_PC_DIR}" "/prefix")
  set(ZELVO_UNICODE_PC_PREFIX "\${pcfiledir}/${ZELVO_UNICODE_PC_UP}")
endif()
configure_file(
  "${PROJECT_SOURCE_DIR}/cmake/zelvo-unicode.pc.in"
  "${PROJECT_BINARY_DIR}/zelvo-unicode.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zelvo-unicode.pc"
  DESTINATION "${ZELVO_UNICODE_PC_DIR}")

if(TARGET zelvo-unicode)
  install(TARGETS zelvo-unicode RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES tools/zelvo-unicode.1
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endif()

# The licence of the library, and the Unicode licence notice that goes with
# the tables generated from the Unicode Character Database.
install(FILES LICENSE LICENSE-UNICODE
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/zelvo-unicode")

# What a host or a packager gets: library, headers, programs, CMake package, pkg-config file, licence.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/TarnixTools")

install(TARGETS tarnixtools EXPORT TarnixToolsTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(TARGETS tarnixoffice LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" NAMELINK_SKIP)
install(DIRECTORY include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/tarnixtools" FILES_MATCHING PATTERN "*.h")
install(EXPORT TarnixToolsTargets NAMESPACE TarnixTools:: DESTINATION "${package_dir}")

configure_package_config_file(cmake/TarnixToolsConfig.cmake.in TarnixToolsConfig.cmake
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(TarnixToolsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/TarnixToolsConfig.cmake"
  "${PROJECT_BINARY_DIR}/TarnixToolsConfigVersion.cmake"
  DESTINATION "${package_dir}")

# pkg-config finds its prefix from where the file lies, so an installed tree can be moved.
file(RELATIVE_PATH prefix_from_pkgconfig "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig "${prefix_from_pkgconfig}")
configure_file(cmake/tarnixtools.pc.in tarnixtools.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/tarnixtools.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(FILES LICENSE THIRD_PARTY.md DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/tarnixtools")

if(TARGET tarnix)
  set(pages "${PROJECT_BINARY_DIR}/tools/tarnix")
  install(TARGETS tarnix RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES "${pages}/tarnix.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${pages}/tarnix.bash" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME tarnix)
  install(FILES "${pages}/tarnix.zsh" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" RENAME _tarnix)
  install(FILES "${pages}/tarnix.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()

# Two components: `runtime` is what a program needs to run, `development` what is needed to build one.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

install(
  TARGETS zul
  EXPORT zulTargets
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  FILE_SET HEADERS COMPONENT development)
install(
  EXPORT zulTargets
  NAMESPACE zul::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zul
  COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zulConfig.cmake.in ${PROJECT_BINARY_DIR}/zulConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zul
                              PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zulConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zulConfig.cmake ${PROJECT_BINARY_DIR}/zulConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zul
        COMPONENT development)

# The .pc file finds its prefix from its own place, so that the installed tree can be moved.
file(RELATIVE_PATH ZUL_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zul.pc.in ${PROJECT_BINARY_DIR}/zul.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zul.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT development)

# Three components: `runtime` is what a program needs to run, `development` what is needed to build one, `manual` what
# ./dev docs builds.
set(ZUL_MANUAL "" CACHE PATH "The folder of the built manual, if that is to be installed")
set(ZUL_COMPONENTS runtime development)
set(ZUL_PACKAGES libzul${PROJECT_VERSION_MAJOR} libzul-dev) # Debian's, in the same order
if(ZUL_MANUAL)
  list(APPEND ZUL_COMPONENTS manual)
  list(APPEND ZUL_PACKAGES zul-doc)
endif()
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

# Not that of the sources, which leads to files that are not installed.
configure_file(${PROJECT_SOURCE_DIR}/cmake/README.md.in ${PROJECT_BINARY_DIR}/README.md @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT development)
if(ZUL_MANUAL)
  install(DIRECTORY ${ZUL_MANUAL}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html COMPONENT manual)
endif()

# Each of Debian's packages has its own.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  foreach(component package IN ZIP_LISTS ZUL_COMPONENTS ZUL_PACKAGES)
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/copyright DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
            COMPONENT ${component})
  endforeach()
else()
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
endif()

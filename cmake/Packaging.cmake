# What cpack builds: on Linux an archive with everything and Debian packages of the components, for Windows a
# zip with everything. Debian's layout has its libraries in lib/<triplet>, others in lib: `./dev package`
# configures for the one and for the other.
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
endif()

set(CPACK_PACKAGE_VENDOR "The zul developers")
set(CPACK_PACKAGE_FILE_NAME zul-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL ${ZUL_COMPONENTS})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The shared library: probability distributions, hypothesis tests, descriptive
statistics, random deviates and clustering on plain arrays.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, and the files by which CMake and pkg-config find the library, for
building programs that use it.")
set(CPACK_COMPONENT_MANUAL_DESCRIPTION
    "The reference manual, with a search and worked examples, to be read without a
network: every function, the conventions, the limits and the accuracy.")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CPACK_PACKAGE_VENDOR})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# A library package is named after its soname, so that the next major version can stand beside it.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzul${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzul-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS zul-doc)

set(CPACK_DEBIAN_MANUAL_PACKAGE_NAME zul-doc)
set(CPACK_DEBIAN_MANUAL_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_MANUAL_PACKAGE_ARCHITECTURE all)

include(CPack)

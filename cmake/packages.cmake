# `cpack` makes two Debian packages, one for each component, for the architecture of the word size. The presets
# ia32-package and x86-64-package configure for it: what goes where depends on the prefix being /usr.
set(ZEL_PACKAGE_CONTACT "The maintainers of ZEL-RT <zel-rt@localhost>" CACHE STRING "Whom the packages name as their maintainer")
set(runtime_package libzel-rt${PROJECT_VERSION_MAJOR})
set(about [[
ZEL-RT is the base runtime library of a suite of security libraries: exceptions
that say what failed, where and when, a trace that is always on, locks and
threads, properties, whole files under advisory locks, and shared libraries
bound by name.
]])

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would be the first line of both descriptions
set(CPACK_PACKAGE_CONTACT ${ZEL_PACKAGE_CONTACT})
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE zel-rt)
if(ZEL_TARGET STREQUAL ia32)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
else()
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
endif()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "base runtime of a suite of security libraries
${about}.
This package has what programs that use the library need to run.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
file(CONFIGURE OUTPUT triggers CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzel-rt-dev)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "base runtime of a suite of security libraries (development)
${about}.
This package has the headers for C++17 and C99, what CMake and pkg-config need
to find the library, the documentation and examples.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION}), python3:any")

set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/cmake/cpack.cmake)
include(CPack)

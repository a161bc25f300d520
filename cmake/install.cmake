# Where an installation has what: `runtime` is what programs need to run, `development` what it takes to build them.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(ZEL_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zel-rt)

install(TARGETS zel-rt EXPORT zel-rt
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
# gdb loads its part by itself: in the system from where Debian's gdb looks, elsewhere from beside the library, so that it
# moves with it. It goes with the library, as programs die where nobody builds them.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(ZEL_GDB_DIR ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR})
else()
  set(ZEL_GDB_DIR ${CMAKE_INSTALL_LIBDIR})
endif()
install(FILES tools/gdb/zel_rt_gdb.py
  DESTINATION ${ZEL_GDB_DIR} RENAME $<TARGET_FILE_NAME:zel-rt>-gdb.py COMPONENT runtime)
install(DIRECTORY include/zel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN *.h)

# The version file also turns away projects of the other word size, so that both may be installed side by side.
configure_package_config_file(cmake/zel-rt-config.cmake.in zel-rt-config.cmake
  INSTALL_DESTINATION ${ZEL_PACKAGE_DIR} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(zel-rt-config-version.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT zel-rt NAMESPACE zel:: FILE zel-rt-targets.cmake DESTINATION ${ZEL_PACKAGE_DIR} COMPONENT development)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/zel-rt-config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/zel-rt-config-version.cmake
  DESTINATION ${ZEL_PACKAGE_DIR} COMPONENT development)

# A prefix that starts from the file itself lets the whole installation be moved.
string(REGEX REPLACE "[^/]+" ".." ZEL_PC_PREFIX ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
configure_file(cmake/zel-rt.pc.in zel-rt.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zel-rt.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(PROGRAMS tools/zel-trace DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT development)
install(FILES tools/zel-trace.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT development)

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development OPTIONAL
  FILES_MATCHING PATTERN *.md PATTERN *.h PATTERN *.c PATTERN *.cpp)
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development OPTIONAL)

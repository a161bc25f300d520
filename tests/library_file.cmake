# The library as the file that is shipped. Compilers differ in the thunks they emit, so the list is that of GCC.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  add_test(NAME symbols COMMAND ${CMAKE_COMMAND} -D NM=${CMAKE_NM} -D LIBRARY=$<TARGET_FILE:zel-rt>
    -D LIST=${PROJECT_SOURCE_DIR}/abi/${ZEL_TARGET}.symbols -D EXPORTED=${CMAKE_CURRENT_BINARY_DIR}/exported.symbols
    -P ${CMAKE_CURRENT_SOURCE_DIR}/support/check_symbols.cmake)
endif()
set(fortified $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
if(ZEL_SANITIZE)
  set(fortified OFF)
endif()
add_test(NAME hardening COMMAND ${CMAKE_COMMAND} -D READELF=${CMAKE_READELF} -D LIBRARY=$<TARGET_FILE:zel-rt>
  -D FORTIFIED=${fortified} -P ${CMAKE_CURRENT_SOURCE_DIR}/support/check_hardening.cmake)

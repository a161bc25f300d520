# Every public header compiles with nothing before it, as C++17 and, where C callers use it, as C99; and zel.h and vor.h
# leave none out. Headers are found, not listed: one that nobody listed is the one to catch.
file(GLOB_RECURSE public_headers RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/include/*.h)

set(class_check "#include <zel/zel.h>\n")
set(flat_check "#include <zel/vor.h>\n")
set(sources)
foreach(header IN LISTS public_headers)
  string(MAKE_C_IDENTIFIER ${header} identifier)
  string(TOUPPER ${identifier} guard)
  set(check "#ifndef ${guard}\n#error \"${header} is left out\"\n#endif\n")
  set(languages cpp)
  if(header MATCHES "/(vor|zel)_[^/]*$|^zel/vor.h$")
    list(APPEND languages c)
    string(APPEND flat_check "${check}")
  else()
    string(APPEND class_check "${check}")
  endif()
  foreach(language IN LISTS languages)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${identifier}.${language})
    file(CONFIGURE OUTPUT ${source} CONTENT "#include <${header}>\n" @ONLY)
    list(APPEND sources ${source})
  endforeach()
endforeach()
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/headers/all.cpp CONTENT "${class_check}" @ONLY)
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/headers/all.c CONTENT "${flat_check}" @ONLY)

add_library(public_headers OBJECT ${sources}
  ${CMAKE_CURRENT_BINARY_DIR}/headers/all.cpp
  ${CMAKE_CURRENT_BINARY_DIR}/headers/all.c)
set_target_properties(public_headers PROPERTIES
  C_STANDARD 99 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF
  CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
target_link_libraries(public_headers PRIVATE zel::rt zel_flags)

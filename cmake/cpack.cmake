# Read by cpack itself, before it makes the packages.

# The dependencies are packages of the packages' own architecture. Where only the multilib compiler brings 32-bit
# libraries, dpkg-shlibdeps would name its packages instead, which belong to amd64.
foreach(package libc6 libstdc++6)
  execute_process(COMMAND dpkg-query --show --showformat=\${db:Status-Status} ${package}:${CPACK_DEBIAN_PACKAGE_ARCHITECTURE}
    OUTPUT_VARIABLE status ERROR_QUIET)
  if(NOT status STREQUAL installed)
    message(FATAL_ERROR "${package}:${CPACK_DEBIAN_PACKAGE_ARCHITECTURE} is not installed; run scripts/bootstrap packages")
  endif()
endforeach()
set(ENV{DEB_HOST_ARCH} ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})

# This version of CPack has no word for this field, but writes the section as it is given.
foreach(component RUNTIME DEVELOPMENT)
  string(APPEND CPACK_DEBIAN_${component}_PACKAGE_SECTION "\nMulti-Arch: same")
endforeach()

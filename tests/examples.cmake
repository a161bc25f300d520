# The examples run and print what they promise, and the README shows the very programs that are built here.

# zel_example_test(NAME PROGRAM ARGUMENTS STATUS PATTERN [EXPECTED])
function(zel_example_test name program arguments status pattern)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${program}> -D ARGUMENTS=${arguments}
    -D STATUS=${status} -D "PATTERN=${pattern}" -D "EXPECTED=${ARGN}" -D FOLDER=${CMAKE_CURRENT_BINARY_DIR}/${name}
    -P ${CMAKE_CURRENT_SOURCE_DIR}/support/run_example.cmake)
endfunction()

if(TARGET tour)
  set(examples ${PROJECT_SOURCE_DIR}/examples)
  zel_example_test(tour tour /etc/os-release 0
    "\nID=.*<property  name=\"ID\">.*has not changed.*noticed.*tour=changed.*: +IOException\n.*: +-9\n.*: +-1085\n.*: +Could not open file for reading\n.*/missing\n.*FileLock::obtainLock\\(\\) @58\n.* Thread -?[0-9]+ FileLockImpl::FileLockImpl\\(\\)\\(\\): Entering\n.*code: -9\n.*: Leaving\n$")
  zel_example_test(tour-missing tour /nowhere 1 "^tour: /nowhere: Could not open file for reading")
  zel_example_test(tour-unreadable tour / 1 "tour: /: Could not open file for read")
  zel_example_test(tour-usage tour "" 1 "^usage: tour FILE\n$")
  zel_example_test(load-plugin load_plugin $<TARGET_FILE_DIR:plugin> 0
    "version: +1.0\n.*note: +.not told.\n.*version: +2.0.2.6\n.*release kind: +Official Release\n$"
    ${examples}/load_plugin.out)
  zel_example_test(load-plugin-missing load_plugin /nowhere 1 "load_plugin: /nowhere: Failed to load shared library")
  zel_example_test(first-steps first_steps "" 0
    "^host=localhost\nport=70000\nInvalidArgumentException at first_steps::portOf\\(\\) @[0-9]+: A port lies .* 70000\n.* portOf\\(\\): the port is '70000'\n.*message: A port.*<property  name=\"port\">8080<")
  zel_example_test(first-steps-c first_steps_c "" 0 "" ${examples}/first_steps_c.out)
  zel_example_test(flat flat "" 0 "" ${examples}/flat.out)
  foreach(room data exceptions memory persistence threads tracer utils)
    zel_example_test(${room}-example ${room}_example "" 0 "" ${examples}/${room}.out)
  endforeach()
endif()

add_test(NAME readme COMMAND ${CMAKE_COMMAND} -D ROOT=${PROJECT_SOURCE_DIR}
  -P ${CMAKE_CURRENT_SOURCE_DIR}/support/check_readme.cmake)

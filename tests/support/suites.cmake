# Lists the suites of a test program as tests of their own, one process a suite, in a file that ctest reads:
#   cmake -DPROGRAM=... -DNAME=... -DLABEL=... -DTIMEOUT=... -DENVIRONMENT=... -DRESULTS=<folder> -DFILE=... -P suites.cmake
# One process a test would start 1,900 times under the sanitizers, which takes longer than the tests themselves.
cmake_policy(VERSION 3.25)

execute_process(COMMAND ${CMAKE_COMMAND} -E env ${ENVIRONMENT} ${PROGRAM} --gtest_list_tests
  OUTPUT_VARIABLE listing ERROR_VARIABLE errors RESULT_VARIABLE status TIMEOUT 60)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} does not list its tests: ${status}\n${errors}")
endif()

set(tests)
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
foreach(line IN LISTS lines)
  if(line MATCHES "^([^ #]+)[.]")
    set(suite ${CMAKE_MATCH_1})
    string(REPLACE "/" "." result ${NAME}.${suite})
    string(APPEND tests "add_test([=[${NAME}.${suite}]=] [=[${PROGRAM}]=] [=[--gtest_filter=${suite}.*]=] "
      "[=[--gtest_output=xml:${RESULTS}/${result}.xml]=])\n"
      "set_tests_properties([=[${NAME}.${suite}]=] PROPERTIES LABELS [=[${LABEL}]=] TIMEOUT ${TIMEOUT} "
      "ENVIRONMENT [=[${ENVIRONMENT}]=])\n")
  endif()
endforeach()
if(NOT tests)
  message(FATAL_ERROR "${PROGRAM} holds no tests")
endif()
file(WRITE ${FILE} "${tests}")

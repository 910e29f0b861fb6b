# Installs the build into an empty prefix, looks at what arrived, and moves it to another place, where the tests that
# use it find it:
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DPREFIX=... -DCONFIG=... -DINTERFACE=<version> -P install.cmake
include(${CMAKE_CURRENT_LIST_DIR}/expectations.cmake)

function(install_into prefix)
  file(REMOVE_RECURSE ${prefix})
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG} --strip ${ARGN}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

install_into(${PREFIX}-runtime --component Runtime)
expect_runtime_only(${PREFIX}-runtime)
expect_resources(${PREFIX}-runtime)

install_into(${PREFIX}-before)
expect_no_path_of_these_trees(${PREFIX}-before ${BUILD_DIR} ${SOURCE_DIR})
expect_soname(${PREFIX}-before ${INTERFACE})
file(REMOVE_RECURSE ${PREFIX})
file(RENAME ${PREFIX}-before ${PREFIX})

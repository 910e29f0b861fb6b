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
install_into(${PREFIX}-data --component Data)
expect_resources(${PREFIX}-data)

# What others put there stays, and what was installed goes, with its folders.
set(removed ${PREFIX}-removed)
install_into(${removed} --component Tools)
install_into(${removed}/elsewhere --component Data)
file(REMOVE_RECURSE ${PREFIX}-manifests)
file(COPY ${BUILD_DIR}/install_manifest_Tools.txt ${BUILD_DIR}/install_manifest_Data.txt DESTINATION ${PREFIX}-manifests)
file(WRITE ${removed}/bin/of_somebody_else "")
execute_process(COMMAND ${CMAKE_COMMAND} -DBUILD_DIR=${PREFIX}-manifests
  -P ${SOURCE_DIR}/cmake/Uninstall.cmake OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE left LIST_DIRECTORIES ON RELATIVE ${removed} ${removed}/*)
if(NOT left STREQUAL "bin;bin/of_somebody_else")
  message(FATAL_ERROR "uninstalling leaves '${left}'")
endif()

install_into(${PREFIX}-before)
expect_no_path_of_these_trees(${PREFIX}-before ${BUILD_DIR} ${SOURCE_DIR})
expect_soname(${PREFIX}-before ${INTERFACE})
file(REMOVE_RECURSE ${PREFIX})
file(RENAME ${PREFIX}-before ${PREFIX})

# Builds the project of subproject/ with a static library in it, and installs it without and with the library:
#   cmake -DFOLDER=<scratch> -DSOURCE_DIR=... -DGENERATOR=... -DCOMPILER=... -P subproject.cmake
# FOLDER/prefix is then an installed static library.
include(${CMAKE_CURRENT_LIST_DIR}/expectations.cmake)
set(build ${FOLDER}/build)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Without optimisation, with precompiled headers and in batches: it is to be built, not to be fast.
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/subproject -B ${build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_BUILD_TYPE= -DCMAKE_CXX_FLAGS=-O0 -DBUILD_SHARED_LIBS=OFF -DXOV_PCH=ON
  -DXOV_BATCHES=30 -DXOV_INSTALL=OFF -DXOV_FETCH=ON -DXOV_SOURCE_DIR=${SOURCE_DIR})
run(${CMAKE_COMMAND} --build ${build} --parallel 2)
run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${build}/consumer ${build}/XOV_Graphics/resources)

file(REMOVE_RECURSE ${FOLDER}/host ${FOLDER}/prefix)
run(${CMAKE_COMMAND} --install ${build} --prefix ${FOLDER}/host)
file(GLOB_RECURSE installed RELATIVE ${FOLDER}/host ${FOLDER}/host/*)
if(NOT installed STREQUAL "bin/host")
  message(FATAL_ERROR "a host that is installed brings '${installed}' along")
endif()

run(${CMAKE_COMMAND} -DXOV_INSTALL=ON ${build})
run(${CMAKE_COMMAND} --install ${build} --prefix ${FOLDER}/prefix)
expect_static_library(${FOLDER}/prefix)
expect_resources(${FOLDER}/prefix)
expect_no_path_of_these_trees(${FOLDER}/prefix ${build} ${SOURCE_DIR})

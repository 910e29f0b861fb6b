# Installs the build into an empty prefix and looks at what arrived:
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DPREFIX=... -DCONFIG=... -P install.cmake

function(install_into prefix)
  file(REMOVE_RECURSE ${prefix})
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --config ${CONFIG} ${ARGN}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# A package that names the tree it was built from works on that machine only.
function(expect_no_path_of_this_tree prefix)
  file(GLOB_RECURSE texts ${prefix}/*.cmake ${prefix}/*.pc)
  if(NOT texts)
    message(FATAL_ERROR "no package files under ${prefix}")
  endif()
  foreach(text IN LISTS texts)
    file(READ ${text} content)
    foreach(tree IN ITEMS ${BUILD_DIR} ${SOURCE_DIR})
      string(FIND "${content}" "${tree}" at)
      if(NOT at EQUAL -1)
        message(FATAL_ERROR "${text} names ${tree}")
      endif()
    endforeach()
  endforeach()
endfunction()

function(expect_runtime_only prefix)
  file(GLOB_RECURSE libraries ${prefix}/*/libXOV_Graphics.so.*)
  file(GLOB_RECURSE rest ${prefix}/*.h ${prefix}/*.cmake ${prefix}/*.pc ${prefix}/*/libXOV_Graphics.so)
  if(NOT libraries OR rest)
    message(FATAL_ERROR "component Runtime: libraries '${libraries}', files for developers '${rest}'")
  endif()
endfunction()

# Maps draw from these where no larger ones were made.
function(expect_resources prefix)
  file(GLOB_RECURSE found RELATIVE ${prefix} ${prefix}/*/XOV_Graphics/resources/*)
  foreach(name IN ITEMS etopo30.i2 natural_wide.jpg PB2002_boundaries.txt)
    if(NOT found MATCHES "XOV_Graphics/resources/${name}")
      message(FATAL_ERROR "component Runtime: no ${name} among '${found}'")
    endif()
  endforeach()
endfunction()

install_into(${PREFIX}-runtime --component Runtime)
expect_runtime_only(${PREFIX}-runtime)
expect_resources(${PREFIX}-runtime)
install_into(${PREFIX})
expect_no_path_of_this_tree(${PREFIX})

# What an installed copy holds and what it does not.

# A package that names the tree it was built from works on that machine only, and a library that does looks there for
# its resources. Without debugging information, which may name sources.
function(expect_no_path_of_these_trees prefix)
  file(GLOB_RECURSE files ${prefix}/*.cmake ${prefix}/*.pc ${prefix}/*/libXOV_Graphics.* ${prefix}/bin/* ${prefix}/*/xov/_core*.so
    ${prefix}/*/libxov_designer.so ${prefix}/*/Version.h)
  list(FILTER files EXCLUDE REGEX "[.]debug$")
  list(LENGTH files count)
  if(count LESS 5)
    message(FATAL_ERROR "only '${files}' under ${prefix}")
  endif()
  foreach(file IN LISTS files)
    foreach(tree IN LISTS ARGN)
      execute_process(COMMAND grep -aqF ${tree}/ ${file} RESULT_VARIABLE status)
      if(NOT status EQUAL 1)
        message(FATAL_ERROR "${file} names ${tree}")
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

# Programs are linked to a name that changes when the interface may: with the minor version while the major one is 0.
function(expect_soname prefix wanted)
  file(GLOB_RECURSE library ${prefix}/*/libXOV_Graphics.so.${wanted})
  execute_process(COMMAND objdump -p ${library} OUTPUT_VARIABLE header COMMAND_ERROR_IS_FATAL ANY)
  if(NOT header MATCHES "SONAME +libXOV_Graphics[.]so[.]${wanted}\n")
    message(FATAL_ERROR "the library under ${prefix} is not named libXOV_Graphics.so.${wanted}:\n${header}")
  endif()
endfunction()

function(expect_static_library prefix)
  file(GLOB_RECURSE static ${prefix}/*/libXOV_Graphics.a)
  file(GLOB_RECURSE shared ${prefix}/*/libXOV_Graphics.so*)
  if(NOT static OR shared)
    message(FATAL_ERROR "with BUILD_SHARED_LIBS=OFF: '${static}' and '${shared}'")
  endif()
endfunction()

# Maps draw from these where no larger ones were made.
function(expect_resources prefix)
  file(GLOB_RECURSE found RELATIVE ${prefix} ${prefix}/*/XOV_Graphics/resources/*)
  foreach(name IN ITEMS etopo30.i2 natural_wide.jpg PB2002_boundaries.txt)
    if(NOT found MATCHES "XOV_Graphics/resources/${name}")
      message(FATAL_ERROR "no ${name} among '${found}'")
    endif()
  endforeach()
endfunction()

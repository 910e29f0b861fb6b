# Installs the library and the plugin into an empty prefix: the plugin there must find that library and no other.
#   cmake -DBUILD_DIR=... -DPREFIX=... -DPLUGIN_DIR=... -DCONFIG=... -P install.cmake
file(REMOVE_RECURSE ${PREFIX})
foreach(component IN ITEMS Runtime Designer)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX} --config ${CONFIG}
    --component ${component} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(GLOB plugins ${PREFIX}/${PLUGIN_DIR}/*xov_designer*)
list(LENGTH plugins count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "not one plugin in ${PREFIX}/${PLUGIN_DIR}: '${plugins}'")
endif()

file(GET_RUNTIME_DEPENDENCIES LIBRARIES ${plugins} RESOLVED_DEPENDENCIES_VAR found UNRESOLVED_DEPENDENCIES_VAR missing)
list(FILTER found INCLUDE REGEX XOV_Graphics)
cmake_path(IS_PREFIX PREFIX "${found}" NORMALIZE beside)
if(missing OR NOT beside)
  message(FATAL_ERROR "the plugin finds '${found}', and not '${missing}'")
endif()

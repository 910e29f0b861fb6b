# Compiles the sources of a target several at a time, as one that includes them, where XOV_BATCHES says how many: most of
# the time goes into headers. cmake/batches.awk keeps apart what gives the same name to things of its own; what two files
# have in common after configuring says so as an error of the compiler and is gone after configuring again. For builds
# that are made from nothing, such as those of ./test: a change of one source compiles its whole batch.
set(XOV_BATCHES 0 CACHE STRING "How many sources of a target are compiled together; 0 compiles each by itself")

function(xov_batches target)
  if(NOT XOV_BATCHES GREATER 1)
    return()
  endif()
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "[.]cpp$")
  list(FILTER sources EXCLUDE REGEX "[$]<")
  list(TRANSFORM sources REPLACE "^([^/].*)$" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
  list(JOIN sources "\n" lines)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}.sources)
  file(WRITE ${list} "${lines}\n")
  execute_process(COMMAND awk -v most=${XOV_BATCHES} -f ${PROJECT_SOURCE_DIR}/cmake/batches.awk ${list}
    OUTPUT_VARIABLE batches OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" batches "${batches}")
  set(number 0)
  foreach(batch IN LISTS batches)
    math(EXPR number "${number} + 1")
    separate_arguments(batch UNIX_COMMAND "${batch}")
    # Tests of other folders share sources: the number is the target's own.
    set_source_files_properties(${batch} PROPERTIES UNITY_GROUP ${target}_${number})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()

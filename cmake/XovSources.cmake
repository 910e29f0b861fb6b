# Each folder of the library lists its files with xov_sources(); xov_library() then makes the targets of them:
#   xov_headers    where the headers lie, for what is linked to the library later
#   xov_objects    every source, compiled once
#   XOV_Graphics   the library, exported as XOV::Graphics: shared, or static with BUILD_SHARED_LIBS=OFF
#   xov_static     the same objects for tests, which also reach what the shared library hides

# Headers that are made while configuring.
set(xov_made_headers ${PROJECT_BINARY_DIR}/include)

# A public header that is not there is made from the file of its name and ".in".
function(xov_sources)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "PUBLIC_HEADERS;SOURCES")
  foreach(file IN LISTS arg_PUBLIC_HEADERS)
    set(header ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    if(EXISTS ${header}.in)
      file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR}/src ${header})
      configure_file(${header}.in ${xov_made_headers}/${path} @ONLY)
      set(header ${xov_made_headers}/${path})
    endif()
    set_property(GLOBAL APPEND PROPERTY XOV_PUBLIC_HEADERS ${header})
  endforeach()
  foreach(file IN LISTS arg_SOURCES)
    set_property(GLOBAL APPEND PROPERTY XOV_LIBRARY_SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  endforeach()
endfunction()

# xov_target_of(MODULE RESULT): the name under which pkg_check_modules() knows a module, XOV_MSEED for mseed.
function(xov_target_of module result)
  string(TOUPPER "XOV_${module}" name)
  string(MAKE_C_IDENTIFIER "${name}" name)
  set(${result} ${name} PARENT_SCOPE)
endfunction()

# A library that one folder needs beside Qt, by its pkg-config name: xov_needs(mseed). Who links the static library
# needs it too, and finds it through the CMake package or the pkg-config file.
function(xov_needs module)
  find_package(PkgConfig REQUIRED)
  xov_target_of(${module} name)
  # Global because the library is put together at the root.
  pkg_check_modules(${name} REQUIRED IMPORTED_TARGET GLOBAL ${module})
  set_property(GLOBAL APPEND PROPERTY XOV_LIBRARY_MODULES ${module})
  set_property(GLOBAL APPEND PROPERTY XOV_LIBRARY_LINKS PkgConfig::${name})
endfunction()

# The resources beside a library or program of the build tree, where it looks for them as an installed copy does.
function(xov_resources_beside target)
  set(place $<TARGET_FILE_DIR:${target}>/XOV_Graphics)
  set(link create_symlink)
  if(CMAKE_HOST_WIN32)
    set(link copy_directory)
  endif()
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${place}
    COMMAND ${CMAKE_COMMAND} -E ${link} ${XOV_Graphics_SOURCE_DIR}/resources ${place}/resources
    VERBATIM)
endfunction()

# An installed program or module finds the library by its own place, FOLDER as seen from the prefix, wherever that is moved.
function(xov_installed_in target folder)
  file(RELATIVE_PATH library_from_here /${folder} /${CMAKE_INSTALL_LIBDIR})
  set(here "$ORIGIN")
  if(APPLE)
    set(here "@loader_path")
  endif()
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${here}/${library_from_here}")
endfunction()

function(xov_library)
  get_property(headers GLOBAL PROPERTY XOV_PUBLIC_HEADERS)
  get_property(sources GLOBAL PROPERTY XOV_LIBRARY_SOURCES)
  get_property(links GLOBAL PROPERTY XOV_LIBRARY_LINKS)

  add_library(xov_headers INTERFACE)
  target_include_directories(xov_headers INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<BUILD_INTERFACE:${xov_made_headers}>)

  # From where the library lies to its resources; a program that holds it lies in the folder of programs, as a DLL does.
  set(own_folder ${CMAKE_INSTALL_FULL_LIBDIR})
  if(WIN32 OR NOT BUILD_SHARED_LIBS)
    set(own_folder ${CMAKE_INSTALL_FULL_BINDIR})
  endif()
  file(RELATIVE_PATH shared_data ${own_folder} ${CMAKE_INSTALL_FULL_DATADIR})

  add_library(xov_objects OBJECT ${sources})
  set_target_properties(xov_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    AUTOMOC ON)
  # Only views, what they are made of, what moves them and picks have a meta-object; nothing else is looked through for one.
  set(plain ${sources})
  list(FILTER plain EXCLUDE REGEX "/(views/[a-z]+/[A-Za-z0-9]*(View[A-Za-z0-9]*|xyScatterPlot)|views/navigation/[A-Za-z0-9]*|platform/View|seismic/picks/PickDocument|views/seismic/PickEditor)[.]cpp$")
  set_source_files_properties(${plain} PROPERTIES SKIP_AUTOMOC ON)
  target_link_libraries(xov_objects PUBLIC Qt6::Widgets xov_headers PRIVATE xov_options ${links} ${CMAKE_DL_LIBS})
  target_compile_definitions(xov_objects PRIVATE
    XOV_BUILDING
    XOV_SHARED_DATA="${shared_data}"
    XOV_CONFIGURED_DATA_ROOT="${XOV_DATA_ROOT}")
  if(XOV_PCH)
    target_precompile_headers(xov_objects PRIVATE ${PROJECT_SOURCE_DIR}/cmake/QtHeaders.h)
  endif()
  xov_batches(xov_objects)

  add_library(XOV_Graphics)
  add_library(XOV::Graphics ALIAS XOV_Graphics)
  target_sources(XOV_Graphics PUBLIC
    FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src ${xov_made_headers} FILES ${headers})
  # While the interface may change with every minor version, so does the name that programs are linked to.
  set(interface_version ${PROJECT_VERSION_MAJOR})
  if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(interface_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  endif()
  set_target_properties(XOV_Graphics PROPERTIES
    EXPORT_NAME Graphics
    VERSION ${PROJECT_VERSION}
    SOVERSION ${interface_version})
  target_compile_features(XOV_Graphics INTERFACE cxx_std_20)
  target_include_directories(XOV_Graphics INTERFACE
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(XOV_Graphics PUBLIC Qt6::Widgets PRIVATE $<BUILD_INTERFACE:xov_objects> ${links}
    ${CMAKE_DL_LIBS} $<BUILD_INTERFACE:xov_options>)
  if(BUILD_SHARED_LIBS)
    xov_resources_beside(XOV_Graphics)
    # Threads that wait for work must not lose their code when a host unloads a plugin that brought the library along.
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
      target_link_options(XOV_Graphics PRIVATE LINKER:-z,nodelete)
    endif()
  else()
    target_compile_definitions(xov_objects PRIVATE XOV_STATIC)
    target_compile_definitions(XOV_Graphics INTERFACE XOV_STATIC)
  endif()

  add_library(xov_static STATIC EXCLUDE_FROM_ALL)
  target_compile_definitions(xov_static INTERFACE XOV_STATIC)
  target_link_libraries(xov_static PUBLIC xov_objects Qt6::Widgets ${links} ${CMAKE_DL_LIBS} xov_options)
endfunction()

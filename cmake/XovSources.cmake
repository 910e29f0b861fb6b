# Each folder of the library lists its files with xov_sources(); xov_library() then makes the targets of them:
#   xov_objects    every source, compiled once
#   XOV_Graphics   the shared library, exported as XOV::Graphics
#   xov_static     the same objects for tests, which also reach what the shared library hides

function(xov_sources)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "PUBLIC_HEADERS;SOURCES")
  foreach(file IN LISTS arg_PUBLIC_HEADERS)
    set_property(GLOBAL APPEND PROPERTY XOV_PUBLIC_HEADERS ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  endforeach()
  foreach(file IN LISTS arg_SOURCES)
    set_property(GLOBAL APPEND PROPERTY XOV_LIBRARY_SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  endforeach()
endfunction()

# Libraries that one folder needs beside Qt: xov_links(PkgConfig::LIBMSEED).
function(xov_links)
  set_property(GLOBAL APPEND PROPERTY XOV_LIBRARY_LINKS ${ARGN})
endfunction()

function(xov_library)
  get_property(headers GLOBAL PROPERTY XOV_PUBLIC_HEADERS)
  get_property(sources GLOBAL PROPERTY XOV_LIBRARY_SOURCES)
  get_property(links GLOBAL PROPERTY XOV_LIBRARY_LINKS)

  add_library(xov_objects OBJECT ${sources})
  set_target_properties(xov_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    AUTOMOC ON)
  # Only views and what they are made of have a meta-object; nothing else is looked through for one.
  set(plain ${sources})
  list(FILTER plain EXCLUDE REGEX "/(views/[a-z]+/[A-Za-z0-9]*(View[A-Za-z0-9]*|xyScatterPlot)|platform/View)[.]cpp$")
  set_source_files_properties(${plain} PROPERTIES SKIP_AUTOMOC ON)
  target_include_directories(xov_objects PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
  target_link_libraries(xov_objects PUBLIC Qt6::Widgets PRIVATE xov_options ${links})
  target_compile_definitions(xov_objects PRIVATE
    XOV_VERSION="${PROJECT_VERSION}"
    XOV_INSTALLED_RESOURCES="${CMAKE_INSTALL_FULL_DATADIR}/XOV_Graphics/resources"
    XOV_BUILD_TREE_RESOURCES="${PROJECT_SOURCE_DIR}/resources"
    XOV_CONFIGURED_DATA_ROOT="${XOV_DATA_ROOT}")
  if(XOV_PCH)
    target_precompile_headers(xov_objects PRIVATE ${PROJECT_SOURCE_DIR}/cmake/QtHeaders.h)
  endif()

  add_library(XOV_Graphics SHARED)
  add_library(XOV::Graphics ALIAS XOV_Graphics)
  target_sources(XOV_Graphics PUBLIC
    FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${headers})
  set_target_properties(XOV_Graphics PROPERTIES
    EXPORT_NAME Graphics
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    VERIFY_INTERFACE_HEADER_SETS ${XOV_TESTS})
  target_compile_features(XOV_Graphics INTERFACE cxx_std_20)
  target_include_directories(XOV_Graphics INTERFACE
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(XOV_Graphics PUBLIC Qt6::Widgets PRIVATE $<BUILD_INTERFACE:xov_objects> ${links}
    $<BUILD_INTERFACE:xov_options>)

  add_library(xov_static STATIC EXCLUDE_FROM_ALL)
  target_link_libraries(xov_static PUBLIC xov_objects Qt6::Widgets ${links} xov_options)
endfunction()

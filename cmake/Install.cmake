# What `cmake --install` copies, in components that other folders add to:
#   Runtime        the shared library
#   Data           what maps are drawn from
#   Tools          the command, the maker of base maps, their man pages, completions, and what tells a desktop of them
#   Development    headers, the static library or the link name of the shared one, the CMake package and the pkg-config file
#   Documentation  the guide, and the reference where it was built
#   Designer       the plugin for Qt Designer
#   Python         the module xov
include(CMakePackageConfigHelpers)

set(xov_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/XOV_Graphics)

install(TARGETS XOV_Graphics EXPORT XOV_GraphicsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  FRAMEWORK DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)

install(EXPORT XOV_GraphicsTargets NAMESPACE XOV:: DESTINATION ${xov_package_dir} COMPONENT Development)

set(xov_resources_dir ${CMAKE_INSTALL_DATADIR}/XOV_Graphics/resources)
# What find_package() may ask for. Other folders add what they install: set_property(GLOBAL APPEND PROPERTY
# XOV_COMPONENTS Designer).
get_property(xov_components GLOBAL PROPERTY XOV_COMPONENTS)
list(PREPEND xov_components Graphics)
string(JOIN ", " xov_known_components ${xov_components})
string(JOIN " " xov_component_items ${xov_components})
# Who links a static library also links what that needs.
set(xov_private_modules)
set(xov_private_libs)
set(xov_definitions)
if(NOT BUILD_SHARED_LIBS)
  get_property(xov_modules GLOBAL PROPERTY XOV_LIBRARY_MODULES)
  string(JOIN " " xov_private_modules ${xov_modules})
  list(TRANSFORM CMAKE_DL_LIBS PREPEND "-l" OUTPUT_VARIABLE xov_private_libs)
  set(xov_definitions " -DXOV_STATIC")
endif()
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/XOV_GraphicsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/XOV_GraphicsConfig.cmake INSTALL_DESTINATION ${xov_package_dir}
  PATH_VARS xov_resources_dir NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
configure_file(${CMAKE_CURRENT_LIST_DIR}/XOV_GraphicsConfigVersion.cmake.in
  ${PROJECT_BINARY_DIR}/XOV_GraphicsConfigVersion.cmake @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/XOV_GraphicsConfig.cmake ${PROJECT_BINARY_DIR}/XOV_GraphicsConfigVersion.cmake
  DESTINATION ${xov_package_dir} COMPONENT Development)

# The pkg-config file finds its prefix from its own place, so that an installed copy can be moved.
set(xov_pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH xov_prefix_from_pkgconfig ${xov_pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH xov_libdir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH xov_includedir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
file(RELATIVE_PATH xov_resources_from_prefix ${CMAKE_INSTALL_PREFIX}
  ${CMAKE_INSTALL_FULL_DATADIR}/XOV_Graphics/resources)
configure_file(${CMAKE_CURRENT_LIST_DIR}/XOV_Graphics.pc.in ${PROJECT_BINARY_DIR}/XOV_Graphics.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/XOV_Graphics.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)

file(GLOB xov_resources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
if(xov_resources)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/ DESTINATION ${xov_resources_dir}
    COMPONENT Data)
endif()

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation
  FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.jpg")
# Made by the target docs, where somebody asked for it.
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation OPTIONAL)

# Takes away what the last installation from this folder brought, but nothing else.
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -DBUILD_DIR=${PROJECT_BINARY_DIR} -P ${CMAKE_CURRENT_LIST_DIR}/Uninstall.cmake
    COMMENT "Removing what was installed" VERBATIM)
endif()

# What `cmake --install` copies, in two components:
#   Runtime       the shared library and its resources (and what apps/ adds: the command, man page, completion)
#   Development   headers, the link name of the library, the CMake package and the pkg-config file
include(CMakePackageConfigHelpers)

set(xov_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/XOV_Graphics)

install(TARGETS XOV_Graphics EXPORT XOV_GraphicsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  FRAMEWORK DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)

install(EXPORT XOV_GraphicsTargets NAMESPACE XOV:: DESTINATION ${xov_package_dir} COMPONENT Development)

# The interface may change with every 0.x version, and from 1.0 on only with the major version.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(xov_compatibility SameMinorVersion)
else()
  set(xov_compatibility SameMajorVersion)
endif()
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/XOV_GraphicsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/XOV_GraphicsConfig.cmake INSTALL_DESTINATION ${xov_package_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/XOV_GraphicsConfigVersion.cmake
  COMPATIBILITY ${xov_compatibility})
install(FILES ${PROJECT_BINARY_DIR}/XOV_GraphicsConfig.cmake ${PROJECT_BINARY_DIR}/XOV_GraphicsConfigVersion.cmake
  DESTINATION ${xov_package_dir} COMPONENT Development)

# The pkg-config file finds its prefix from its own place, so that an installed copy can be moved.
set(xov_pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH xov_prefix_from_pkgconfig ${xov_pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH xov_libdir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH xov_includedir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/XOV_Graphics.pc.in ${PROJECT_BINARY_DIR}/XOV_Graphics.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/XOV_Graphics.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)

file(GLOB xov_resources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
if(xov_resources)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/XOV_Graphics/resources
    COMPONENT Runtime)
endif()

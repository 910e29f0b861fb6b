# Debian packages of what is installed, one a component, by `cpack --config BUILD/CPackConfig.cmake`; scripts/packages.sh
# builds and tries them. And a tarball of the sources: `cmake --build BUILD --target dist`.
set(packaging ${PROJECT_SOURCE_DIR}/packaging/debian)

find_package(Git QUIET)
if(Git_FOUND AND EXISTS ${PROJECT_SOURCE_DIR}/.git)
  set(tarball ${PROJECT_BINARY_DIR}/XOV_Graphics-${PROJECT_VERSION}.tar.gz)
  # What is committed, with the time of the commit: the same bytes anywhere.
  add_custom_target(dist
    COMMAND ${GIT_EXECUTABLE} archive --format=tar.gz --prefix=XOV_Graphics-${PROJECT_VERSION}/ -o ${tarball} HEAD
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMENT "Packing ${tarball}" VERBATIM)
endif()

set(XOV_PACKAGE_MAINTAINER "XOV Graphics developers <maintainers@xov.example>" CACHE STRING
  "Whom the Debian packages name, as in packaging/debian/changelog")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME xov-graphics)
set(CPACK_PACKAGE_VENDOR "XOV Graphics developers")
set(CPACK_PACKAGE_CONTACT ${XOV_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Whatever mask the builder has.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
  WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE xov-graphics)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Compressed man pages, changelog and copyright; one time for all files.
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/PackageTime.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/PackageFiles.cmake)
set(CPACK_XOV_PACKAGING ${packaging})
set(CPACK_XOV_CHANGES ${PROJECT_SOURCE_DIR}/CHANGELOG.md)

# xov_package(COMPONENT NAME ARCHITECTURE SECTION DEPENDS SUMMARY DESCRIPTION)
set(CPACK_COMPONENTS_ALL)
function(xov_package component name architecture section depends summary description)
  string(TOUPPER ${component} upper)
  set(prefix CPACK_DEBIAN_${upper}_PACKAGE)
  set(shlibdeps ON)
  if(architecture STREQUAL "all")
    set(${prefix}_ARCHITECTURE all PARENT_SCOPE)
    set(shlibdeps OFF)
  endif()
  set(${prefix}_SHLIBDEPS ${shlibdeps} PARENT_SCOPE)
  set(${prefix}_NAME ${name} PARENT_SCOPE)
  set(${prefix}_SECTION ${section} PARENT_SCOPE)
  set(${prefix}_DEPENDS "${depends}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
endfunction()

get_target_property(interface_version XOV_Graphics SOVERSION)
set(library libxov-graphics${interface_version})
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(same_library "${library} (= ${version})")
set(about "XOV Graphics draws seismograms as record sections, drums and live displays,
spectrograms, grids, slowness maps and geographic maps, exactly and fast, on
screens and as PDF, SVG, TIFF, JPEG and PNG.")

# Base maps and exports are TIFF files too, and texts have the widths of Helvetica.
xov_package(Runtime ${library} any libs
  "xov-graphics-data (= ${version}), qt6-image-formats-plugins, fonts-urw-base35 | fonts-texgyre | fonts-liberation"
  "plot views for seismology and geophysics programs"
  "${about}\n.\nThis package holds the library.")
xov_package(Data xov-graphics-data all science ""
  "base maps, elevations and plate boundaries for XOV Graphics"
  "${about}\n.\nThis package holds small base maps, a grid of elevations and plate boundaries;\nxov_resources of the package xov makes full-size ones.")
xov_package(Development libxov-graphics-dev any libdevel "${same_library}, qt6-base-dev (>= 6.4)"
  "plot views for seismology and geophysics programs - development files"
  "${about}\n.\nThis package holds headers, the CMake package and the pkg-config file.")
xov_package(Documentation xov-graphics-doc all doc ""
  "plot views for seismology and geophysics programs - documentation"
  "${about}\n.\nThis package holds the documentation.")
if(XOV_APPS)
  xov_package(Tools xov any science ""
    "plots of seismograms and other data of seismology"
    "${about}\n.\nThis package holds the command xov, which draws these from SAC, miniSEED,\nQuakeML, catalogue, text and grid files, and its window, XOV Desk.")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "xov-graphics-doc, apt")
endif()
if(TARGET xov_designer)
  xov_package(Designer libxov-graphics-designer any libs ""
    "plot views for seismology and geophysics programs - plugin for Qt Designer"
    "${about}\n.\nThis package lets Qt Designer place the views in windows.")
endif()
if(TARGET xov_python AND DEFINED XOV_PYTHON_DIR)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  math(EXPR next_python "${Python3_VERSION_MINOR} + 1")
  xov_package(Python python3-xov any python
    "python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${next_python}), python3-numpy"
    "plots of seismograms and other data of seismology for Python 3"
    "${about}\n.\nThis package holds the Python module, which draws from NumPy arrays and ObsPy\nobjects.")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${packaging}/python/postinst ${packaging}/python/prerm)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pyqt6")
endif()
# What other packages that link the library are to depend on, and that the linker's cache is to be renewed.
configure_file(${packaging}/library/shlibs.in ${PROJECT_BINARY_DIR}/packaging/shlibs @ONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packaging/shlibs ${packaging}/library/triggers)
# What the others link lies in a package that is made in the same run.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
foreach(component IN ITEMS TOOLS DESIGNER PYTHON)
  set(depends CPACK_DEBIAN_${component}_PACKAGE_DEPENDS)
  if(DEFINED ${depends})
    string(PREPEND ${depends} "${same_library}, ")
    string(REGEX REPLACE ", $" "" ${depends} "${${depends}}")
  endif()
endforeach()
include(CPack)

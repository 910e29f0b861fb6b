# Read by cpack when everything lies in folders, before it packs them: what Debian wants of a package beside the files
# that an installation has.
execute_process(COMMAND dpkg-parsechangelog -l ${CPACK_XOV_PACKAGING}/changelog -S Version
  OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT version STREQUAL "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
  message(FATAL_ERROR "packaging/debian/changelog is of ${version}, not of ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
endif()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component})
  string(TOUPPER ${component} upper)
  set(name ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(documents ${root}/usr/share/doc/${name})
  configure_file(${CPACK_XOV_PACKAGING}/copyright ${documents}/copyright COPYONLY)
  configure_file(${CPACK_XOV_PACKAGING}/changelog ${documents}/changelog.Debian COPYONLY)
  configure_file(${CPACK_XOV_CHANGES} ${documents}/changelog COPYONLY)
  file(GLOB texts ${documents}/changelog ${documents}/changelog.Debian ${root}/usr/share/man/man1/*.1)
  execute_process(COMMAND gzip -9nf ${texts} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND find ${root} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} + COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Read by cpack before it packs: what is packed is as old as the newest entry of Debian's changelog, unless
# SOURCE_DATE_EPOCH says otherwise, so that two packings of the same files are the same.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND dpkg-parsechangelog -l ${CPACK_XOV_PACKAGING}/changelog -S Timestamp
    OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} ${seconds})
endif()
# Each package has a summary of its own; the project's would stand above it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

# Run by CPack between the installation into its own folders, one a package, and the making of the packages. Debian wants
# its changelog and the man page packed, with no file name and no time of day inside, a copyright file in each package,
# and files and folders that everybody can read, whatever the umask here is.
if(NOT CPACK_PACKAGING_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "A Debian package belongs below /usr, not below ${CPACK_PACKAGING_INSTALL_PREFIX}")
endif()

foreach(component IN ITEMS TOOL LIBRARY)
  string(TOLOWER "${component}" folder)
  set(usr "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${folder}/usr")
  set(documents "${usr}/share/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}")
  file(COPY_FILE "${CPACK_VORNRUN_DEBIAN_CHANGELOG}" "${documents}/changelog")
  file(COPY_FILE "${CPACK_VORNRUN_COPYRIGHT}" "${documents}/copyright")
  file(GLOB manual "${usr}/share/man/man1/*.1")
  execute_process(COMMAND gzip -9n "${documents}/changelog" ${manual} COMMAND_ERROR_IS_FATAL ANY)
  # Readable by all; what its owner can run or enter, all can.
  execute_process(COMMAND chmod -R u=rwX,go=rX "${usr}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

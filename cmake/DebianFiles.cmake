# Run by CPack between the installation into its own folder and the making of the package. Debian wants its changelog
# and the man page packed, with no file name and no time of day inside, and folders that everybody can enter, whatever
# the umask here is.
set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share")
if(NOT CPACK_PACKAGING_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "A Debian package belongs below /usr, not below ${CPACK_PACKAGING_INSTALL_PREFIX}")
endif()

file(COPY_FILE "${CPACK_VORNRUN_DEBIAN_CHANGELOG}" "${share}/doc/vornrun/changelog")
file(CHMOD "${share}/doc/vornrun/changelog" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
execute_process(
    COMMAND gzip -9n "${share}/doc/vornrun/changelog" "${share}/man/man1/vornrun.1"
    COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD_RECURSE "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr" DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

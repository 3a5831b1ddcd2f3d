# What `cmake --install` puts where. Two components: the tool with its documents, and what a program needs that is built
# on the library (`cmake --install build/release --component library`). The documents keep their places relative to each
# other and to the examples, so that the links between them work where they are installed too.
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME tool)

install(TARGETS vornrun_executable RUNTIME)
install(FILES docs/vornrun.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES tools/simulator/vornrun.bash-completion
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME vornrun)
install(DIRECTORY schemas DESTINATION "${CMAKE_INSTALL_DATADIR}/vornrun" FILES_MATCHING PATTERN "*.xsd")
install(PROGRAMS tools/topology/render-topologies DESTINATION "${CMAKE_INSTALL_DATADIR}/vornrun")

install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
# What runs of the tool and of scripts may have left in the sources stays there. Scripts keep their run bit.
set(without_leftovers PATTERN "__pycache__" EXCLUDE PATTERN "EC_output.txt" EXCLUDE PATTERN "DD_output.txt" EXCLUDE)
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" USE_SOURCE_PERMISSIONS ${without_leftovers})
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" USE_SOURCE_PERMISSIONS ${without_leftovers}
    PATTERN "vornrun.1" EXCLUDE)

# The pages that lie there now speak of the installed program.
install(CODE "execute_process(
    COMMAND \"\${CMAKE_COMMAND}\" \"-DPAGES=\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DOCDIR}\"
        -P \"${PROJECT_SOURCE_DIR}/cmake/InstalledPages.cmake\"
    COMMAND_ERROR_IS_FATAL ANY)")

# The library: archive, headers, and the two ways to find them. The headers are those of all layers, since a question
# can be made from a formula object; the door is vornrun/api.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME library)
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/vornrun")
install(TARGETS vornrun EXPORT vornrunTargets ARCHIVE)
install(DIRECTORY vornrun DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
install(EXPORT vornrunTargets NAMESPACE vornrun:: DESTINATION "${package_folder}")
configure_package_config_file(cmake/vornrunConfig.cmake.in "${PROJECT_BINARY_DIR}/package/vornrunConfig.cmake"
    INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/vornrunConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/package/vornrunConfig.cmake"
    "${PROJECT_BINARY_DIR}/package/vornrunConfigVersion.cmake"
    cmake/FindLog4cplus.cmake
    DESTINATION "${package_folder}")
file(RELATIVE_PATH pc_to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/vornrun.pc.in "${PROJECT_BINARY_DIR}/package/vornrun.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/vornrun.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME tool)

# What `cmake --install` puts where. The documents keep their places relative to each other and to the examples, so that
# the links between them work where they are installed too.
include(GNUInstallDirs)

install(TARGETS vornrun_executable RUNTIME)
install(FILES docs/vornrun.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES tools/simulator/vornrun.bash-completion
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME vornrun)
install(DIRECTORY schemas DESTINATION "${CMAKE_INSTALL_DATADIR}/vornrun" FILES_MATCHING PATTERN "*.xsd")
install(PROGRAMS tools/topology/render-topologies DESTINATION "${CMAKE_INSTALL_DATADIR}/vornrun")

install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
# What runs of the tool and of scripts may have left in the sources stays there.
set(without_leftovers PATTERN "__pycache__" EXCLUDE PATTERN "EC_output.txt" EXCLUDE PATTERN "DD_output.txt" EXCLUDE)
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" ${without_leftovers})
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" ${without_leftovers} PATTERN "vornrun.1" EXCLUDE)

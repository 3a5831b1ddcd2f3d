# The Debian packages: what is installed, plus what Debian asks for (cmake/DebianFiles.cmake). One has the tool with its
# documents, the other the library for programs that are built on it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vornrun)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "vornrun developers <vornrun@example.org>")
set(CPACK_COMPONENTS_ALL tool library)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME vornrun)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
# The tool itself needs none of these: they run the generators of the examples and draw the topologies.
set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS "bash-completion, graphviz, python3")
# The synopsis is the project's description.
set(CPACK_COMPONENT_TOOL_DESCRIPTION "${PROJECT_DESCRIPTION}
vornrun reads a model of components with modes, clocks, continuous variables,
error events with Poisson rates and parts that come and go, and questions in
Continuous Stochastic Logic. It runs many random traces on worker threads and
answers each question with an interval for its probability.
.
The package holds the tool, its manual, schemas of the two file formats and
examples.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libvornrun-dev)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "libxerces-c-dev, liblog4cplus-dev, libboost-dev, libc6-dev")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS "vornrun, cmake, pkgconf")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "library of vornrun, a statistical model checker
Reads models of stochastic, hybrid components and questions about them, and
runs single traces or many, from C++ programs.
.
The package holds the static library, its headers, and the files by which
CMake and pkg-config find them.")

set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake")

# Read by that script, to which CPack hands on what begins with its name.
set(CPACK_VORNRUN_COPYRIGHT "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_VORNRUN_DEBIAN_CHANGELOG "${PROJECT_SOURCE_DIR}/cmake/debian-changelog")
file(STRINGS "${CPACK_VORNRUN_DEBIAN_CHANGELOG}" newest_entry LIMIT_COUNT 1)
if(NOT newest_entry MATCHES "^vornrun \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "cmake/debian-changelog has no entry for version ${PROJECT_VERSION} on top: ${newest_entry}")
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${CPACK_VORNRUN_DEBIAN_CHANGELOG}")

include(CPack)

# Debian's log4cplus ships no CMake package; this makes the imported target Log4cplus::Log4cplus. Also part of the
# installed package of the library.
if(NOT TARGET Log4cplus::Log4cplus)
  find_path(LOG4CPLUS_INCLUDE_DIR log4cplus/logger.h REQUIRED)
  find_library(LOG4CPLUS_LIBRARY log4cplus REQUIRED)
  add_library(Log4cplus::Log4cplus UNKNOWN IMPORTED)
  set_target_properties(Log4cplus::Log4cplus PROPERTIES
      IMPORTED_LOCATION "${LOG4CPLUS_LIBRARY}"
      INTERFACE_INCLUDE_DIRECTORIES "${LOG4CPLUS_INCLUDE_DIR}")
endif()

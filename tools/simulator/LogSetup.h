#pragma once
/// \file
/// The configuration of the logging library.

#include <boost/filesystem/path.hpp>
#include <cstdint>
#include <string>

/// The path of "vornrun.properties" in the first of the two directories that has one; empty when neither has.
std::string findLogConfiguration(const boost::filesystem::path& initialDirectory,
                                 const boost::filesystem::path& executableDirectory);

/// Configures logging from a file in the logging library's own format. An empty name and a file that cannot be read
/// select the basic configuration: all records from debug on go to standard output. A file that includes itself has the
/// same effect and gives a line on standard error.
void setupLogging(std::string configFile);

/// Sets the root logger's level, a number of the logging library; -1 leaves it as it is.
void applyLogLevel(std::int32_t level);

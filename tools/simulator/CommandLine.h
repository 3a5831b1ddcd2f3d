#pragma once
/// \file
/// From the words of the command line to Settings.

#include <boost/any.hpp>
#include <string>
#include <vector>

#include "tools/simulator/Settings.h"

/// Fills the settings from the words. An option that is not given leaves its field as it is. Only the log level and the
/// strategy are always set: to info and asap when not given.
/// \return true when the run goes on; false when it ends with exit status 1, after the usage was written to
///         standard output (for --help) or a line starting with "Error: " to standard error
bool parseCommandLine(int argc, char** argv, vornrun::Settings& settings);

// The option library finds these by argument-dependent lookup. They turn the word of an option into its value. Words
// are compared exactly; all are in lower case.

/// \throws boost::program_options::error for an unknown word or a second occurrence
void validate(boost::any& value, const std::vector<std::string>& tokens, LogLevelName* target, int);
/// \throws boost::program_options::error for an unknown word or a second occurrence
void validate(boost::any& value, const std::vector<std::string>& tokens, SimStrategy* target, int);

#include "tools/simulator/LogSetup.h"

#include <log4cplus/configurator.h>
#include <log4cplus/logger.h>
#include <log4cplus/loglevel.h>

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <iostream>
#include <set>
#include <vector>

#include "vornrun/Log.h"

namespace {

using boost::filesystem::path;

/// The files that a configuration includes by lines of the form "include <file>", as the library reads them. Empty for
/// a pipe or a device, which can be read only once.
std::vector<path> includedFiles(const path& file) {
    std::vector<path> result;
    boost::system::error_code unknown;
    if (!boost::filesystem::is_regular_file(file, unknown)) return result;
    std::ifstream stream(file.string());
    for (std::string line; std::getline(stream, line);) {
        boost::algorithm::trim(line);
        if (line.find('=') != std::string::npos || !boost::algorithm::starts_with(line, "include")) continue;
        line.erase(0, std::string("include").size());
        if (line.empty() || (line.front() != ' ' && line.front() != '\t')) continue;
        boost::algorithm::trim(line);
        boost::system::error_code missing;
        const path included = boost::filesystem::canonical(line, missing);
        if (!missing) result.push_back(included);
    }
    return result;
}

/// Whether the file includes itself or a file on the path to it. The library would recurse until the stack is full.
/// \param open the files on the path to this one
/// \param done files that are known not to include themselves
bool includesItself(const path& file, std::vector<path>& open, std::set<path>& done) {
    if (std::find(open.begin(), open.end(), file) != open.end()) return true;
    if (done.contains(file)) return false;
    open.push_back(file);
    const std::vector<path> included = includedFiles(file);
    const bool found = std::any_of(included.begin(), included.end(),
                                   [&](const path& next) { return includesItself(next, open, done); });
    open.pop_back();
    done.insert(file);
    return found;
}

bool includesItself(const std::string& configFile) {
    boost::system::error_code missing;
    const path file = boost::filesystem::canonical(configFile, missing);
    std::vector<path> open;
    std::set<path> done;
    return !missing && includesItself(file, open, done);
}

}  // namespace

std::string findLogConfiguration(const boost::filesystem::path& initialDirectory,
                                 const boost::filesystem::path& executableDirectory) {
    for (const boost::filesystem::path& directory : {initialDirectory, executableDirectory}) {
        const boost::filesystem::path candidate = directory / "vornrun.properties";
        // A directory that we may not search has no configuration for us. That is no fault.
        boost::system::error_code ignored;
        if (boost::filesystem::exists(candidate, ignored)) return candidate.string();
    }
    return {};
}

void setupLogging(std::string configFile) {
    if (includesItself(configFile)) {
        std::cerr << "The log configuration '" << configFile << "' includes itself and is not used\n";
        configFile.clear();
    }
    std::ifstream stream(configFile);
    // A folder opens like a file but fails at the first read. An empty file only ends there.
    if (stream) stream.peek();
    if (stream.fail()) {
        log4cplus::BasicConfigurator(log4cplus::Logger::getDefaultHierarchy()).configure();
    } else {
        stream.clear();
        log4cplus::PropertyConfigurator(stream, log4cplus::Logger::getDefaultHierarchy()).configure();
    }
    // An unknown word for the level leaves the root logger without a level, and the library then throws whenever it
    // needs one. The library has reported the fault; the root gets the level that the library starts with.
    log4cplus::Logger root = log4cplus::Logger::getRoot();
    if (root.getLogLevel() == log4cplus::NOT_SET_LOG_LEVEL) root.setLogLevel(log4cplus::DEBUG_LOG_LEVEL);
    vornrun::Log::refreshLevels();
}

void applyLogLevel(std::int32_t level) {
    if (level == -1) return;
    log4cplus::Logger::getRoot().setLogLevel(level);
    vornrun::Log::refreshLevels();
}

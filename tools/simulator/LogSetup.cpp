#include "tools/simulator/LogSetup.h"

#include <log4cplus/configurator.h>
#include <log4cplus/logger.h>
#include <log4cplus/loglevel.h>

#include <boost/filesystem/operations.hpp>
#include <fstream>

#include "vornrun/Log.h"

std::string findLogConfiguration(const boost::filesystem::path& initialDirectory,
                                 const boost::filesystem::path& executableDirectory) {
    for (const boost::filesystem::path& directory : {initialDirectory, executableDirectory}) {
        const boost::filesystem::path candidate = directory / "vornrun.properties";
        // A directory that must not be searched holds no configuration for us; it is no reason to fail.
        boost::system::error_code ignored;
        if (boost::filesystem::exists(candidate, ignored)) return candidate.string();
    }
    return {};
}

void setupLogging(std::string configFile) {
    std::ifstream stream(configFile);
    // A folder opens like a file and fails with the first read only; an empty file just ends there.
    if (stream) stream.peek();
    if (stream.fail()) {
        log4cplus::BasicConfigurator(log4cplus::Logger::getDefaultHierarchy()).configure();
    } else {
        stream.clear();
        log4cplus::PropertyConfigurator(stream, log4cplus::Logger::getDefaultHierarchy()).configure();
    }
    // A level that is no word of the library's leaves the root without any, and the library then throws wherever it is
    // asked for one. The fault has been reported; the root keeps the level that the library starts with.
    log4cplus::Logger root = log4cplus::Logger::getRoot();
    if (root.getLogLevel() == log4cplus::NOT_SET_LOG_LEVEL) root.setLogLevel(log4cplus::DEBUG_LOG_LEVEL);
    vornrun::Log::refreshLevels();
}

void applyLogLevel(std::int32_t level) {
    if (level == -1) return;
    log4cplus::Logger::getRoot().setLogLevel(level);
    vornrun::Log::refreshLevels();
}

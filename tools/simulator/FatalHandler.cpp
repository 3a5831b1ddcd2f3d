#include "tools/simulator/FatalHandler.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

std::string reasonOfTermination() {
    const std::exception_ptr exception = std::current_exception();
    if (!exception) return "terminated without an exception";
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "an exception of an unknown type";
    }
}

[[noreturn]] void reportAndAbort() noexcept {
    static std::atomic_flag reporting;
    static thread_local bool reportingHere = false;
    if (reportingHere) std::abort();  // the report itself failed
    reportingHere = true;
    // When several threads fail together, the first one reports and ends the process. The others wait.
    while (reporting.test_and_set()) pause();

    std::cout.flush();
    std::fflush(stdout);
    const std::string line = "vornrun: fatal: " + reasonOfTermination() + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::abort();
}

}  // namespace

void installFatalHandler() { std::set_terminate(reportAndAbort); }

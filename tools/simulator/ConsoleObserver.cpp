#include "tools/simulator/ConsoleObserver.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

#include "vornrun/Log.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace {

/// Other threads may still be running, so nothing that they use is destroyed. A thread may still write to the closed
/// log.
[[noreturn]] void exitWithStatusOne() {
    vornrun::Log::shutdown();
    std::cout.flush();
    std::fflush(nullptr);
    std::_Exit(1);
}

}  // namespace

void ConsoleObserver::verdictReached(bool /*nested*/) { std::cout << '.'; }

void ConsoleObserver::stepBoundHit(bool /*nested*/) { std::cout << 'b'; }

void ConsoleObserver::deadlockReached(bool /*nested*/) { std::cout << 'd'; }

void ConsoleObserver::workersEnded() { std::cout << '\n'; }

void ConsoleObserver::workerFailed(const std::exception_ptr& fault) {
    try {
        std::rethrow_exception(fault);
    } catch (const vornrun::flow_topology_exception&) {
        exitWithStatusOne();
    } catch (...) {
        std::terminate();
    }
}

std::ostream& StandardConsole::output() { return std::cout; }

std::istream& StandardConsole::input() { return std::cin; }

void StandardConsole::dumpTopologies(const vornrun::EDANetwork& network) { network.dumpTopologies(); }

ConsoleObserver& consoleObserver() {
    static ConsoleObserver observer;
    return observer;
}

StandardConsole& standardConsole() {
    static StandardConsole console;
    return console;
}

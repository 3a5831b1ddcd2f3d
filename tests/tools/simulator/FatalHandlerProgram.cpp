/// \file
/// Ends itself in the way that its argument names, with the tool's fatal handler installed. Standard output is buffered
/// here, unlike the tool's, so that the handler's own flush is seen.

#include <cstdio>
#include <exception>
#include <iostream>
#include <latch>
#include <stdexcept>
#include <string>
#include <thread>

#include "tools/simulator/FatalHandler.h"

namespace {

void throwFromTwoThreads() {
    std::latch both(2);
    const auto fail = [&both] {
        both.arrive_and_wait();
        throw std::runtime_error("one of two");
    };
    std::thread first(fail);
    std::thread second(fail);
    first.join();
    second.join();
}

void fail() { throw std::runtime_error("thrown in a destructor, say"); }

void failWhereNothingMayBeThrown() noexcept { fail(); }

void endBy(const std::string& way) {
    if (way == "main") throw std::invalid_argument("thrown in main");
    if (way == "worker") std::thread([] { throw std::logic_error("thrown in a worker"); }).join();
    if (way == "two") throwFromTwoThreads();
    if (way == "number") throw 7;
    if (way == "terminate") std::terminate();
    if (way == "noexcept") failWhereNothingMayBeThrown();
}

}  // namespace

int main(int argc, char** argv) {
    installFatalHandler();
    std::printf("by printf;");
    std::cout << "by cout;";
    if (argc > 1) endBy(argv[1]);
    return 0;
}

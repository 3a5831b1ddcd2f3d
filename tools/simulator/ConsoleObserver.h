#pragma once
/// \file
/// Shows runs on standard output, and ends the process when a worker fails.

#include "vornrun/algorithms/simulators/steps/RunObserver.h"
#include "vornrun/algorithms/simulators/strategies/Console.h"

/// Writes a progress character for each run, nested runs included: "." for a verdict, "b" at the step bound, "d" for a
/// deadlock. Ends the row of characters with a newline.
class ConsoleObserver final : public vornrun::RunObserver {
  public:
    void verdictReached(bool nested) override;
    void stepBoundHit(bool nested) override;
    void deadlockReached(bool nested) override;
    void workersEnded() override;
    /// Ends the process at once. A cycle of flows, which is in the log already, gives exit status 1. Any other fault
    /// leads to std::terminate() with the fault as the current exception.
    [[noreturn]] void workerFailed(const std::exception_ptr& fault) override;
};

/// The dialogue of the interactive strategy on standard input and output. Dumps topologies into the working directory.
class StandardConsole final : public vornrun::Console {
  public:
    std::ostream& output() override;
    std::istream& input() override;
    void dumpTopologies(const vornrun::EDANetwork& network) override;
};

/// The observer and the console of the tool. Neither has a state; both live as long as the process.
ConsoleObserver& consoleObserver();
StandardConsole& standardConsole();

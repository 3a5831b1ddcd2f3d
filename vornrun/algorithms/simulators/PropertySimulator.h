#pragma once
/// \file
/// Estimates the probability of a path formula from random traces on worker threads. Results are counted only in
/// sweeps, one of each worker, so that no worker's results run ahead of the slowest worker's.

#include <atomic>
#include <exception>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/SimulationGenerator.h"
#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class CSLFormula;
class VornComponentImplementation;

/// A thread that is joined when it goes out of scope, also on an exception.
class autothread {
  public:
    explicit autothread(std::thread&& thread) : mThread(std::move(thread)) {}
    autothread(autothread&&) = default;
    autothread& operator=(autothread&&) = delete;
    virtual ~autothread() { join(); }
    void join() {
        if (mThread.joinable()) mThread.join();
    }

  private:
    std::thread mThread;
};

class PropertySimulator {
  public:
    /// Adopts the prototype strategy, which is only ever copied by the workers. The component is not owned.
    PropertySimulator(const VornComponentImplementation* component, SimulationStrategy* strategy,
                      unsigned int threadCount);
    PropertySimulator(const PropertySimulator&) = delete;
    PropertySimulator& operator=(const PropertySimulator&) = delete;
    ~PropertySimulator();

    /// Lower and upper bound of the probability. Neither argument is owned.
    /// \throws abort_exception "Exception occurred during simulation" when a worker failed
    std::pair<double, double> checkProbability(const CSLFormula* pathFormula, QuantitativeGenerator* generator);
    /// The verdict of a qualitative generator.
    bool checkProperty(const CSLFormula* formula, QualitativeGenerator* generator);

    unsigned int threadCount() const noexcept { return mThreadCount; }

    unsigned int stepBound = 10000;
    bool allowDeadlock = true;
    bool ignoreBoundError = false;
    unsigned long seed = 0;  // 0: seeds from the random device

  private:
    void executeSimulation(const CSLFormula* formula, SimulationGenerator* generator);
    void doWork(unsigned int id, const CSLFormula* formula, SimulationGenerator* generator);
    /// Moves the one result over to those of the worker that wait to be counted.
    void addResult(unsigned int id, std::list<bool>& result);
    void fail(std::exception_ptr exception);
    /// Counts one sweep if every worker has a result waiting. \return whether the worker shall stop
    bool checkDone(SimulationGenerator* generator);

    static const Log sLogger;  // "root.propsim"
    const VornComponentImplementation* mComponent;
    std::unique_ptr<SimulationStrategy> mStrategy;
    unsigned int mThreadCount;
    std::vector<std::list<bool>> mResults;  // per worker, waiting to be counted; guarded by mMutex
    std::mutex mMutex;                      // also guards all calls of the generator
    std::atomic<bool> mAborted = false;
    std::exception_ptr mException;  // of the failing worker; guarded by mMutex, stored before mAborted
};

}  // namespace vornrun

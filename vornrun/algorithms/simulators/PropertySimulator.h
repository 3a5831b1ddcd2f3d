#pragma once
/// \file
/// Estimates the probability of a path formula from random traces on worker threads. Results are counted only in
/// sweeps, one result of each worker: the counted results of a worker are never ahead of those of the slowest one.

#include <atomic>
#include <exception>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/RunLimits.h"
#include "vornrun/algorithms/simulators/SimulationGenerator.h"
#include "vornrun/algorithms/simulators/steps/RunObserver.h"
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

/// The limits of the runs are public fields; the workers take them over when they start.
class PropertySimulator : public RunLimits {
  public:
    /// Adopts the prototype strategy; the workers only copy it. The component is not owned and outlives the object.
    /// \pre neither is null
    PropertySimulator(const VornComponentImplementation* component, SimulationStrategy* strategy,
                      unsigned int threadCount);
    PropertySimulator(const PropertySimulator&) = delete;
    PropertySimulator& operator=(const PropertySimulator&) = delete;
    ~PropertySimulator();

    /// Sees the runs of all workers, on their threads. Not owned; null for none.
    void setObserver(RunObserver* observer) noexcept { mObserver = observer; }

    /// Lower and upper bound of the probability. Neither argument is owned, and neither is null.
    /// \throws as executeSimulation()
    std::pair<double, double> checkProbability(const CSLFormula* pathFormula, QuantitativeGenerator* generator);
    /// The verdict of a qualitative generator. Arguments and exceptions as for checkProbability().
    bool checkProperty(const CSLFormula* formula, QualitativeGenerator* generator);

    /// Runs the workers until the generator is done, and waits for them. Neither argument is owned.
    /// \throws abort_exception "Exception occurred during simulation" when a run on a worker failed
    /// \throws whatever a worker has thrown outside its runs, for a model that cannot be built for instance
    void executeSimulation(const CSLFormula* formula, SimulationGenerator* generator);
    /// The work of one worker, on the calling thread: builds a simulator and runs traces until checkDone() says stop.
    /// A failed run ends it; executeSimulation() then reports the failure. \pre id < threadCount()
    /// \throws whatever happens outside of a run
    void doWork(unsigned int id, const CSLFormula* formula, SimulationGenerator* generator);
    /// Counts one sweep if every worker has a result that waits. \return whether the workers have to stop
    bool checkDone(SimulationGenerator* generator);

    unsigned int threadCount() const noexcept { return mThreadCount; }

    unsigned long seed = 0;  // 0: seeds from the random device

  private:
    /// doWork() on the worker's own thread; nothing leaves it.
    void runWorker(unsigned int id, const CSLFormula* formula, SimulationGenerator* generator);
    /// Moves the one result over to those of the worker that wait to be counted.
    void addResult(unsigned int id, std::list<bool>& result);
    void fail(std::exception_ptr exception);
    void failOutsideRuns(const std::exception_ptr& fault);

    static const Log sLogger;  // "root.propsim"
    const VornComponentImplementation* mComponent;
    std::unique_ptr<SimulationStrategy> mStrategy;
    unsigned int mThreadCount;
    std::vector<std::list<bool>> mResults;  // per worker, waiting to be counted; guarded by mMutex
    std::mutex mMutex;                      // also guards all calls of the generator
    std::atomic<bool> mAborted = false;
    // Of the failing worker, in a run or outside its runs. Guarded by mMutex, stored before mAborted.
    std::exception_ptr mException;
    std::exception_ptr mFault;
    RunObserver* mObserver = nullptr;
};

}  // namespace vornrun

#include "vornrun/algorithms/simulators/PropertySimulator.h"

#include <algorithm>
#include <cassert>

#include "vornrun/algorithms/simulators/Simulator.h"

namespace vornrun {

const Log PropertySimulator::sLogger("root.propsim");

PropertySimulator::PropertySimulator(const VornComponentImplementation* component, SimulationStrategy* strategy,
                                     unsigned int threadCount)
    : mComponent(component), mStrategy(strategy), mThreadCount(threadCount), mResults(threadCount) {
    assert(component != nullptr && strategy != nullptr);
}

PropertySimulator::~PropertySimulator() = default;

std::pair<double, double> PropertySimulator::checkProbability(const CSLFormula* pathFormula,
                                                              QuantitativeGenerator* generator) {
    executeSimulation(pathFormula, generator);
    return generator->getRatio();
}

bool PropertySimulator::checkProperty(const CSLFormula* formula, QualitativeGenerator* generator) {
    executeSimulation(formula, generator);
    return generator->getResult();
}

void PropertySimulator::executeSimulation(const CSLFormula* formula, SimulationGenerator* generator) {
    VORNRUN_LOG(sLogger, Info, "Starting simulations");
    mAborted = false;
    {
        std::vector<autothread> workers;
        workers.reserve(mThreadCount);
        for (unsigned int id = 0; id < mThreadCount; ++id)
            workers.emplace_back(std::thread(&PropertySimulator::runWorker, this, id, formula, generator));
        for (autothread& worker : workers) worker.join();
        if (mObserver != nullptr) mObserver->workersEnded();
    }
    VORNRUN_LOG(sLogger, Info, "Simulations ended");
    // What did not make up a sweep is never counted.
    for (std::list<bool>& results : mResults) results.clear();
    if (!mAborted.exchange(false)) return;
    VORNRUN_LOG(sLogger, Error, "Simulations were aborted");
    if (mFault != nullptr) std::rethrow_exception(std::exchange(mFault, nullptr));
    if (mException != nullptr) throw abort_exception("Exception occurred during simulation");
}

void PropertySimulator::runWorker(unsigned int id, const CSLFormula* formula, SimulationGenerator* generator) {
    try {
        doWork(id, formula, generator);
    } catch (...) {
        const std::exception_ptr fault = std::current_exception();
        if (mObserver != nullptr) mObserver->workerFailed(fault);
        failOutsideRuns(fault);
    }
}

void PropertySimulator::doWork(unsigned int id, const CSLFormula* formula, SimulationGenerator* generator) {
    assert(id < mThreadCount && formula != nullptr && generator != nullptr);
    Simulator simulator(mComponent, mStrategy.get());
    simulator.strategy()->getRandomGenerator()->reseed(seed != 0 ? seed + id : 0);
    static_cast<RunLimits&>(simulator) = *this;
    simulator.setObserver(mObserver);
    simulator.setProperty(formula);
    VORNRUN_LOG(sLogger, Info, "Starting simulation thread " << id);
    do {
        std::list<bool> result;
        try {
            result.push_back(simulator.performRun(simulator.property()));
        } catch (const abort_exception& abort) {
            VORNRUN_LOG(sLogger, Info, "Simulation thread " << id << " aborted: " << abort.what());
            return fail(std::make_exception_ptr(abort));
        } catch (const std::exception& exception) {
            VORNRUN_LOG(sLogger, Info, "Simulation thread " << id << " aborted: Unhandled exception");
            // The author of the model has no other way to learn what is wrong with it.
            VORNRUN_LOG(sLogger, Error, "Simulation thread " << id << ": " << exception.what());
            return fail(std::current_exception());
        } catch (...) {
            VORNRUN_LOG(sLogger, Info, "Simulation thread " << id << " aborted: Unhandled exception");
            return fail(std::current_exception());
        }
        addResult(id, result);
    } while (!checkDone(generator));
}

void PropertySimulator::addResult(unsigned int id, std::list<bool>& result) {
    const std::lock_guard lock(mMutex);
    mResults[id].splice(mResults[id].end(), result);
}

// The exception is stored before the flag is set, so that it is there for everybody who sees the flag.
void PropertySimulator::fail(std::exception_ptr exception) {
    {
        const std::lock_guard lock(mMutex);
        mException = std::move(exception);
    }
    mAborted = true;
}

void PropertySimulator::failOutsideRuns(const std::exception_ptr& fault) {
    {
        const std::lock_guard lock(mMutex);
        mFault = fault;
    }
    mAborted = true;
}

bool PropertySimulator::checkDone(SimulationGenerator* generator) {
    if (mAborted) return true;
    const std::lock_guard lock(mMutex);
    const bool sweepComplete =
        std::none_of(mResults.begin(), mResults.end(), [](const std::list<bool>& results) { return results.empty(); });
    if (sweepComplete) {
        for (std::list<bool>& results : mResults) {
            generator->addResult(results.front());
            results.pop_front();
        }
    }
    return generator->done();
}

}  // namespace vornrun

#include "vornrun/algorithms/simulators/strategies/MaxTimeProgressStrat.h"

#include <utility>

namespace vornrun {

SimulationStep* MaxTimeProgressStrat::simulateStep() {
    const Time delay = network().invariantsRemainValidFor().upper;
    if (delay > getFirstSample().first) return useFirstSample();
    if (delay > 0) network().takeTimedTransition(delay);

    if (!collectCandidates()) {
        if (delay > 0) return new TimeSimulationStep(delay);
        throw deadlock_exception("No possible simulation step found: Deadlock");
    }
    // The delay has passed already, and the sample fires after its own delay. The step reports only the sample's delay.
    if (mCandidates.empty()) return useFirstSample();
    QualifiedTransitions chosen = fire(mCandidates[pick(mCandidates.size())]);
    if (delay > 0) return new CombinedSimulationStep(std::move(chosen), delay);
    return new DiscreteSimulationStep(std::move(chosen));
}

}  // namespace vornrun

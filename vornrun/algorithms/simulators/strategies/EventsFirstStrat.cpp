#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"

namespace vornrun {

SimulationStep* EventsFirstStrat::simulateStep() {
    VORNRUN_LOG(sLogger, Debug, "Trying to find active communication transitions (closed world)");
    collectCandidates();
    if (!mCandidates.empty()) {
        VORNRUN_LOG(sLogger, Debug, "Found " << mCandidates.size() << " enabled transitions");
        return new DiscreteSimulationStep(fire(mCandidates[pick(mCandidates.size())]));
    }
    VORNRUN_LOG(sLogger, Debug, "No active event transition found");
    VORNRUN_LOG(sLogger, Debug, "Trying to find timed transition");
    const TimeInterval allowed = network().invariantsRemainValidFor();
    if (allowed.empty()) {
        VORNRUN_LOG(sLogger, Debug, "Empty time interval and no active events -> Deadlock");
        throw deadlock_exception("No possible simulation step found");
    }
    VORNRUN_LOG(sLogger, Debug, "Found time interval: " << allowed);
    if (allowed.upper > getFirstSample().first) return useFirstSample();
    network().takeTimedTransition(allowed.upper);
    return new TimeSimulationStep(allowed.upper);
}

}  // namespace vornrun

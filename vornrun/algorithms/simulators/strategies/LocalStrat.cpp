#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"

#include <algorithm>

namespace vornrun {

SimulationStep* LocalStrat::simulateStep() {
    const bool anyActive = !network().currentActiveTransitions().empty();
    const TimeInterval allowed = network().invariantsRemainValidFor();
    if (!anyActive) failWithoutActiveTransitions(allowed);

    Time delay = TimeInterval::INF_TIME;
    // An unbounded proposal overflows to infinity, so that the bounded ones decide.
    for (const EDA* eda : network().activeEDAs())
        delay = std::min(delay, sampleFromInterval(eda->invariantsRemainValidFor()));
    if (delay > getFirstSample().first) return useFirstSample();
    if (delay > 0) network().takeTimedTransition(delay);

    if (!collectCandidates() && allowed.upper == 0.0)
        throw deadlock_exception("No possible simulation step found: Deadlock");
    if (mCandidates.empty()) return new TimeSimulationStep(delay);
    return new CombinedSimulationStep(fire(mCandidates[pick(mCandidates.size())]), delay);
}

}  // namespace vornrun

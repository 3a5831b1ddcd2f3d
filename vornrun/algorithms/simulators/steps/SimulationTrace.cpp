#include "vornrun/algorithms/simulators/steps/SimulationTrace.h"

#include <cassert>

#include "vornrun/algorithms/simulators/steps/infix_ostream_iterator.h"

namespace vornrun {

void SimulationTrace::addStep(SimulationStep* step) {
    assert(step != nullptr);
    std::unique_ptr<SimulationStep> owned(step);
    if (step->letsTimePass()) mTime += step->time();
    mSteps.push_back(std::move(owned));
}

void SimulationTrace::clear() {
    mSteps.clear();
    mTime = 0.0;
}

std::ostream& operator<<(std::ostream& stream, const SimulationTrace& trace) {
    infix_ostream_iterator<SimulationStep> lines(stream, "\n");
    for (const auto& step : trace.steps()) *lines++ = *step;
    return stream;
}

}  // namespace vornrun

#include "vornrun/algorithms/simulators/steps/SimulationStep.h"

#include <ostream>
#include <stdexcept>
#include <utility>

#include "vornrun/algorithms/simulators/steps/StepMemory.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

void* SimulationStep::operator new(std::size_t size) { return stepmemory::allocate(size); }

void SimulationStep::operator delete(void* step, std::size_t size) noexcept { stepmemory::release(step, size); }

std::ostream& operator<<(std::ostream& stream, const SimulationStep& step) { return step.print(stream); }

DiscreteSimulationStep::DiscreteSimulationStep(QualifiedTransitions transitions)
    : mTransitions(std::move(transitions)) {
    if (mTransitions.empty()) throw std::invalid_argument("A discrete step needs at least one transition");
}

DiscreteSimulationStep::~DiscreteSimulationStep() { stepmemory::giveBack(std::move(mTransitions)); }

void DiscreteSimulationStep::apply(EDANetwork* network) const { network->takeEventTransition(mTransitions); }

std::ostream& DiscreteSimulationStep::print(std::ostream& stream) const {
    const auto& [eda, transition] = mTransitions.front();
    return stream << eda->identifier() << " : " << *transition->transition();
}

void TimeSimulationStep::apply(EDANetwork* network) const {
    if (mDelay > 0.0) network->takeTimedTransition(mDelay);
}

std::ostream& TimeSimulationStep::print(std::ostream& stream) const { return stream << "Delay: " << mDelay; }

CombinedSimulationStep::CombinedSimulationStep(QualifiedTransitions transitions, Time delay)
    : DiscreteSimulationStep(std::move(transitions)), TimeSimulationStep(delay) {}

void CombinedSimulationStep::apply(EDANetwork* network) const {
    TimeSimulationStep::apply(network);
    DiscreteSimulationStep::apply(network);
}

std::ostream& CombinedSimulationStep::print(std::ostream& stream) const {
    TimeSimulationStep::print(stream) << "\n";
    return DiscreteSimulationStep::print(stream);
}

}  // namespace vornrun

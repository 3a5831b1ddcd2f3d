#include "vornrun/api/StepReport.h"

#include <string_view>
#include <utility>

#include "vornrun/algorithms/simulators/steps/SimulationStep.h"
#include "vornrun/api/ModelParts.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun::api {

StepReport::StepReport(const EDANetwork& network, const GlobalValuation& valuation) : mValuation(valuation) {
    forEachValue(network, [this](std::size_t, const RealisedPart& part, ValueRef slot) {
        mSlots.emplace_back(part.type(), slot);
    });
}

void StepReport::start(Observer& observer) {
    mValues.clear();
    for (const TypedValueRef& slot : mSlots) mValues.push_back(valueOf(mValuation, slot));
    observer.start(mValues);
}

void StepReport::step(Observer& observer, unsigned long number, Time time, const SimulationStep& step) {
    collectTransitions(step);
    collectChanges();
    const auto* discrete = dynamic_cast<const DiscreteSimulationStep*>(&step);
    const std::string_view event = discrete == nullptr ? std::string_view() : discrete->event();
    observer.step({number, time, step.time(), event, mTransitions, mChanges});
}

void StepReport::collectTransitions(const SimulationStep& step) {
    mTransitions.clear();
    const auto* discrete = dynamic_cast<const DiscreteSimulationStep*>(&step);
    if (discrete == nullptr) return;
    for (const auto& [eda, transition] : discrete->transitions())
        mTransitions.push_back({eda->index(), transition->source()->name(), transition->target()->name()});
}

void StepReport::collectChanges() {
    mChanges.clear();
    for (std::size_t i = 0; i < mSlots.size(); ++i) {
        Value now = valueOf(mValuation, mSlots[i]);
        if (now == mValues[i]) continue;
        mChanges.push_back({i, std::exchange(mValues[i], now), std::move(now)});
    }
}

}  // namespace vornrun::api

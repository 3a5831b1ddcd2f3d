#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"

#include <algorithm>
#include <array>

#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"
#include "vornrun/algorithms/simulators/strategies/InputStrat.h"
#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"
#include "vornrun/algorithms/simulators/strategies/MaxTimeProgressStrat.h"
#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"

namespace vornrun {

namespace {

template <class Strategy>
std::unique_ptr<SimulationStrategy> make() {
    return std::make_unique<Strategy>();
}

constexpr std::array<StrategyEntry, 6> TABLE{{
    {0, "asap", "AsapStrat", &make<AsapStrat>},
    {1, "event", "EventsFirstStrat", &make<EventsFirstStrat>},
    {2, "input", "InputStrat", &make<InputStrat>},
    {3, "local", "LocalStrat", &make<LocalStrat>},
    {4, "maxtime", "MaxTimeProgressStrat", &make<MaxTimeProgressStrat>},
    {5, "progressive", "ProgressiveStrat", &make<ProgressiveStrat>},
}};

}  // namespace

std::span<const StrategyEntry> strategyTable() noexcept { return TABLE; }

const StrategyEntry* findStrategy(std::string_view word) noexcept {
    const auto found =
        std::find_if(TABLE.begin(), TABLE.end(), [word](const StrategyEntry& entry) { return entry.word == word; });
    return found == TABLE.end() ? nullptr : &*found;
}

std::unique_ptr<SimulationStrategy> makeStrategy(int number) {
    const auto found = std::find_if(TABLE.begin(), TABLE.end(),
                                    [number](const StrategyEntry& entry) { return entry.number == number; });
    return found == TABLE.end() ? make<AsapStrat>() : found->make();
}

std::unique_ptr<SimulationStrategy> makeStrategy(std::string_view word) {
    const StrategyEntry* entry = findStrategy(word);
    return entry == nullptr ? nullptr : entry->make();
}

}  // namespace vornrun

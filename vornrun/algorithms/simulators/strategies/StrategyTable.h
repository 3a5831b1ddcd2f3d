#pragma once
/// \file
/// All strategies by number, word and name. Every other list of strategies is made from this table or compared with it.

#include <memory>
#include <span>
#include <string_view>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

struct StrategyEntry {
    int number;
    std::string_view word;  // by which the user chooses it
    std::string_view name;  // SimulationStrategy::name()
    std::unique_ptr<SimulationStrategy> (*make)();
};

/// The strategies in order of their numbers, which start at 0.
std::span<const StrategyEntry> strategyTable() noexcept;
/// Null for a word that is in no entry.
const StrategyEntry* findStrategy(std::string_view word) noexcept;

/// A new strategy of that number; AsapStrat for a number that is in no entry.
std::unique_ptr<SimulationStrategy> makeStrategy(int number);
/// A new strategy of that word; null for a word that is in no entry.
std::unique_ptr<SimulationStrategy> makeStrategy(std::string_view word);

}  // namespace vornrun

#pragma once
/// \file
/// A model in a Simulator, under a strategy whose draws are scripted.
///
///     DrivenModel driven(model, AsapStrat());
///     driven.script({integerDraw(1)});             // exactly these draws, in this order
///     EXPECT_EQ(driven.step(), "2.5: main.a: idle -> busy");

#include <memory>
#include <string>
#include <vector>

#include "tests/support/ModelWriter.h"
#include "tests/support/ScriptedRandomGenerator.h"
#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {

class DrivenModel {
  public:
    /// \pre the model has exactly one root candidate
    DrivenModel(const ModelWriter& model, const SimulationStrategy& strategy);

    const VornComponentImplementation* root() const noexcept { return mRoot; }
    Simulator& simulator() noexcept { return mSimulator; }
    EDANetwork& network() noexcept { return *mSimulator.network(); }
    SimulationStrategy& strategy() noexcept { return *mSimulator.strategy(); }
    template <class Strategy>
    Strategy& strategyAs() {
        return dynamic_cast<Strategy&>(strategy());
    }

    /// The strategy draws these from now on. Draws left over from an earlier script fail the test.
    const ScriptedRandomGenerator& script(const std::vector<ScriptedDraw>& draws);

    /// The automaton with that full identifier. \throws std::out_of_range without one
    EDA* eda(const std::string& identifier);
    /// The name of the automaton's mode.
    std::string mode(const std::string& identifier = "main");
    /// The data of the automaton on one line.
    std::string data(const std::string& identifier = "main") { return eda(identifier)->valuationStr(); }

    /// Takes a step of the strategy and gives it as a text: its delay and its transitions.
    std::string step();

  private:
    std::unique_ptr<VornSpecification> mSpecification;
    const VornComponentImplementation* mRoot;
    Simulator mSimulator;
};

/// "0: main: idle -> busy", "2.5: main.a: idle -> busy, main.b: up -> down"; the delay alone when nothing is taken.
std::string tell(const SimulationStep& step);

}  // namespace vornrun::test

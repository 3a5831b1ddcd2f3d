#pragma once
/// \file
/// A model brought to life: sent through the real parser, realised, with its network and a strategy in a Simulator,
/// and drawn for by a script.
///
///     RunningModel running(model, AsapStrat());
///     running.script({integerDraw(1)});             // exactly these draws, in this order
///     EXPECT_EQ(running.step(), "2.5: main.a: idle -> busy");

#include <initializer_list>
#include <memory>
#include <string>

#include "tests/support/ModelWriter.h"
#include "tests/support/ScriptedRandomGenerator.h"
#include "vornrun/algorithms/simulators/Simulator.h"

namespace vornrun::test {

class RunningModel {
  public:
    /// \pre the model has exactly one root candidate
    RunningModel(const ModelWriter& model, const SimulationStrategy& strategy);
    ~RunningModel();  // the class of the specification is incomplete here

    const VornComponentImplementation* root() const noexcept { return mRoot; }
    Simulator& simulator() noexcept { return mSimulator; }
    EDANetwork& network() noexcept { return *mSimulator.network(); }
    SimulationStrategy& strategy() noexcept { return *mSimulator.strategy(); }
    template <class Strategy>
    Strategy& strategyAs() {
        return dynamic_cast<Strategy&>(strategy());
    }

    /// The strategy draws these from now on; whatever of an earlier script is left over fails the test.
    ScriptedRandomGenerator& script(std::initializer_list<ScriptedDraw> draws);

    /// The automaton with that full identifier. \throws std::out_of_range without one
    EDA* eda(const std::string& identifier);
    /// The name of the automaton's mode.
    std::string mode(const std::string& identifier = "main");
    /// The data of the automaton on one line.
    std::string data(const std::string& identifier = "main") { return eda(identifier)->valuationStr(); }

    /// Takes a step of the strategy and tells it: its delay and its transitions.
    std::string step();

  private:
    std::unique_ptr<VornSpecification> mSpecification;
    const VornComponentImplementation* mRoot;
    Simulator mSimulator;
};

/// "0: main: idle -> busy", "2.5: main.a: idle -> busy, main.b: up -> down"; the delay alone when nothing is taken.
std::string tell(const SimulationStep& step);

}  // namespace vornrun::test

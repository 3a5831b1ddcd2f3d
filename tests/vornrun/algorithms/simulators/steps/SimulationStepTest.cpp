#include "vornrun/algorithms/simulators/steps/SimulationStep.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <stdexcept>

#include "tests/support/DrivenModel.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"

namespace vornrun::test {

namespace {

/// A lamp whose clock tells when it was switched, with a second lamp to switch at the same time.
class SimulationStepTest : public testing::Test {
  protected:
    static ModelWriter lamps() {
        const Var x = var("x", Type::Clock);
        ModelWriter model;
        model.type("Lamp").outEvent("click", nonblocking);
        model.implementation("Lamp.i").data(x).mode("off").mode("on").transition("off", "on", on("click"), set(x, 0.0));
        model.implementation("Hall.i").subcomponent("a", "Lamp.i").subcomponent("b", "Lamp.i");
        return model;
    }
    QualifiedTransition switchOf(const std::string& lamp) {
        EDA* eda = driven.eda("main." + lamp);
        return {eda, eda->component()->transitions().front().get()};
    }
    std::string declarationOf(const std::string& lamp) {
        std::ostringstream text;
        text << *switchOf(lamp).second->transition();
        return text.str();
    }
    static std::string printed(const SimulationStep& step) {
        std::ostringstream text;
        text << step;
        return text.str();
    }

    DrivenModel driven{lamps(), AsapStrat()};
};

}  // namespace

TEST_F(SimulationStepTest, ADiscreteStepTakesNoTimeAndFiresItsTransitions) {
    const DiscreteSimulationStep step({switchOf("a"), switchOf("b")});
    EXPECT_EQ(step.time(), 0.0);
    step.apply(&driven.network());
    EXPECT_EQ(driven.mode("main.a"), "on");
    EXPECT_EQ(driven.mode("main.b"), "on");
}

TEST_F(SimulationStepTest, ADiscreteStepKeepsTheLocalNameOfTheFirstTrigger) {
    EXPECT_EQ(DiscreteSimulationStep({switchOf("a"), switchOf("b")}).event(), "click");
}

TEST_F(SimulationStepTest, ADiscreteStepPrintsOnlyTheFirstOfItsTransitions) {
    EXPECT_EQ(printed(DiscreteSimulationStep({switchOf("b"), switchOf("a")})), "main.b : " + declarationOf("b"));
}

TEST_F(SimulationStepTest, ADiscreteStepWithoutTransitionsIsRefused) {
    EXPECT_THROW(DiscreteSimulationStep({}), std::invalid_argument);
}

TEST_F(SimulationStepTest, ATimeStepLetsItsDelayPass) {
    const TimeSimulationStep step(2.5);
    EXPECT_EQ(step.time(), 2.5);
    step.apply(&driven.network());
    EXPECT_EQ(driven.data("main.a"), "x = 2.5");
    EXPECT_EQ(driven.mode("main.a"), "off");
    EXPECT_EQ(printed(step), "Delay: 2.5");
}

TEST_F(SimulationStepTest, ATimeStepOfZeroDoesNothing) {
    TimeSimulationStep(0.0).apply(&driven.network());
    EXPECT_EQ(driven.data("main.a"), "x = 0");
}

TEST_F(SimulationStepTest, ATimeStepBelowZeroDoesNothing) {
    TimeSimulationStep(-1.0).apply(&driven.network());
    EXPECT_EQ(driven.data("main.a"), "x = 0");
}

TEST_F(SimulationStepTest, ACombinedStepLetsTimePassBeforeItFires) {
    const CombinedSimulationStep step({switchOf("a")}, 2.5);
    EXPECT_EQ(step.time(), 2.5);
    step.apply(&driven.network());
    EXPECT_EQ(driven.mode("main.a"), "on");
    EXPECT_EQ(driven.data("main.a"), "x = 0") << "the effect resets the clock after the delay";
    EXPECT_EQ(driven.data("main.b"), "x = 2.5");
}

TEST_F(SimulationStepTest, ACombinedStepOfZeroOnlyFiresButPrintsItsDelay) {
    const CombinedSimulationStep step({switchOf("a")}, 0.0);
    step.apply(&driven.network());
    EXPECT_EQ(driven.mode("main.a"), "on");
    EXPECT_EQ(driven.data("main.b"), "x = 0");
    EXPECT_EQ(printed(step), "Delay: 0\nmain.a : " + declarationOf("a"));
}

TEST_F(SimulationStepTest, NumbersAreWrittenInTheFormatOfTheStream) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(3) << static_cast<const SimulationStep&>(TimeSimulationStep(0.5));
    EXPECT_EQ(text.str(), "Delay: 0.500");
}

TEST_F(SimulationStepTest, ACombinedStepIsOneStepThatCountsAsTimeStepToo) {
    const CombinedSimulationStep step({switchOf("a")}, 1.0);
    const SimulationStep& base = step;
    EXPECT_NE(dynamic_cast<const TimeSimulationStep*>(&base), nullptr);
    EXPECT_NE(dynamic_cast<const DiscreteSimulationStep*>(&base), nullptr);
}

}  // namespace vornrun::test

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/vornrun/algorithms/simulators/strategies/InputStratTesting.h"
#include "vornrun/algorithms/simulators/strategies/InputStrat.h"

namespace vornrun::test {

namespace {

/// A plant whose event is heard by ears with one, three and two ways to react.
ModelWriter orchestra() {
    ModelWriter model;
    model.type("Ear").inEvent("go");
    model.implementation("Ear.one").mode("a").mode("b").transition("a", "b", on("go"));
    model.implementation("Ear.two")
        .mode("a")
        .mode("b")
        .mode("c")
        .transition("a", "b", on("go"))
        .transition("a", "c", on("go"));
    model.implementation("Ear.three")
        .mode("a")
        .mode("b")
        .mode("c")
        .mode("d")
        .transition("a", "b", on("go"))
        .transition("a", "c", on("go"))
        .transition("a", "d", on("go"));
    model.type("Plant").outEvent("go");
    model.implementation("Plant.i")
        .mode("idle")
        .mode("busy")
        .transition("idle", "busy", on("go"))
        .subcomponent("p", "Ear.one")
        .subcomponent("q", "Ear.three")
        .subcomponent("r", "Ear.two")
        .connectEvent("go", "p.go")
        .connectEvent("go", "q.go")
        .connectEvent("go", "r.go");
    return model;
}

struct Selection {
    const char* name;
    const char* line;  // after "d 0"
    std::vector<ScriptedDraw> draws;
    const char* taken;
};

class InputStratAlternatives : public InputStratTesting {};

class InputStratSelection : public InputStratTesting, public testing::WithParamInterface<Selection> {};

}  // namespace

TEST_P(InputStratSelection, TakesWhatTheLineSays) {
    DrivenModel driven(orchestra(), InputStrat());
    driven.script(GetParam().draws);
    EXPECT_EQ(stepWith(driven, std::string("d 0\n") + GetParam().line).first,
              std::string("0: main: idle -> busy, main.p: a -> b, ") + GetParam().taken);
}

// The automata of the event are main and p, which have no choice, q with three alternatives and r with two.
INSTANTIATE_TEST_SUITE_P(
    Lines, InputStratSelection,
    testing::Values(
        Selection{"TokensCountAllAutomata", "0,0,1,1\n", {}, "main.q: a -> c, main.r: a -> c"},
        Selection{"BlanksSeparateToo", "0 0 2 0\n", {}, "main.q: a -> d, main.r: a -> b"},
        Selection{"AdjacentSeparatorsAreOne", "0, ,,0  ,  2, 0\n", {}, "main.q: a -> d, main.r: a -> b"},
        Selection{"ALetterLeavesItsPositionToChance",
                  "1, 1 r  1\n",
                  {integerDraw(2, 0, 2)},
                  "main.q: a -> d, main.r: a -> c"},
        Selection{
            "ALetterALetsTheNextNumberWork", "0,0,a,1\n", {integerDraw(1, 0, 2)}, "main.q: a -> c, main.r: a -> c"},
        Selection{"ALeadingSeparatorMakesAnEmptyFirstToken", ",0,1,1\n", {}, "main.q: a -> c, main.r: a -> c"},
        Selection{"ALeadingBlankMakesAnEmptyFirstToken", "  0 1 1\n", {}, "main.q: a -> c, main.r: a -> c"},
        Selection{"ANumberWithALetterBehindCounts", "0,0,2x,1b\n", {}, "main.q: a -> d, main.r: a -> c"},
        Selection{"ANumberWithASignCounts", "0,0,+2,-0\n", {}, "main.q: a -> d, main.r: a -> b"},
        Selection{"AnEmptyLineIsAllChance",
                  "\n",
                  {integerDraw(1, 0, 2), integerDraw(1, 0, 1)},
                  "main.q: a -> c, main.r: a -> c"},
        Selection{"TheEndOfInputIsAllChance",
                  "",
                  {integerDraw(1, 0, 2), integerDraw(0, 0, 1)},
                  "main.q: a -> c, main.r: a -> b"},
        Selection{"ALastLineWithoutLineEndCounts", "0,0,2,1", {}, "main.q: a -> d, main.r: a -> c"},
        Selection{"AMissingTokenIsChance", "0,0,1\n", {integerDraw(0, 0, 1)}, "main.q: a -> c, main.r: a -> b"},
        Selection{"ANumberOutOfRangeIsChance",
                  "0,0,3,-1\n",
                  {integerDraw(0, 0, 2), integerDraw(1, 0, 1)},
                  "main.q: a -> b, main.r: a -> c"},
        Selection{"ANumberBeyond32BitsIsChance",
                  "0,0,4294967297,99999999999999999999\n",
                  {integerDraw(0, 0, 2), integerDraw(1, 0, 1)},
                  "main.q: a -> b, main.r: a -> c"}),
    [](const auto& selection) { return std::string(selection.param.name); });

TEST_F(InputStratAlternatives, AlternativesAreListedWithHelp) {
    DrivenModel driven(orchestra(), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "d 0\n0,0,0,0\n");
    EXPECT_EQ(step, "0: main: idle -> busy, main.p: a -> b, main.q: a -> b, main.r: a -> b");
    EXPECT_EQ(output, "Current enabled transitions are:\n0: main : " + declaration(driven, 0) +
                          "\n    active in: [0, INFTY]\nFuture transitions are:\nIndex in: [0, 0]\n" +
                          prompt("[0, INFTY]") + "Choose non-deterministic transitions:\n main.q\n  " +
                          declaration(driven, 0, "main.q") + "\n  " + declaration(driven, 1, "main.q") + "\n  " +
                          declaration(driven, 2, "main.q") + "\n main.r\n  " + declaration(driven, 0, "main.r") +
                          "\n  " + declaration(driven, 1, "main.r") + "\n\n" + SELECTION_HELP);
}

TEST_F(InputStratAlternatives, AReactivationIsChosenInTheSameWay) {
    ModelWriter model;
    model.implementation("Pump.i").mode("a").mode("b").mode("c").reactivation("a", "b").reactivation("a", "c");
    model.implementation("Plant.i")
        .mode("off")
        .mode("on")
        .transition("off", "on")
        .subcomponent("pump", "Pump.i", inModes("on"));
    DrivenModel driven(model, InputStrat());
    driven.script({});
    EXPECT_EQ(stepWith(driven, "d 0\n").first, "0: main: off -> on");
    const auto [step, output] = stepWith(driven, "1\n");
    EXPECT_EQ(step, "0: main.pump: a -> c");
    const auto& ways = driven.eda("main.pump")->component()->reactivationTransitions();
    std::ostringstream expected;
    expected << "Choose non-deterministic transitions:\n main.pump\n  " << *ways[0]->transition() << "\n  "
             << *ways[1]->transition() << "\n\n"
             << SELECTION_HELP;
    EXPECT_EQ(output, expected.str());
}

}  // namespace vornrun::test

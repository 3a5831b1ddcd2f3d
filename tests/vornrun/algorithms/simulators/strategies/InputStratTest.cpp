#include "vornrun/algorithms/simulators/strategies/InputStrat.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/vornrun/algorithms/simulators/VerdictFormula.h"
#include "tests/vornrun/algorithms/simulators/strategies/InputStratTesting.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

/// What can happen now, later, by itself and never.
ModelWriter job(const Expr& bound) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("idle", invariant(bound))
        .mode("busy")
        .mode("done")
        .mode("dead", ModeKind::Error)
        .transition("idle", "busy")
        .transition("idle", "done", when(x >= 2.0))
        .transition("idle", "dead", on("fail"))
        .transition("idle", "idle", when(x <= -1.0));
    return model;
}

/// Nothing is enabled before 2.
ModelWriter lateJob(const Expr& bound) {
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("idle", invariant(bound))
        .mode("done")
        .transition("idle", "done", when(x >= 2.0));
    return model;
}

class InputStratTest : public InputStratTesting {
  protected:
    /// The listing at the start of a step of job() at time 0.
    static std::string listing(DrivenModel& driven) {
        return "Current enabled transitions are:\n0: main : " + declaration(driven, 0) +
               "\n    active in: [0, INFTY]\n1: main : " + declaration(driven, 2) +
               "\n    probabilistic: [0, INFTY]\nFuture transitions are:\nmain : " + declaration(driven, 1) +
               "\n    active in: [2, INFTY]\nmain : " + declaration(driven, 3) + "\n    active in: [-]\n";
    }
    /// The listing of lateJob() at time 0.
    static std::string lateListing(DrivenModel& driven) {
        return "Current enabled transitions are:\nFuture transitions are:\nmain : " + declaration(driven, 0) +
               "\n    active in: [2, INFTY]\n";
    }
    static std::string indexPrompt(const std::string& allowed) { return "Index in: [0, 1]\n" + prompt(allowed); }
};

}  // namespace

TEST_F(InputStratTest, TellsItsNameAndClonesItself) {
    const std::unique_ptr<SimulationStrategy> copy(InputStrat().clone());
    EXPECT_EQ(copy->name(), "InputStrat");
}

// ---- Discrete steps

TEST_F(InputStratTest, TheDialogueOfADiscreteStepListsNowAndLaterAndPrompts) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(0.0)});
    const auto [step, output] = stepWith(driven, "d 0\n");
    EXPECT_EQ(step, "0: main: idle -> busy");
    EXPECT_EQ(output, listing(driven) + indexPrompt("[0, 3]") + "\n");
}

TEST_F(InputStratTest, AStochasticTransitionIsTakenLikeAnyOther) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    EXPECT_EQ(stepWith(driven, "d 1\n").first, "0: main: idle -> dead");
}

TEST_F(InputStratTest, ABadIndexTakesTheFirstTransition) {
    for (const std::string command : {"d 2", "d 99", "d", "d x", "d -1", "d 4294967296", "d 4294967295", "d .5"}) {
        DrivenModel driven(job(x <= 3.0), InputStrat());
        driven.script({exponentialDraw(9.0)});
        const auto [step, output] = stepWith(driven, command + "\n");
        EXPECT_EQ(step, "0: main: idle -> busy") << command;
        EXPECT_EQ(output, listing(driven) + indexPrompt("[0, 3]") + "Bad index, assuming 0\n\n") << command;
    }
}

TEST_F(InputStratTest, ANumberIsReadAsFarAsItGoes) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    EXPECT_EQ(stepWith(driven, "  d \t 1st please\n").first, "0: main: idle -> dead");
}

// ---- Timed steps

TEST_F(InputStratTest, ATimedStepLetsTheDelayPass) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "t 1.25\n");
    EXPECT_EQ(step, "1.25");
    EXPECT_EQ(driven.data(), "x = 1.25");
    EXPECT_EQ(output, lateListing(driven) + prompt("[0, 3]") + "Taking timed transition, delay is 1.25\n");
}

TEST_F(InputStratTest, WithNothingEnabledACommandForATransitionPromptsAgain) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "d 0\nt 1\n");
    EXPECT_EQ(step, "1");
    EXPECT_EQ(output,
              lateListing(driven) + prompt("[0, 3]") + prompt("[0, 3]") + "Taking timed transition, delay is 1\n");
}

TEST_F(InputStratTest, ABadTimeIsADelayOfZero) {
    for (const std::string command : {"t -1", "t", "t soon", "t nan", "t 1e999", "t -0.001"}) {
        DrivenModel driven(lateJob(x <= 3.0), InputStrat());
        driven.script({});
        const auto [step, output] = stepWith(driven, command + "\n");
        EXPECT_EQ(step, "0") << command;
        EXPECT_EQ(output, lateListing(driven) + prompt("[0, 3]") +
                              "Bad time, assuming 0.0\nTaking timed transition, delay is 0\n")
            << command;
        EXPECT_EQ(driven.data(), "x = 0");
    }
}

TEST_F(InputStratTest, ABadTimeBeforeTheInvariantsHoldIsRaisedToTheirStart) {
    DrivenModel driven(lateJob(x >= 1.5), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "t -1\n");
    EXPECT_EQ(step, "1.5");
    EXPECT_EQ(output, lateListing(driven) + prompt("[1.5, INFTY]") +
                          "Bad time, assuming 0.0\nTaking timed transition, delay is 0\n"
                          "Whoops, sample too low. Capping at 1.5\n");
    EXPECT_EQ(driven.data(), "x = 1.5");
}

TEST_F(InputStratTest, ADelayBehindTheInvariantsIsCapped) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "t 5\n");
    EXPECT_EQ(step, "3");
    EXPECT_EQ(output, lateListing(driven) + prompt("[0, 3]") +
                          "Taking timed transition, delay is 5\nWhoops, sample exceed invariant. Capping at 3\n");
    EXPECT_EQ(driven.data(), "x = 3");
}

TEST_F(InputStratTest, InvariantsWithoutARangeCapAnyDelayAtZero) {
    DrivenModel driven(lateJob(x <= -1.0), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "t 5\n");
    EXPECT_EQ(step, "0");
    EXPECT_EQ(output, lateListing(driven) + prompt("[-]") +
                          "Taking timed transition, delay is 5\nWhoops, sample exceed invariant. Capping at 0\n");
    EXPECT_EQ(driven.data(), "x = 0");
}

TEST_F(InputStratTest, InvariantsWithoutARangeRaiseADelayOfZeroToOne) {
    DrivenModel driven(lateJob(x <= -1.0), InputStrat());
    driven.script({});
    const auto [step, output] = stepWith(driven, "t 0\n");
    EXPECT_EQ(step, "1");
    EXPECT_EQ(output, lateListing(driven) + prompt("[-]") +
                          "Taking timed transition, delay is 0\nWhoops, sample too low. Capping at 1\n");
    EXPECT_EQ(driven.data(), "x = 1");
}

// ---- Other commands

TEST_F(InputStratTest, UnknownCommandsAndBlankLinesPromptAgainWithoutAWord) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    const auto [step, output] = stepWith(driven, "\n   \nD 0\nd0\nQ\nquit\nhelp\nd 0\n");
    EXPECT_EQ(step, "0: main: idle -> busy");
    std::string expected = listing(driven);
    for (int i = 0; i < 8; ++i) expected += indexPrompt("[0, 3]");
    EXPECT_EQ(output, expected + "\n");
}

TEST_F(InputStratTest, QuitsOnRequest) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    ScriptedConsole console("q now\n");
    driven.strategy().setConsole(&console);
    try {
        driven.step();
        FAIL() << "no exception";
    } catch (const abort_exception& abort) {
        EXPECT_STREQ(abort.what(), "Simulation terminated by the user");
    }
    EXPECT_EQ(console.text(), listing(driven) + indexPrompt("[0, 3]"));
}

TEST_F(InputStratTest, TheEndOfInputEndsTheRun) {
    // A last line without a line end is not carried out.
    for (const std::string input : {"", "d 0", "q", "\nd 0"}) {
        DrivenModel driven(job(x <= 3.0), InputStrat());
        driven.script({exponentialDraw(9.0)});
        ScriptedConsole console(input);
        driven.strategy().setConsole(&console);
        try {
            driven.step();
            FAIL() << "no exception";
        } catch (const abort_exception& abort) {
            EXPECT_STREQ(abort.what(), "No more input") << input;
        }
        EXPECT_EQ(driven.mode(), "idle");
    }
}

TEST_F(InputStratTest, ABrokenInputEndsTheRunToo) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    ScriptedConsole console("d 0\n");
    driven.strategy().setConsole(&console);
    console.input().setstate(std::ios::badbit);
    EXPECT_THROW(driven.step(), abort_exception);
}

TEST_F(InputStratTest, WithoutAConsoleTheFirstQuestionEndsTheRun) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(9.0)});
    try {
        driven.step();
        FAIL() << "no exception";
    } catch (const abort_exception& abort) {
        EXPECT_STREQ(abort.what(), "No more input");
    }
    EXPECT_EQ(driven.mode(), "idle");
    EXPECT_FALSE(std::filesystem::exists("EC_output.txt"));
}

TEST_F(InputStratTest, ACopyTalksToTheSameConsole) {
    ScriptedConsole console;
    InputStrat strategy;
    strategy.setConsole(&console);
    EXPECT_EQ(std::unique_ptr<SimulationStrategy>(strategy.clone())->console(), &console);
}

TEST_F(InputStratTest, PrintsTheStateAndTheTimeOfTheRun) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    const VerdictFormula undecided({PropertyUnknown});
    ScriptedConsole console("t 1.5\ns\nq\n");
    driven.strategy().setConsole(&console);
    EXPECT_THROW(driven.simulator().performRun(&undecided), abort_exception);
    std::ostringstream network;
    network << driven.network();
    const std::string later =
        "Current enabled transitions are:\nFuture transitions are:\nmain : " + declaration(driven, 0) +
        "\n    active in: [0.5, INFTY]\n";
    EXPECT_EQ(console.text(), lateListing(driven) + prompt("[0, 3]") + "Taking timed transition, delay is 1.5\n" +
                                  later + prompt("[0, 1.5]") + "Current state:\n" + network.str() +
                                  "\nCurrent time is:1.5\n" + prompt("[0, 1.5]"));
}

TEST_F(InputStratTest, FlushesAtEachEndOfAMessage) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    ScriptedConsole console("t 5\n");
    driven.strategy().setConsole(&console);
    driven.step();
    // Two headings, time, command, delay, cap; and the input, which is tied to the output, before it is read.
    EXPECT_EQ(console.flushes(), 7);
}

TEST_F(InputStratTest, WithoutActiveTransitionsItIsAnActionlock) {
    ModelWriter model;
    model.implementation("Idle.i");
    DrivenModel driven(model, InputStrat());
    driven.script({});
    ScriptedConsole console("t 1\n");
    driven.strategy().setConsole(&console);
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Actionlock");
    EXPECT_EQ(console.text(), "");
}

TEST_F(InputStratTest, EachStepRewritesTheDumpsOfBothTopologies) {
    DrivenModel driven(lateJob(x <= 3.0), InputStrat());
    driven.script({});
    for (int step = 0; step < 2; ++step) {
        ASSERT_FALSE(std::filesystem::exists("EC_output.txt"));
        stepWith(driven, "t 0.5\n");
        for (const char* dump : {"EC_output.txt", "DD_output.txt"}) {
            std::string heading;
            std::getline(std::ifstream(dump) >> std::ws, heading);
            EXPECT_EQ(heading, "digraph EC {") << dump;
            std::filesystem::remove(dump);
        }
    }
}

TEST_F(InputStratTest, SamplesAreDrawnAndCountedDownButDoNotRace) {
    DrivenModel driven(job(x <= 3.0), InputStrat());
    driven.script({exponentialDraw(1.0)});
    stepWith(driven, "t 0.75\n");
    EXPECT_EQ(driven.strategy().eventSamples().front().first, 0.25);
    EXPECT_EQ(stepWith(driven, "t 0.25\n").first, "0.25") << "the sample is due, and nothing fires";
}

// ---- Reading lines

TEST(GetLine, MakesTheLineTheWholeContentAndClearsItsState) {
    std::istringstream in("first 1\nsecond\n");
    std::stringstream line("rest of an older line");
    std::string word;
    while (line >> word) {
    }
    EXPECT_TRUE(getLine(in, line));
    int number = 0;
    EXPECT_TRUE(line >> word >> number);
    EXPECT_EQ(word, "first");
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(getLine(in, line));
    EXPECT_EQ(line.str(), "second");
    EXPECT_FALSE(in.eof());
}

TEST(GetLine, LeavesTheStateOfTheInputAsTheReadingHasSetIt) {
    std::istringstream in("last");
    std::stringstream line;
    EXPECT_TRUE(getLine(in, line)) << "a line without a line end is a line";
    EXPECT_EQ(line.str(), "last");
    EXPECT_TRUE(in.eof());
    EXPECT_FALSE(getLine(in, line));
    EXPECT_EQ(line.str(), "");
    EXPECT_TRUE(line.good());
    EXPECT_TRUE(in.fail());
}

}  // namespace vornrun::test

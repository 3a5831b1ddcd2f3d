#include "vornrun/api/Observer.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/vornrun/api/DoorModels.h"

namespace vornrun::test {
namespace {

/// A clock that a step at 2.5 resets while it counts.
ModelWriter metronome() {
    const Var x = var("x", Type::Clock), beats = var("beats", Type::Int);
    ModelWriter model;
    model.implementation("Root.i")
        .data(x, 0.0)
        .data(beats, 0)
        .mode("ticking", invariant(x <= 2.5))
        .transition("ticking", "ticking", when(x >= 2.5), set(x, 0.0), set(beats, beats + 1));
    return model;
}

TEST(Observer, SeesEachStepWithWhatItChanged) {
    Runner runner(modelOf(metronome()), questionOf(eventually(var("beats", Type::Int) >= 2, 0, 100)));
    TraceStream stream(1, 0);
    EXPECT_EQ(transcriptOf(runner, stream), (std::vector<std::string>{
                                                "start 0 ticking 0x0p+0",
                                                "1 0x1.4p+1 0x1.4p+1 tau 0:ticking->ticking 0:0=>1",
                                                "2 0x1.4p+1 0x1.4p+2 tau 0:ticking->ticking 0:1=>2",
                                                "true decided 2 0x1.4p+2 ",
                                            }));
}

TEST(Observer, SeesTimeStepsWithoutAnEvent) {
    Runner runner(modelOf(metronome()), questionOf(eventually(var("beats", Type::Int) >= 1, 0, 100)), "event");
    TraceStream stream(1, 0);
    EXPECT_EQ(transcriptOf(runner, stream)[1], "1 0x1.4p+1 0x1.4p+1  2:0x0p+0=>0x1.4p+1");
}

TEST(Observer, SeesNothingOfNestedTraces) {
    Runner runner(modelOf(decay(1.0)), questionOf(eventually(p(Bound::AtLeast, 0.0, reaches("over", 1.0)), 0, 1)));
    TraceStream stream(1, 0);
    const auto lines = transcriptOf(runner, stream);
    ASSERT_EQ(lines.size(), 2U) << "the start and the end";
    EXPECT_EQ(lines[0], "start alive");
}

TEST(Observer, EndsTheRunByAnExceptionOfItsOwn) {
    struct Impatient final : Observer {
        void step(const Step&) override { throw std::runtime_error("enough"); }
    } impatient;
    Runner runner(modelOf(metronome()), questionOf(eventually(falsity(), 0, 100)));
    runner.setObserver(&impatient);
    TraceStream stream(1, 0);
    EXPECT_THROW(runner.run(stream), std::runtime_error);
    runner.setObserver(nullptr);
    EXPECT_EQ(runner.run(stream).ending, Ending::decided) << "the runner goes on";
}

}  // namespace
}  // namespace vornrun::test

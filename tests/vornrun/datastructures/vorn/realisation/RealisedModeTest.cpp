#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using RealisedModeTest = RealisationFixture;

/// `variable <= bound`, with the comparison from which the delays are computed.
VornLinearExpression* atMost(TypedRealisedVariable<VornClock>* variable, RealisedVariable* rate, double bound) {
    auto* comparison = new LinExp(constant<VornReal>(bound), parser::OperatorType::LEq);
    comparison->addTerm(variable->clone(), rate, constant<VornReal>(1.0));
    auto* clause = new Clause(nullptr);
    clause->addExpr(comparison);
    return new VornLinearExpression(
        new TypedBinaryOperator<VornLEq, VornBool, VornClock, VornReal>(variable, constant<VornReal>(bound)), {clause});
}

TEST_F(RealisedModeTest, WithoutAnInvariantHoldsNowAndForAllDelays) {
    EXPECT_TRUE(a->invariantHolds());
    const TimeInterval delays = a->invariantHoldsWhile();
    EXPECT_EQ(delays.ranges, (TimeRanges(std::vector<TimeRange>{{0.0, TimeInterval::INF_TIME}})));
    EXPECT_EQ(delays.lower, 0.0);
    EXPECT_EQ(delays.upper, 1.7976931348623157e308);
    EXPECT_EQ(delays.length, 1.7976931348623157e308);
}

TEST_F(RealisedModeTest, AsksItsInvariantWhenItHasOne) {
    a->setInvariant(plainly(constant<VornBool>(false)));
    EXPECT_FALSE(a->invariantHolds());
    EXPECT_TRUE(a->invariantHoldsWhile().empty());
    a->setInvariant(plainly(constant<VornBool>(true)));
    EXPECT_TRUE(a->invariantHolds());
}

TEST_F(RealisedModeTest, PredictsTheInvariantFromValueAndRate) {
    auto* x = variable<VornClock>("x", 3.0);
    a->setInvariant(atMost(x, variable<VornClock>("r", 1.0), 5.0));
    EXPECT_TRUE(a->invariantHolds());
    EXPECT_EQ(a->invariantHoldsWhile().ranges, (TimeRanges(std::vector<TimeRange>{{0.0, 2.0}})));
    valuation->setValue<VornClock>(x->reference(), 6.0);
    EXPECT_FALSE(a->invariantHolds());
    EXPECT_TRUE(a->invariantHoldsWhile().empty());
}

struct ModePrint {
    VornModeType type;
    const char* text;
};
void PrintTo(const ModePrint& print, std::ostream* stream) { *stream << print.text; }

class PrintedMode : public testing::TestWithParam<ModePrint> {};

TEST_P(PrintedMode, ShowsNameAndTypeWord) {
    EXPECT_EQ(printed(RealisedMode(1, "m", GetParam().type)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Types, PrintedMode,
                         testing::Values(ModePrint{VornModeType::plain, "m: mode"},
                                         ModePrint{VornModeType::initial, "m: initial mode"},
                                         ModePrint{VornModeType::activation, "m: activation mode"},
                                         ModePrint{VornModeType::error, "m: error mode"}),
                         NamesInOrder({"Plain", "Initial", "Activation", "Error"}));

TEST_F(RealisedModeTest, PrintsInvariantAndTrajectoriesJoinedByAnd) {
    const auto trajectories = [this](unsigned int count) {
        std::vector<std::unique_ptr<RealisedTrajectoryEquation>> result;
        for (unsigned int i = 0; i < count; ++i)
            result.push_back(std::make_unique<TypedRealisedTrajectoryEquation<VornContinuous, VornReal>>(
                variable<VornContinuous>("y" + std::to_string(i), 1.5), variable<VornContinuous>("r", 0.0),
                constant<VornReal>(-2.0), std::vector<RealisedVariable*>(), valuation));
        return result;
    };
    a->setInvariant(plainly(variable<VornBool>("ok", true)));
    EXPECT_EQ(printed(*a), "a: initial mode while ok{=1:bool}");
    a->setTrajectories(trajectories(2));
    EXPECT_EQ(printed(*a),
              "a: initial mode while ok{=1:bool} and y0{=1.5:continuous}' = -2 and y1{=1.5:continuous}' = -2");
    b->setTrajectories(trajectories(1));
    EXPECT_EQ(printed(*b), "b: mode while y0{=1.5:continuous}' = -2");
    std::ostringstream invariants;
    b->printInvariants(invariants);
    EXPECT_EQ(invariants.str(), " while y0{=1.5:continuous}' = -2");
}

TEST_F(RealisedModeTest, AModeListPrintsNothingWhenEmptyAndTheNamesOtherwise) {
    const auto text = [](const ModeList& modes) {
        std::ostringstream stream;
        stream << modes;
        return stream.str();
    };
    EXPECT_EQ(text({}), "");
    EXPECT_EQ(text({b}), " in modes (b)");
    EXPECT_EQ(text({c, a}), " in modes (c, a)");
}

TEST_F(RealisedModeTest, AnEmptyModeListMeansAllModes) {
    EXPECT_TRUE(existsIn({}, a));
    EXPECT_TRUE(existsIn({a, b}, b));
    EXPECT_FALSE(existsIn({a, b}, c));
    const auto meant = [this](const ModeList& modes) {
        ModeList result;
        forEachModeOf(modes, root->modes(), [&result](const RealisedMode* mode) { result.push_back(mode); });
        return result;
    };
    EXPECT_EQ(meant({}), (ModeList{a, b, c}));
    EXPECT_EQ(meant({c, a}), (ModeList{c, a}));
}

TEST_F(RealisedModeTest, APlaceholderCarriesTheDummyIdAndOnlyAName) {
    const RealisedMode placeholder(RealisedMode::DUMMY_ID, "sub:m");
    EXPECT_EQ(placeholder.id(), 4294967295u);
    EXPECT_EQ(placeholder.name(), "sub:m");
    EXPECT_EQ(placeholder.type(), VornModeType::plain);
    EXPECT_EQ(placeholder.invariant(), nullptr);
    EXPECT_TRUE(placeholder.trajectories().empty());
}

}  // namespace
}  // namespace vornrun::test

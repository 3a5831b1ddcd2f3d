#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {
namespace {

using namespace direct;

constexpr unsigned int TYPES = VORN_DATA_TYPE_COUNT;

VornDataTypeTag tagOf(unsigned int number) { return static_cast<VornDataTypeTag>(number); }

/// What each of the make functions must give for a target of the row's and an expression of the column's type.
/// Rows and columns in tag order: bool, real, int, continuous, clock, enum, interval, mode.
constexpr std::array<const char*, TYPES> ASSIGNABLE = {
    "x.......",  //
    ".xxxx.x.",  //
    ".xxxx.x.",  //
    ".xxxx.x.",  //
    ".xxxx.x.",  //
    ".....x..",  //
    ".xxxx.x.",  //
    ".......x",
};
constexpr std::array<const char*, TYPES> TRAJECTORIES = {
    "........",  //
    "........",  //
    "........",  //
    ".xxxx.x.",  //
    ".xxxx.x.",  //
    "........",  //
    "........",  //
    "........",
};

class MakeRealised : public testing::Test {
  protected:
    RealisedVariable* target(unsigned int type) { return makeValueReference(tagOf(type), valuation, 1, &part); }
    static VornExpressionTree* expression(unsigned int type) {
        return withTagClass(tagOf(type), []<class T>() -> VornExpressionTree* { return constant<T>(T::DefaultValue); });
    }
    static std::string pairName(unsigned int target, unsigned int expression) {
        return toString(tagOf(target)) + " from " + toString(tagOf(expression));
    }
    /// Calls `make` for all 64 pairs of types and compares the results with the table.
    template <class Make>
    void expectPairs(const std::array<const char*, TYPES>& table, const Make& make) {
        for (unsigned int t = 0; t < TYPES; ++t)
            for (unsigned int u = 0; u < TYPES; ++u)
                EXPECT_EQ(make(t, u) != nullptr, table[t][u] == 'x') << pairName(t, u);
    }

    ValuationPtr valuation = std::make_shared<GlobalValuation>();
    const RealisedIdentifier part{0, "part"};
};

TEST_F(MakeRealised, AValueReferenceHasTheTypeOfTheTagAndTheSlotAndPartGiven) {
    for (unsigned int type = 0; type < TYPES; ++type) {
        const std::unique_ptr<RealisedVariable> variable(makeValueReference(tagOf(type), valuation, 5 + type, &part));
        ASSERT_NE(variable, nullptr) << toString(tagOf(type));
        EXPECT_EQ(variable->type(), tagOf(type));
        EXPECT_EQ(variable->reference(), 5 + type);
        EXPECT_EQ(variable->part(), &part);
    }
    EXPECT_EQ(makeValueReference(tagOf(8), valuation, 1, &part), nullptr);
}

TEST_F(MakeRealised, AssignmentsExistForThePairsOfTheTable) {
    expectPairs(ASSIGNABLE, [this](unsigned int t, unsigned int u) {
        return std::unique_ptr<RealisedAssignment>(makeAssignment(target(t), expression(u), {}, valuation));
    });
}

TEST_F(MakeRealised, FlowsExistForThePairsOfTheTable) {
    expectPairs(ASSIGNABLE, [this](unsigned int t, unsigned int u) {
        return std::unique_ptr<RealisedFlow>(makeFlow(target(t), expression(u), {}, valuation, {}));
    });
}

TEST_F(MakeRealised, TrajectoriesExistForClocksAndContinuousVariablesWithANumericRate) {
    expectPairs(TRAJECTORIES, [this](unsigned int t, unsigned int u) {
        return std::unique_ptr<RealisedTrajectoryEquation>(
            makeTrajectory(target(t), target(t), expression(u), {}, valuation));
    });
}

TEST_F(MakeRealised, AFlowFromAnIntegerToABooleanIsNone) {
    EXPECT_EQ(makeFlow(target(0), constant<VornInt>(1), {}, valuation, {}), nullptr);
}

TEST_F(MakeRealised, ATrajectoryOfARealIsNoneWhateverTheExpression) {
    for (unsigned int u = 0; u < TYPES; ++u)
        EXPECT_EQ(makeTrajectory(target(1), target(1), expression(u), {}, valuation), nullptr) << pairName(1, u);
}

TEST_F(MakeRealised, TheResultHoldsWhatWasGiven) {
    RealisedVariable* const left = target(2);
    VornExpressionTree* const right = expression(1);
    const std::unique_ptr<RealisedAssignment> assignment(makeAssignment(left, right, {}, valuation));
    EXPECT_EQ(assignment->target(), left);
    EXPECT_EQ(assignment->assignment(), right);

    const RealisedMode mode(1, "m");
    RealisedVariable* const source = target(2);
    const std::unique_ptr<RealisedFlow> flow(makeFlow(target(2), source, {source, nullptr}, valuation, {&mode}));
    EXPECT_EQ(flow->activeIn(), ModeList{&mode});
    EXPECT_EQ(flow->refsInAssignment(), (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, 1}}));

    RealisedVariable* const evolving = target(4);
    RealisedVariable* const rate = target(4);
    const std::unique_ptr<RealisedTrajectoryEquation> equation(
        makeTrajectory(evolving, rate, expression(2), {}, valuation));
    EXPECT_EQ(equation->variable(), evolving);
    EXPECT_EQ(equation->target(), rate);
}

TEST_F(MakeRealised, AMissingRateStaysMissingAndSoDoesOneOfAnotherType) {
    const std::unique_ptr<RealisedTrajectoryEquation> without(
        makeTrajectory(target(4), nullptr, expression(1), {}, valuation));
    ASSERT_NE(without, nullptr);
    EXPECT_EQ(without->target(), nullptr);
    const std::unique_ptr<RealisedTrajectoryEquation> wrong(
        makeTrajectory(target(4), target(3), expression(1), {}, valuation));
    ASSERT_NE(wrong, nullptr);
    EXPECT_EQ(wrong->target(), nullptr);
}

TEST_F(MakeRealised, AMissingTargetOrExpressionGivesNull) {
    EXPECT_EQ(makeAssignment(static_cast<RealisedVariable*>(nullptr), expression(2), {}, valuation), nullptr);
    EXPECT_EQ(makeAssignment(target(2), nullptr, {}, valuation), nullptr);
    EXPECT_EQ(makeFlow(static_cast<RealisedVariable*>(nullptr), expression(2), {}, valuation, {}), nullptr);
    EXPECT_EQ(makeFlow(target(2), nullptr, {}, valuation, {}), nullptr);
    EXPECT_EQ(makeTrajectory(static_cast<RealisedVariable*>(nullptr), target(4), expression(2), {}, valuation),
              nullptr);
    EXPECT_EQ(makeTrajectory(target(4), target(4), nullptr, {}, valuation), nullptr);
}

TEST_F(MakeRealised, TheTypedFormsTakeTheSamePairs) {
    const auto clock = [this] { return new TypedRealisedVariable<VornClock>(valuation, 1, &part); };
    const auto flag = [this] { return new TypedRealisedVariable<VornBool>(valuation, 1, &part); };
    const std::unique_ptr<RealisedAssignment> assignment(
        makeAssignment<VornClock>(clock(), expression(2), {}, valuation));
    const std::unique_ptr<RealisedFlow> flow(makeFlow<VornBool>(flag(), expression(0), {}, valuation, {}));
    const std::unique_ptr<RealisedTrajectoryEquation> equation(
        makeTrajectory<VornClock>(clock(), clock(), expression(6), {}, valuation));
    EXPECT_NE(assignment, nullptr);
    EXPECT_NE(flow, nullptr);
    EXPECT_NE(equation, nullptr);
    EXPECT_EQ(makeAssignment<VornClock>(clock(), expression(0), {}, valuation), nullptr);
    EXPECT_EQ(makeFlow<VornBool>(flag(), expression(2), {}, valuation, {}), nullptr);
    EXPECT_EQ(makeTrajectory<VornBool>(flag(), flag(), expression(0), {}, valuation), nullptr);
}

}  // namespace
}  // namespace vornrun::test

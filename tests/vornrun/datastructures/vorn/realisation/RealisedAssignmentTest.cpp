#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"

#include <limits>

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using Dependencies = std::vector<RealisedVariable*>;
using RealisedAssignmentTest = RealisationFixture;

#define VORN_COUNT(T, U) +1
static_assert(0 VORN_FOR_EACH_ASSIGNABLE(VORN_COUNT) == 28);
static_assert(0 VORN_FOR_EACH_TRAJECTORY(VORN_COUNT) == 10);
#undef VORN_COUNT
#define VORN_CHECK(T, U) static_assert(isAssignable<T, U>);
VORN_FOR_EACH_ASSIGNABLE(VORN_CHECK)
#undef VORN_CHECK
#define VORN_CHECK(T, U) static_assert(isTrajectory<T, U>);
VORN_FOR_EACH_TRAJECTORY(VORN_CHECK)
#undef VORN_CHECK

/// The number of partners of T among the eight types.
template <class T>
constexpr int assignablePartners() {
#define VORN_COUNT(U) +(isAssignable<T, U> ? 1 : 0)
    return 0 VORN_FOR_EACH_TYPE(VORN_COUNT);
#undef VORN_COUNT
}
template <class T>
constexpr int trajectoryPartners() {
#define VORN_COUNT(U) +(isTrajectory<T, U> ? 1 : 0)
    return 0 VORN_FOR_EACH_TYPE(VORN_COUNT);
#undef VORN_COUNT
}
#define VORN_COUNT(T) +assignablePartners<T>()
static_assert(0 VORN_FOR_EACH_TYPE(VORN_COUNT) == 28, "28 of the 64 pairs of types can be assigned");
#undef VORN_COUNT
#define VORN_COUNT(T) +trajectoryPartners<T>()
static_assert(0 VORN_FOR_EACH_TYPE(VORN_COUNT) == 10, "10 of the 64 pairs of types make trajectories");
#undef VORN_COUNT

struct Truncation {
    const char* name;
    double value;
    long stored;
};
void PrintTo(const Truncation& truncation, std::ostream* stream) { *stream << truncation.value; }

class AssignmentToInteger : public RealisationFixture, public testing::WithParamInterface<Truncation> {
  protected:
    template <class T, class U>
    long storedIn() {
        auto* target = variable<T>("n", 99);
        const TypedRealisedAssignment<T, U> assignment(target, constant<U>(GetParam().value), {}, valuation);
        assignment.applyAssignment();
        return valuation->getValueDirect<T>(target->reference());
    }
};

TEST_P(AssignmentToInteger, CutsFractionsOffTowardsZero) {
    EXPECT_EQ((storedIn<VornInt, VornReal>()), GetParam().stored);
    EXPECT_EQ((storedIn<VornInt, VornContinuous>()), GetParam().stored);
    EXPECT_EQ((storedIn<VornInt, VornClock>()), GetParam().stored);
    EXPECT_EQ((storedIn<VornInterval, VornReal>()), GetParam().stored);
    EXPECT_EQ((storedIn<VornInterval, VornContinuous>()), GetParam().stored);
    EXPECT_EQ((storedIn<VornInterval, VornClock>()), GetParam().stored);
}

constexpr long LOWEST = std::numeric_limits<long>::min();

INSTANTIATE_TEST_SUITE_P(Values, AssignmentToInteger,
                         testing::Values(Truncation{"Positive", 2.9, 2}, Truncation{"Negative", -2.9, -2},
                                         Truncation{"JustBelowZero", -0.5, 0}, Truncation{"Whole", 7.0, 7},
                                         Truncation{"Lowest", -9223372036854775808.0, LOWEST},
                                         Truncation{"TooLarge", 9223372036854775808.0, LOWEST},
                                         Truncation{"TooSmall", -1e300, LOWEST},
                                         Truncation{"Infinite", std::numeric_limits<double>::infinity(), LOWEST},
                                         Truncation{"NotANumber", std::numeric_limits<double>::quiet_NaN(), LOWEST}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(RealisedAssignmentTest, AnIntegerWidensToAReal) {
    auto* target = variable<VornReal>("r", 0.0);
    const TypedRealisedAssignment<VornReal, VornInterval> assignment(target, constant<VornInterval>(-3), {}, valuation);
    assignment.applyAssignment();
    EXPECT_EQ(valuation->getValueDirect<VornReal>(target->reference()), -3.0);
}

TEST_F(RealisedAssignmentTest, BooleansEnumerationsAndModesAreCopied) {
    auto* flag = variable<VornBool>("flag", false);
    auto* colour = variable<VornEnum>("colour", "red");
    auto* current = variable<VornModeVal>("current", a);
    const TypedRealisedAssignment<VornBool, VornBool> first(flag, constant<VornBool>(true), {}, valuation);
    const TypedRealisedAssignment<VornEnum, VornEnum> second(colour, constant<VornEnum>("green"), {}, valuation);
    const TypedRealisedAssignment<VornModeVal, VornModeVal> third(current, constant<VornModeVal>(b), {}, valuation);
    first.applyAssignment();
    second.applyAssignment();
    third.applyAssignment();
    EXPECT_TRUE(valuation->getValueDirect<VornBool>(flag->reference()));
    EXPECT_EQ(valuation->getValueDirect<VornEnum>(colour->reference()), "green");
    EXPECT_EQ(valuation->getValueDirect<VornModeVal>(current->reference()), b);
}

TEST_F(RealisedAssignmentTest, TheExpressionIsEvaluatedAnewEachTime) {
    auto* n = variable<VornInt>("n", 1);
    auto* sum = new TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(n->clone(), constant<VornInt>(1));
    const TypedRealisedAssignment<VornInt, VornInt> assignment(n, sum, {}, valuation);
    assignment.applyAssignment();
    assignment.applyAssignment();
    EXPECT_EQ(valuation->getValueDirect<VornInt>(n->reference()), 3);
}

TEST_F(RealisedAssignmentTest, ReferencesAreASetOfTypedSlotsWithoutTheMissingOnes) {
    auto* x = variable<VornInt>("x", 1);
    auto* flag = variable<VornBool>("flag", true);
    ASSERT_EQ(x->reference(), flag->reference()) << "slots of different types count apart";
    auto* left = x->clone();
    auto* right = x->clone();
    const TypedRealisedAssignment<VornInt, VornInt> assignment(
        x, new TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(left, right), {left, nullptr, right, flag},
        valuation);
    EXPECT_EQ(assignment.refsInAssignment(), (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, x->reference()},
                                                                      {VornDataTypeTag::VornBool, flag->reference()}}));
    EXPECT_EQ(assignment.target(), x);
    delete flag;
}

TEST_F(RealisedAssignmentTest, PrintsTargetAndExpression) {
    const TypedRealisedAssignment<VornReal, VornInt> assignment(variable<VornReal>("r", 2.5), constant<VornInt>(4), {},
                                                                valuation);
    EXPECT_EQ(printed(assignment), "r{=2.5:real} := 4");
}

TEST_F(RealisedAssignmentTest, AFlowPrintsItsModesBehindTheAssignment) {
    const TypedRealisedFlow<VornBool, VornBool> everywhere(variable<VornBool>("p", false), constant<VornBool>(true), {},
                                                           valuation, {});
    const TypedRealisedFlow<VornBool, VornBool> somewhere(variable<VornBool>("q", true), constant<VornBool>(false), {},
                                                          valuation, {a, c});
    EXPECT_EQ(printed(everywhere), "p{=0:bool} := 1");
    EXPECT_EQ(printed(somewhere), "q{=1:bool} := 0 in modes (a, c)");
    EXPECT_EQ(somewhere.activeIn(), (ModeList{a, c}));
    somewhere.applyAssignment();
    EXPECT_EQ(printed(somewhere), "q{=0:bool} := 0 in modes (a, c)");
}

class RealisedTrajectoryTest : public RealisationFixture {
  protected:
    TypedRealisedVariable<VornContinuous>* x = variable<VornContinuous>("x", 10.0);
    TypedRealisedVariable<VornContinuous>* xRate = variable<VornContinuous>("xRate", 0.0);
    TypedRealisedVariable<VornContinuous>* y = variable<VornContinuous>("y", 100.0);
    TypedRealisedVariable<VornContinuous>* yRate = variable<VornContinuous>("yRate", 0.0);
    const TypedRealisedTrajectoryEquation<VornContinuous, VornInt> constantRate{
        x, xRate, constant<VornInt>(-2), {}, valuation};
    const TypedRealisedTrajectoryEquation<VornContinuous, VornContinuous> rateOfX{y, yRate, x->clone(), {}, valuation};

    double value(const RealisedVariable* variable) const {
        return valuation->getValueDirect<VornContinuous>(variable->reference());
    }
};

TEST_F(RealisedTrajectoryTest, TimeMovesTheVariableByRateTimesDelay) {
    constantRate.applyTime(1.5);
    EXPECT_EQ(value(x), 7.0);
    EXPECT_EQ(value(xRate), 0.0) << "the passage of time leaves the rate slot alone";
}

TEST_F(RealisedTrajectoryTest, ALaterEquationSeesTheNewValueOfAnEarlierVariable) {
    constantRate.applyTime(2.0);
    rateOfX.applyTime(2.0);
    EXPECT_EQ(value(x), 6.0);
    EXPECT_EQ(value(y), 112.0);
}

TEST_F(RealisedTrajectoryTest, AssigningWritesTheRateSlotAndNotTheVariable) {
    constantRate.applyAssignment();
    EXPECT_EQ(value(xRate), -2.0);
    EXPECT_EQ(value(x), 10.0);
    EXPECT_EQ(constantRate.target(), xRate);
    EXPECT_EQ(constantRate.variable(), x);
}

TEST_F(RealisedTrajectoryTest, PrintsTheVariableAndItsRate) {
    EXPECT_EQ(printed(constantRate), "x{=10:continuous}' = -2");
    EXPECT_EQ(printed(rateOfX), "y{=100:continuous}' = x{=10:continuous}");
}

TEST_F(RealisedTrajectoryTest, AnEquationWithoutARateStillMovesItsVariable) {
    const TypedRealisedTrajectoryEquation<VornClock, VornReal> equation(variable<VornClock>("t", 1.0), nullptr,
                                                                        constant<VornReal>(0.5), {}, valuation);
    EXPECT_EQ(equation.target(), nullptr);
    equation.applyTime(4.0);
    EXPECT_EQ(printed(equation), "t{=3:clock}' = 0.5");
}

}  // namespace
}  // namespace vornrun::test

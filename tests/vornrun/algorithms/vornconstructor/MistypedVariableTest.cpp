// Variables under another type than that of their part, in everything that names become.

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/vornconstructor/SubstitutionFixture.h"
#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"

namespace vornrun::test {
namespace {

/// "x" is the int in slot 3 of its store, and its rate is in slot 4. There are only 2 slots for each of the types enum
/// (none), real and continuous.
class MistypedVariableTest : public SubstitutionFixture {
  protected:
    static std::string faultText(const std::string& type, const std::string& name = "x") {
        return "Component main: variable \"" + name + "\" is used as " + type +
               ", which is not the type that it was declared with";
    }
    /// Makes slots until `variable` has one.
    template <class T>
    void makeSlotsFor(const RealisedVariable& variable, const typename T::AssociatedDataType& value) {
        while (!valuation->contains(T::tag, variable.reference())) valuation->addValue<T>(nullptr, value);
    }
};

TEST_F(MistypedVariableTest, ReadsTheSlotOfThatNumberInTheStoreOfItsType) {
    EXPECT_EQ(variable<VornClock>("v")->reference(), main->valueRef(part(main.get(), "v")));
    EXPECT_EQ(getDoubleValue(variable<VornClock>("v").get()), 3.0) << "the value of c, the first clock";
}

TEST_F(MistypedVariableTest, FailsAtItsEvaluationWhenThereIsNoSuchSlot) {
    const Variable x = variable<VornEnum>("x");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->type(), VornDataTypeTag::VornEnum);
    EXPECT_EQ(x->reference(), main->valueRef(part(main.get(), "x")));
    EXPECT_EQ(faultOf([&] { Value(x->evaluationResult()); }), faultText("VornEnum"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(MistypedVariableTest, NamesTheVariableAsItIsWrittenAndTheComponentThatItIsRelativeTo) {
    const TypedVornVariable<VornEnum> deep("s2.n");
    const Variable n(VariablesToValueReferences(s1(), valuation).substituteVariable(&deep));
    EXPECT_EQ(
        faultOf([&] { Value(n->evaluationResult()); }),
        "Component main.s1: variable \"s2.n\" is used as VornEnum, which is not the type that it was declared with");
}

TEST_F(MistypedVariableTest, ReadsASlotThatCameLater) {
    const Variable x = variable<VornEnum>("x");
    makeSlotsFor<VornEnum>(*x, "red");
    const Value value(x->evaluationResult());
    EXPECT_EQ(printed(*value), "red");
    EXPECT_EQ(printed(*x), "x{=red:enum}");
}

TEST_F(MistypedVariableTest, PrintsNullForAValueThatDoesNotExist) {
    EXPECT_EQ(printed(*variable<VornEnum>("x")), "x{=(null):enum}");
    EXPECT_EQ(printed(*rateOf<VornContinuous>("x")), "x{=(null):continuous}");
}

TEST_F(MistypedVariableTest, ItsClonesFailAlike) {
    const Variable x = variable<VornReal>("x");
    const Variable copy(x->clone());
    const Variable rebuilt(x->clone(std::list<VornExpressionTree*>()));
    for (const auto* each : {&copy, &rebuilt})
        EXPECT_EQ(faultOf([&] { Value((*each)->evaluationResult()); }), faultText("VornReal"));
}

TEST_F(MistypedVariableTest, DoesNoHarmWhereItIsNotEvaluated) {
    const auto comparison = [] {
        return new TypedBinaryOperator<VornEq, VornBool, VornReal, VornReal>(typedVar<VornReal>("x"),
                                                                             constant<VornReal>(1.0));
    };
    const TypedBinaryOperator<VornImp, VornBool, VornBool, VornBool> implication(constant<VornBool>(true),
                                                                                 comparison());
    const TypedBinaryOperator<VornAnd, VornBool, VornBool, VornBool> conjunction(constant<VornBool>(false),
                                                                                 comparison());
    EXPECT_EQ(printed(*Value(rewritten(implication)->evaluationResult())), "1");
    EXPECT_EQ(printed(*Value(rewritten(conjunction)->evaluationResult())), "0");
    EXPECT_EQ(faultOf([&] { Value(rewritten(*Tree(comparison()))->evaluationResult()); }), faultText("VornReal"));
}

TEST_F(MistypedVariableTest, AnAssignmentToItFailsWhenItIsApplied) {
    const VornAssignment assignment(var<VornReal>("x"), constant<VornInt>(1));
    const std::unique_ptr<RealisedAssignment> realised(subject()(&assignment));
    ASSERT_NE(realised, nullptr);
    EXPECT_EQ(printed(*realised), "x{=(null):real} := 1");
    EXPECT_EQ(realised->target()->part(), part(main.get(), "x"));
    EXPECT_EQ(faultOf([&] { realised->applyAssignment(); }), faultText("VornReal"));
    makeSlotsFor<VornReal>(*realised->target(), 0.0);
    realised->applyAssignment();
    EXPECT_EQ(valuation->getValueDirect<VornReal>(realised->target()->reference()), 1.0);
}

TEST_F(MistypedVariableTest, AnAssignmentFailsInALayerToo) {
    const VornAssignment assignment(var<VornEnum>("x"), constant<VornEnum>("red"));
    const std::unique_ptr<RealisedAssignment> realised(subject()(&assignment));
    const ScopedLayer layer(*valuation);
    EXPECT_EQ(faultOf([&] { realised->applyAssignment(); }), faultText("VornEnum"));
}

TEST_F(MistypedVariableTest, AFaultOfTheRightSideComesBeforeThatOfTheLeft) {
    const VornAssignment assignment(var<VornReal>("x"), var<VornReal>("nothing"));
    const std::unique_ptr<RealisedAssignment> realised(subject()(&assignment));
    EXPECT_THROW(realised->applyAssignment(), missing_operand);
}

TEST_F(MistypedVariableTest, AFlowToItKeepsItsModesAndFailsWhenItIsApplied) {
    const RealisedMode* up = modeNamed(main.get(), "up");
    const VornFlow flow(var<VornEnum>("x"), constant<VornEnum>("red"), {"up"});
    const std::unique_ptr<RealisedFlow> realised(subject()(&flow, {up}));
    ASSERT_NE(realised, nullptr);
    EXPECT_EQ(realised->activeIn(), ModeList{up});
    EXPECT_TRUE(realised->refsInAssignment().empty());
    EXPECT_EQ(faultOf([&] { realised->applyAssignment(); }), faultText("VornEnum"));
}

TEST_F(MistypedVariableTest, ATrajectoryOfItFailsForItsRateAndForTheVariable) {
    const std::unique_ptr<VornTrajectoryEquation> equation(rate<VornReal>("x", 0.5));
    const std::unique_ptr<RealisedTrajectoryEquation> realised(subject()(equation.get()));
    ASSERT_NE(realised, nullptr);
    EXPECT_EQ(printed(*realised), "x{=(null):continuous}' = 0.5");
    EXPECT_EQ(faultOf([&] { realised->applyAssignment(); }), faultText("VornContinuous"));
    EXPECT_EQ(faultOf([&] { realised->applyTime(1.0); }), faultText("VornContinuous"));
    // With one slot more there is a value for the variable and still none for its rate.
    makeSlotsFor<VornContinuous>(*realised->variable(), 2.0);
    realised->applyTime(1.0);
    EXPECT_EQ(printed(*realised->variable()), "x{=2.5:continuous}");
    EXPECT_EQ(faultOf([&] { realised->applyAssignment(); }), faultText("VornContinuous"));
}

TEST_F(MistypedVariableTest, AComparisonFailsInEachOfItsTrees) {
    const auto holds = [this](VornExpressionTree* variable, VornExpressionTree* factor, VornExpressionTree* bound) {
        auto* comparison = new LinExp(bound, parser::OperatorType::LEq);
        comparison->addTerm(variable, variable->clone(), factor);
        auto* clause = new Clause(nullptr);
        clause->addExpr(comparison);
        const VornLinearExpression syntax(constant<VornBool>(true), {clause});
        const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
        EXPECT_TRUE(realised->holds());
        return faultOf([&] { realised->holdsWhile(); });
    };
    EXPECT_EQ(holds(var<VornReal>("x"), constant<VornReal>(1), constant<VornReal>(1)), faultText("VornReal"));
    EXPECT_EQ(holds(var<VornClock>("c"), var<VornReal>("x"), constant<VornReal>(1)), faultText("VornReal"));
    EXPECT_EQ(holds(var<VornClock>("c"), constant<VornReal>(1), var<VornReal>("x")), faultText("VornReal"));
    EXPECT_EQ(holds(var<VornContinuous>("s1.s2.n"), constant<VornReal>(1), constant<VornReal>(1)),
              faultText("VornContinuous", "s1.s2.n"));
}

TEST_F(MistypedVariableTest, AccessThroughTheStoreFailsToo) {
    const Variable x = variable<VornReal>("x");
    const TypedVornValue<VornReal> one(1.0);
    EXPECT_EQ(faultOf([&] { static_cast<void>(valuation->findValue(x.get())); }), faultText("VornReal"));
    EXPECT_EQ(faultOf([&] { valuation->setValue(x.get(), &one); }), faultText("VornReal"));
}

}  // namespace
}  // namespace vornrun::test

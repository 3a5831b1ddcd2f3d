#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/vornconstructor/SubstitutionFixture.h"
#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using VariablesToValueReferencesTest = SubstitutionFixture;

TEST_F(VariablesToValueReferencesTest, AVariableReadsTheSlotOfItsPart) {
    const Variable x = variable<VornInt>("x");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->reference(), main->valueRef(part(main.get(), "x")));
    EXPECT_EQ(x->part(), part(main.get(), "x"));
    EXPECT_EQ(x->type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(printed(*x), "x{=1:int}");
    EXPECT_EQ(printed(*variable<VornInt>("port")), "port{=9:int}");
}

TEST_F(VariablesToValueReferencesTest, AVariableOfASubcomponentGetsItsSlotFromThatSubcomponent) {
    const Variable n = variable<VornInt>("s1.s2.n");
    ASSERT_NE(n, nullptr);
    EXPECT_EQ(n->part(), part(s2(), "n"));
    EXPECT_EQ(n->reference(), s2()->valueRef(part(s2(), "n")));
    EXPECT_EQ(printed(*n), "n{=7:int}");
}

TEST_F(VariablesToValueReferencesTest, ATrajectoryVariableReadsTheRateSlot) {
    const Variable rate = rateOf<VornClock>("c");
    ASSERT_NE(rate, nullptr);
    EXPECT_EQ(rate->reference(), main->valueRefTrajectory(part(main.get(), "c")));
    EXPECT_EQ(rate->part(), part(main.get(), "c"));
    EXPECT_EQ(printed(*rate), "c{=1:clock}");
    EXPECT_EQ(printed(*rateOf<VornContinuous>("v")), "v{=0:continuous}");
}

TEST_F(VariablesToValueReferencesTest, TheTypeIsThatOfTheVariableAndNotThatOfThePart) {
    const Variable lie = variable<VornInterval>("x");
    ASSERT_NE(lie, nullptr);
    EXPECT_EQ(lie->type(), VornDataTypeTag::VornInterval);
    EXPECT_EQ(lie->reference(), main->valueRef(part(main.get(), "x")));
}

TEST_F(VariablesToValueReferencesTest, ANameThatDoesNotResolveIsAnErrorRecordAndNull) {
    const std::string text = "Unable to find id linked to variable ";
    for (const char* name : {"nothing", "s1.nothing", "s9.n", "s1.s2", "go"}) {
        log.clear();
        EXPECT_EQ(variable<VornInt>(name), nullptr) << name;
        EXPECT_EQ(rateOf<VornInt>(name), nullptr) << name;
        EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Error, VALREF, text + name},
                                                         {LogLevel::Error, VALREF, text + name}}));
    }
}

TEST_F(VariablesToValueReferencesTest, XPlusXHasTwoVariablesAndOneReference) {
    const Tree sum = binary<VornPlus, VornInt, VornInt>(typedVar<VornInt>("x"), typedVar<VornInt>("x"));
    const VariablesToValueReferences owner = subject();
    VariableSubstitutionExpressionVisitor visitor(&owner);
    const Tree result(sum->accept(&visitor));
    ASSERT_EQ(visitor.getReferences().size(), 2u);
    EXPECT_NE(visitor.getReferences()[0], visitor.getReferences()[1]);
    EXPECT_EQ(printed(*result), "x{=1:int} + x{=1:int}");

    const VornAssignment assignment(var<VornInt>("x"), sum->clone());
    const std::unique_ptr<RealisedAssignment> realised(owner(&assignment));
    EXPECT_EQ(realised->refsInAssignment(),
              (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, main->valueRef(part(main.get(), "x"))}}));
    realised->applyAssignment();
    realised->applyAssignment();
    EXPECT_EQ(printed(*variable<VornInt>("x")), "x{=4:int}");
}

TEST_F(VariablesToValueReferencesTest, ReferencesComeInTheOrderOfTheTextWithTheMissingOnesAsNull) {
    const TypedCaseOperator<VornInt> cases(
        {{typedVar<VornBool>("flag"), typedVar<VornInt>("x")},
         {typedVar<VornBool>("s1.flag"), typedVar<VornInt>("zz")}},
        new TypedUnaryOperator<VornInvert, VornInt, VornInt>(typedVar<VornInt>("s1.s2.n")));
    const VariablesToValueReferences owner = subject();
    VariableSubstitutionExpressionVisitor visitor(&owner);
    const Tree result(cases.accept(&visitor));
    const auto references = visitor.getReferences();
    ASSERT_EQ(references.size(), 5u);
    const std::vector<const RealisedIdentifier*> parts = {part(main.get(), "flag"), part(main.get(), "x"),
                                                          part(s1(), "flag"), nullptr, part(s2(), "n")};
    for (std::size_t i = 0; i < parts.size(); ++i)
        EXPECT_EQ(references[i] == nullptr ? nullptr : references[i]->part(), parts[i]) << "position " << i;
    // Neither condition holds, so the result is the default -n, and the missing value is not evaluated.
    const Value value(result->evaluationResult());
    EXPECT_EQ(printed(*value), "-7");
    EXPECT_EQ(log.texts(VALREF), std::vector<std::string>{"Unable to find id linked to variable zz"});
}

TEST_F(VariablesToValueReferencesTest, ARealisedVariableInATreeIsKeptWithOneWarningEach) {
    const Variable x = variable<VornInt>("x");
    auto* typed = dynamic_cast<TypedRealisedVariable<VornInt>*>(x.get());
    const Tree sum = binary<VornPlus, VornInt, VornInt>(static_cast<TypedVornExpressionTree<VornInt>*>(typed->clone()),
                                                        static_cast<TypedVornExpressionTree<VornInt>*>(typed->clone()));
    const VariablesToValueReferences owner = subject();
    VariableSubstitutionExpressionVisitor visitor(&owner);
    const Tree result(sum->accept(&visitor));
    EXPECT_EQ(printed(*result), "x{=1:int} + x{=1:int}");
    EXPECT_TRUE(visitor.getReferences().empty());
    const LogRecord warning{LogLevel::Warn, "root.constructors.subst",
                            "This is strange, we want to replace variables with value references, why is there already "
                            "a value reference here?"};
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{warning, warning}));
}

TEST_F(VariablesToValueReferencesTest, AMissingOperandFailsOnlyWhenItIsEvaluated) {
    const Tree result =
        rewritten(*binary<VornPlus, VornInt, VornInt>(typedVar<VornInt>("x"), typedVar<VornInt>("nothing")));
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(printed(*result), "x{=1:int} + (null)");
    EXPECT_THROW(Value(result->evaluationResult()), missing_operand);
}

TEST_F(VariablesToValueReferencesTest, AnUnresolvedNameAloneBecomesNull) {
    EXPECT_EQ(rewritten(TypedVornVariable<VornInt>("nothing")), nullptr);
    EXPECT_EQ(subject()(static_cast<const VornExpressionTree*>(nullptr)), nullptr);
}

TEST_F(VariablesToValueReferencesTest, AnAssignmentWhoseRightSideIsOnlyAnUnresolvedNameFailsWhenApplied) {
    const VornAssignment assignment(var<VornInt>("x"), var<VornInt>("nothing"));
    const std::unique_ptr<RealisedAssignment> realised(subject()(&assignment));
    ASSERT_NE(realised, nullptr);
    EXPECT_TRUE(realised->refsInAssignment().empty());
    EXPECT_EQ(printed(*realised->assignment()), "(null)");
    EXPECT_THROW(realised->applyAssignment(), missing_operand);
    EXPECT_EQ(printed(*variable<VornInt>("x")), "x{=1:int}");
    EXPECT_EQ(log.texts(VALREF), std::vector<std::string>{"Unable to find id linked to variable nothing"});
}

TEST_F(VariablesToValueReferencesTest, AFlowKeepsItsModesAndItsSources) {
    const RealisedMode* up = modeNamed(main.get(), "up");
    const VornFlow flow(var<VornInt>("x"), var<VornInt>("s1.s2.n"), {"up"});
    const std::unique_ptr<RealisedFlow> realised(subject()(&flow, {up}));
    ASSERT_NE(realised, nullptr);
    EXPECT_EQ(realised->activeIn(), ModeList{up});
    EXPECT_EQ(realised->refsInAssignment(),
              (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, s2()->valueRef(part(s2(), "n"))}}));
    realised->applyAssignment();
    EXPECT_EQ(printed(*variable<VornInt>("x")), "x{=7:int}");
}

TEST_F(VariablesToValueReferencesTest, SidesOfTypesThatDoNotFitGiveNullWithoutAMessage) {
    const VornAssignment assignment(var<VornBool>("flag"), constant<VornInt>(1));
    const VornFlow flow(var<VornBool>("flag"), constant<VornInt>(1), {});
    EXPECT_EQ(subject()(&assignment), nullptr);
    EXPECT_EQ(subject()(&flow, {}), nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, ATrajectoryMovesTheVariableAndAssignsTheRate) {
    const std::unique_ptr<VornTrajectoryEquation> equation(rate<VornInt>("v", -3));
    const std::unique_ptr<RealisedTrajectoryEquation> realised(subject()(equation.get()));
    ASSERT_NE(realised, nullptr);
    EXPECT_EQ(realised->variable()->reference(), main->valueRef(part(main.get(), "v")));
    EXPECT_EQ(realised->target()->reference(), main->valueRefTrajectory(part(main.get(), "v")));
    realised->applyTime(2.0);
    realised->applyAssignment();
    EXPECT_EQ(printed(*variable<VornContinuous>("v")), "v{=-2:continuous}");
    EXPECT_EQ(printed(*rateOf<VornContinuous>("v")), "v{=-3:continuous}");
}

TEST_F(VariablesToValueReferencesTest, ATrajectoryWithARateThatIsNoNumberIsNone) {
    const std::unique_ptr<VornTrajectoryEquation> equation(rate<VornBool>("v", true));
    EXPECT_EQ(subject()(equation.get()), nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, AMissingLeftOrRightSideNamesTheComponentAndTheFault) {
    const VariablesToValueReferences substitute{s1(), valuation};
    const VornAssignment noTarget(var<VornInt>("zz"), constant<VornInt>(1));
    const VornAssignment nullTarget(nullptr, constant<VornInt>(1));
    const VornAssignment noValue(var<VornBool>("flag"), nullptr);
    const VornFlow flow(var<VornBool>("flag"), nullptr, {});
    const std::unique_ptr<VornTrajectoryEquation> unknown(rate<VornReal>("zz", 1.0));
    const TypedVornTrajectoryEquation<VornReal> nullVariable(nullptr, constant<VornReal>(1.0));
    const TypedVornTrajectoryEquation<VornReal> nullRate(new TypedVornVariable<VornContinuous>("v"), nullptr);
    const std::string left = "Component main.s1: the left side of an assignment";
    EXPECT_EQ(faultOf([&] { substitute(&noTarget); }), left + ", \"zz\", names nothing with a value");
    EXPECT_EQ(faultOf([&] { substitute(&nullTarget); }), left + " is no variable of a type that can be assigned there");
    EXPECT_EQ(faultOf([&] { substitute(&noValue); }),
              "Component main.s1: the assignment to \"flag\" has no valid right side");
    EXPECT_EQ(faultOf([&] { substitute(&flow, {}); }),
              "Component main.s1: the assignment to \"flag\" has no valid right side");
    EXPECT_EQ(faultOf([&] { substitute(unknown.get()); }), left + ", \"zz\", names nothing with a value");
    EXPECT_EQ(faultOf([&] { substitute(&nullVariable); }),
              left + " is no variable of a type that can be assigned there");
    EXPECT_EQ(faultOf([&] { substitute(&nullRate); }),
              "Component main.s1: the assignment to \"v\" has no valid right side");
}

TEST_F(VariablesToValueReferencesTest, AModeTakesOverInvariantAndTrajectoriesAndLeavesOutWhatHasNoType) {
    const VornMode syntax(9, "m", plainly(var<VornBool>("flag")),
                          {rate<VornReal>("v", 0.5), rate<VornEnum>("v", "red"), rate<VornInt>("v", 2)},
                          VornModeType::plain);
    RealisedMode mode(9, "m", VornModeType::plain);
    subject()(&syntax, &mode);
    std::ostringstream text;
    mode.printInvariants(text);
    EXPECT_EQ(text.str(), " while flag{=0:bool} and v{=4:continuous}' = 0.5 and v{=4:continuous}' = 2");
    const VornMode bare(9, "m", nullptr, {}, VornModeType::plain);
    subject()(&bare, &mode);
    EXPECT_EQ(mode.invariant(), nullptr);
    EXPECT_TRUE(mode.trajectories().empty());
}

}  // namespace
}  // namespace vornrun::test

#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"

#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using Tree = std::unique_ptr<VornExpressionTree>;
using Variable = std::unique_ptr<RealisedVariable>;
using Value = std::unique_ptr<VornValue>;

constexpr const char* VALREF = "root.realisation.valref";

template <class T>
TypedVornExpressionTree<T>* typedVar(const std::string& name) {
    return new TypedVornVariable<T>(name);
}
template <class Op, class Result, class T>
Tree binary(TypedVornExpressionTree<T>* left, TypedVornExpressionTree<T>* right) {
    return std::make_unique<TypedBinaryOperator<Op, Result, T, T>>(left, right);
}

std::string textOf(const VornExpressionTree& tree) {
    std::ostringstream stream;
    tree.printExpression(stream);
    return stream.str();
}

template <class Call>
std::string faultOf(const Call& call) {
    try {
        call();
    } catch (const model_exception& fault) {
        return fault.what();
    }
    return "nothing was thrown";
}

/// "main" with the modes down and up, the subcomponent s1, and in it the subcomponent s2.
class VariablesToValueReferencesTest : public testing::Test {
  protected:
    VariablesToValueReferencesTest() {
        const auto& leaf = model.component(
            "Leaf",
            ComponentDraft().mode("low", VornModeType::initial).mode("high").data<VornInt>("n", constant<VornInt>(7)));
        const auto& middle = model.component(
            "Middle",
            ComponentDraft().mode("only", VornModeType::initial).subcomponent("s2", leaf).data<VornBool>("flag"));
        const auto& top = model.component("Top", ComponentDraft()
                                                     .mode("down", VornModeType::initial)
                                                     .mode("up")
                                                     .mode("a:b")
                                                     .eventPort("go", PortDirection::in)
                                                     .dataPort<VornInt>("port", PortDirection::in, constant<VornInt>(9))
                                                     .data<VornInt>("x", constant<VornInt>(1))
                                                     .data<VornReal>("r", constant<VornReal>(2.5))
                                                     .data<VornClock>("c", constant<VornClock>(3.0))
                                                     .data<VornContinuous>("v", constant<VornContinuous>(4.0))
                                                     .data<VornBool>("flag")
                                                     .subcomponent("s1", middle));
        VornModelConstructor constructor;
        const auto [realised, values] = constructor.realise(&top);
        main.reset(realised);
        valuation = values;
        log.clear();
    }

    VariablesToValueReferences subject() const { return {main.get(), valuation}; }
    const VornComponentRealisation* s1() const { return main->findSubcomponent("s1"); }
    const VornComponentRealisation* s2() const { return s1()->findSubcomponent("s2"); }
    const RealisedPart* part(const VornComponentRealisation* component, const std::string& name) const {
        const VornReference reference(name);
        return dynamic_cast<const RealisedPart*>(component->findIdentifier(&reference));
    }
    template <class T>
    Variable variable(const std::string& name) const {
        const TypedVornVariable<T> syntax(name);
        return Variable(subject().substituteVariable(&syntax));
    }
    template <class T>
    Variable rateOf(const std::string& name) const {
        const TypedVornVariable<T> syntax(name);
        return Variable(subject().substituteTrajVariable(&syntax));
    }
    Tree rewritten(const VornExpressionTree& tree) const { return Tree(subject()(&tree)); }
    /// The mode that a literal becomes; null when it becomes nothing.
    const RealisedMode* modeOf(const std::string& text) const {
        const std::unique_ptr<VornValue> literal(modeLiteral(text));
        const Value value(subject().substituteValue(literal.get()));
        if (value == nullptr) return nullptr;
        const auto& typed = dynamic_cast<const TypedVornValue<VornModeVal>&>(*value);
        EXPECT_FALSE(typed.owned());
        return typed.value();
    }
    static const RealisedMode* modeNamed(const VornComponentRealisation* component, const std::string& name) {
        for (const auto& mode : component->modes())
            if (mode->name() == name) return mode.get();
        return nullptr;
    }

    SyntaxModel model;
    CapturedLog log{LogLevel::Info};
    std::unique_ptr<VornComponentRealisation> main;
    ValuationPtr valuation;
};

TEST_F(VariablesToValueReferencesTest, AVariableReadsTheSlotOfItsPart) {
    const Variable x = variable<VornInt>("x");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->reference(), main->valueRef(part(main.get(), "x")));
    EXPECT_EQ(x->part(), part(main.get(), "x"));
    EXPECT_EQ(x->type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(textOf(*x), "x{=1:int}");
    EXPECT_EQ(textOf(*variable<VornInt>("port")), "port{=9:int}");
}

TEST_F(VariablesToValueReferencesTest, AVariableOfASubcomponentGetsItsSlotFromThatSubcomponent) {
    const Variable n = variable<VornInt>("s1.s2.n");
    ASSERT_NE(n, nullptr);
    EXPECT_EQ(n->part(), part(s2(), "n"));
    EXPECT_EQ(n->reference(), s2()->valueRef(part(s2(), "n")));
    EXPECT_EQ(textOf(*n), "n{=7:int}");
}

TEST_F(VariablesToValueReferencesTest, ATrajectoryVariableReadsTheRateSlot) {
    const Variable rate = rateOf<VornClock>("c");
    ASSERT_NE(rate, nullptr);
    EXPECT_EQ(rate->reference(), main->valueRefTrajectory(part(main.get(), "c")));
    EXPECT_EQ(rate->part(), part(main.get(), "c"));
    EXPECT_EQ(textOf(*rate), "c{=1:clock}");
    EXPECT_EQ(textOf(*rateOf<VornContinuous>("v")), "v{=0:continuous}");
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

TEST_F(VariablesToValueReferencesTest, ALiteralWithThreeElementsDropsTheLastAndFollowsTheOthers) {
    EXPECT_EQ(modeOf("s1.s2.v:high"), modeNamed(s2(), "high"));
    EXPECT_NE(modeOf("s1.s2.v:high"), nullptr);
    EXPECT_EQ(modeOf("s1.anything at all:only"), modeNamed(s1(), "only"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, ALiteralWithOneElementStaysInTheComponent) {
    EXPECT_EQ(modeOf("s1:up"), modeNamed(main.get(), "up"));
    EXPECT_EQ(modeOf("mode:down"), modeNamed(main.get(), "down"));
    EXPECT_EQ(modeOf(":up"), modeNamed(main.get(), "up"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, ALiteralWithoutColonAndDotIsAModeOfTheComponent) {
    EXPECT_EQ(modeOf("up"), modeNamed(main.get(), "up"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, OnlyTheFirstColonSplits) {
    EXPECT_EQ(modeOf("v:a:b"), modeNamed(main.get(), "a:b"));
    EXPECT_NE(modeOf("v:a:b"), nullptr);
}

struct BadLiteral {
    const char* name;
    const char* text;
    const char* record;
};
void PrintTo(const BadLiteral& literal, std::ostream* stream) { *stream << literal.text; }

class UnresolvedLiteral : public VariablesToValueReferencesTest, public testing::WithParamInterface<BadLiteral> {};

TEST_P(UnresolvedLiteral, IsAnErrorRecordAndNull) {
    EXPECT_EQ(modeOf(GetParam().text), nullptr);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Error, VALREF, GetParam().record}}));
}

INSTANTIATE_TEST_SUITE_P(
    Literals, UnresolvedLiteral,
    testing::Values(BadLiteral{"UnknownSubcomponent", "s1.zz.v:high",
                               "Unable to find subcomponent zz for mode path s1.zz.v:high"},
                    BadLiteral{"UnknownFirstSubcomponent", "zz.s2.v:high",
                               "Unable to find subcomponent zz for mode path zz.s2.v:high"},
                    BadLiteral{"EmptyElement", "s1..v:high", "Unable to find subcomponent  for mode path s1..v:high"},
                    BadLiteral{"LeadingDot", ".v:up", "Unable to find subcomponent  for mode path .v:up"},
                    BadLiteral{"UnknownMode", "s1.v:high", "Unable to find mode high for mode path s1.v:high"},
                    BadLiteral{"ModeNamesAreExact", "v:Up", "Unable to find mode Up for mode path v:Up"},
                    BadLiteral{"EmptyModeName", "v:", "Unable to find mode  for mode path v:"},
                    BadLiteral{"EmptyText", "", "Unable to find mode  for mode path "},
                    BadLiteral{"DotWithoutColon", "s1.only", "Unable to find mode s1.only for mode path s1.only"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(VariablesToValueReferencesTest, APlaceholderInTheSyntaxTreeIsReplacedAndNotChanged) {
    const std::unique_ptr<TypedVornValue<VornModeVal>> literal(modeLiteral("v:up"));
    const RealisedMode* placeholder = literal->value();
    const Value value(subject().substituteValue(literal.get()));
    EXPECT_EQ(literal->value(), placeholder);
    EXPECT_EQ(placeholder->id(), RealisedMode::DUMMY_ID);
    EXPECT_EQ(placeholder->name(), "v:up");
}

TEST_F(VariablesToValueReferencesTest, ValuesOfOtherTypesAndTheNullModeAreCopied) {
    const TypedVornValue<VornInt> number(5);
    const TypedVornValue<VornEnum> colour("v:up");
    const TypedVornValue<VornModeVal> none(nullptr);
    const Value numberCopy(subject().substituteValue(&number));
    const Value colourCopy(subject().substituteValue(&colour));
    const Value noneCopy(subject().substituteValue(&none));
    EXPECT_EQ(textOf(*numberCopy), "5");
    EXPECT_EQ(textOf(*colourCopy), "v:up");
    EXPECT_EQ(textOf(*noneCopy), "(null)");
    EXPECT_NE(numberCopy.get(), &number);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(VariablesToValueReferencesTest, XPlusXHasTwoVariablesAndOneReference) {
    const Tree sum = binary<VornPlus, VornInt, VornInt>(typedVar<VornInt>("x"), typedVar<VornInt>("x"));
    const VariablesToValueReferences owner = subject();
    VariableSubstitutionExpressionVisitor visitor(&owner);
    const Tree result(sum->accept(&visitor));
    ASSERT_EQ(visitor.getReferences().size(), 2u);
    EXPECT_NE(visitor.getReferences()[0], visitor.getReferences()[1]);
    EXPECT_EQ(textOf(*result), "x{=1:int} + x{=1:int}");

    const VornAssignment assignment(var<VornInt>("x"), sum->clone());
    const std::unique_ptr<RealisedAssignment> realised(owner(&assignment));
    EXPECT_EQ(realised->refsInAssignment(),
              (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, main->valueRef(part(main.get(), "x"))}}));
    realised->applyAssignment();
    realised->applyAssignment();
    EXPECT_EQ(textOf(*variable<VornInt>("x")), "x{=4:int}");
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
    // Neither condition holds, so the default -n comes out, and the missing value is not touched.
    const Value value(result->evaluationResult());
    EXPECT_EQ(textOf(*value), "-7");
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
    EXPECT_EQ(textOf(*result), "x{=1:int} + x{=1:int}");
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
    EXPECT_EQ(textOf(*result), "x{=1:int} + (null)");
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
    EXPECT_EQ(textOf(*realised->assignment()), "(null)");
    EXPECT_THROW(realised->applyAssignment(), missing_operand);
    EXPECT_EQ(textOf(*variable<VornInt>("x")), "x{=1:int}");
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
    EXPECT_EQ(textOf(*variable<VornInt>("x")), "x{=7:int}");
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
    EXPECT_EQ(textOf(*variable<VornContinuous>("v")), "v{=-2:continuous}");
    EXPECT_EQ(textOf(*rateOf<VornContinuous>("v")), "v{=-3:continuous}");
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

/// One clause: `condition` and coefficient * variable <= constant.
VornLinearExpression linear(TypedVornExpressionTree<VornBool>* plain, TypedVornExpressionTree<VornBool>* condition,
                            VornExpressionTree* variable, VornExpressionTree* coefficient, VornExpressionTree* bound) {
    auto* comparison = new LinExp(bound, parser::OperatorType::LEq);
    comparison->addTerm(variable, variable == nullptr ? nullptr : variable->clone(), coefficient);
    auto* clause = new Clause(condition);
    clause->addExpr(comparison);
    return VornLinearExpression(plain, {clause});
}

TEST_F(VariablesToValueReferencesTest, ALinearExpressionReadsValueAndRateOfItsVariables) {
    const VornLinearExpression syntax =
        linear(typedVar<VornBool>("flag"), nullptr, var<VornClock>("c"), var<VornInt>("x"), var<VornReal>("r"));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    ASSERT_EQ(realised->clauses().size(), 1u);
    EXPECT_EQ(realised->clauses()[0]->condition(), nullptr);
    ASSERT_EQ(realised->clauses()[0]->expressions().size(), 1u);
    const LinExp& comparison = *realised->clauses()[0]->expressions()[0];
    EXPECT_EQ(comparison.op(), parser::OperatorType::LEq);
    EXPECT_EQ(textOf(*comparison.constant()), "r{=2.5:real}");
    ASSERT_EQ(comparison.terms().size(), 1u);
    EXPECT_EQ(textOf(*comparison.terms()[0].variable), "c{=3:clock}");
    EXPECT_EQ(textOf(*comparison.terms()[0].rate), "c{=1:clock}");
    EXPECT_EQ(textOf(*comparison.terms()[0].coefficient), "x{=1:int}");
    EXPECT_FALSE(realised->holds());
    // 1 * c <= 2.5 with c = 3, running at rate 1, is over; with c = 1 it lasts for another 1.5.
    EXPECT_TRUE(realised->holdsWhile().empty());
    valuation->setValue<VornClock>(main->valueRef(part(main.get(), "c")), 1.0);
    EXPECT_EQ(realised->holdsWhile().upper, 1.5);
}

TEST_F(VariablesToValueReferencesTest, TheConditionOfAClauseIsRewritten) {
    const VornLinearExpression syntax = linear(typedVar<VornBool>("flag"), typedVar<VornBool>("s1.flag"),
                                               var<VornClock>("c"), constant<VornReal>(1.0), constant<VornReal>(9.0));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_TRUE(realised->holdsWhile().empty());
    valuation->setValue<VornBool>(s1()->valueRef(part(s1(), "flag")), true);
    EXPECT_EQ(realised->holdsWhile().upper, 6.0);
}

TEST_F(VariablesToValueReferencesTest, AConditionThatDoesNotResolveFailsAndIsNeverTakenForTrue) {
    const VornLinearExpression syntax = linear(constant<VornBool>(true), typedVar<VornBool>("nothing"),
                                               var<VornClock>("c"), constant<VornReal>(1.0), constant<VornReal>(9.0));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_TRUE(realised->holds());
    EXPECT_THROW(realised->holdsWhile(), missing_operand);
}

TEST_F(VariablesToValueReferencesTest, ABareGuardThatDoesNotResolveFailsWhenEvaluated) {
    const std::unique_ptr<VornLinearExpression> syntax(plainly(var<VornBool>("nothing")));
    const std::unique_ptr<VornLinearExpression> realised(subject()(syntax.get()));
    ASSERT_NE(realised, nullptr);
    EXPECT_THROW(realised->holds(), missing_operand);
    EXPECT_THROW(realised->holdsWhile(), missing_operand);
}

TEST_F(VariablesToValueReferencesTest, AMissingPartOfAComparisonFailsWhenEvaluated) {
    const auto one = [] { return constant<VornReal>(1.0); };
    const auto cases = [&] {
        std::vector<std::unique_ptr<VornLinearExpression>> all;
        const auto add = [&all](VornLinearExpression* expression) { all.emplace_back(expression); };
        const auto with = [](VornExpressionTree* variable, VornExpressionTree* factor, VornExpressionTree* bound) {
            auto* comparison = new LinExp(bound, parser::OperatorType::LEq);
            comparison->addTerm(variable, variable == nullptr ? nullptr : variable->clone(), factor);
            auto* clause = new Clause(nullptr);
            clause->addExpr(comparison);
            return new VornLinearExpression(constant<VornBool>(true), {clause});
        };
        add(with(nullptr, one(), one()));
        add(with(var<VornClock>("nothing"), one(), one()));
        add(with(var<VornClock>("c"), nullptr, one()));
        add(with(var<VornClock>("c"), one(), nullptr));
        add(with(var<VornClock>("c"), one(), var<VornReal>("nothing")));
        return all;
    }();
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const std::unique_ptr<VornLinearExpression> realised(subject()(cases[i].get()));
        EXPECT_THROW(realised->holdsWhile(), missing_operand) << "case " << i;
    }
}

TEST_F(VariablesToValueReferencesTest, ATermThatIsNoVariableIsRefusedWithComponentAndText) {
    const VornLinearExpression syntax = linear(constant<VornBool>(true), nullptr, constant<VornReal>(4.5),
                                               constant<VornReal>(1.0), constant<VornReal>(9.0));
    EXPECT_EQ(faultOf([&] { subject()(&syntax); }),
              "Component main: \"4.5\" stands for a variable in a linear comparison, but is none");
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

TEST_F(VariablesToValueReferencesTest, ReferencesBeyondTheirStoreAreCollectedAndRefusedByName) {
    StraySlots strays;
    const VariablesToValueReferences substitute(main.get(), valuation, &strays);
    const TypedVornVariable<VornInt> truthful("x");
    const TypedVornVariable<VornEnum> lie("x");
    const TypedVornVariable<VornEnum> deepLie("s1.s2.n");
    const Variable first(substitute.substituteVariable(&truthful));
    EXPECT_TRUE(strays.empty());
    EXPECT_NO_THROW(refuseStraySlots(strays, *valuation));
    const Variable second(substitute.substituteVariable(&lie));
    const Variable third(substitute.substituteTrajVariable(&deepLie));
    ASSERT_EQ(strays.size(), 2u);
    EXPECT_EQ(faultOf([&] { refuseStraySlots(strays, *valuation); }),
              "Component main: variable \"x\" is used as VornEnum, which is not the type that it was declared with");
    // Slots that come later make the reference one that can be read.
    while (!valuation->contains(VornDataTypeTag::VornEnum, second->reference()))
        valuation->addValue<VornEnum>(nullptr, "");
    strays.erase(strays.begin() + 1);
    EXPECT_NO_THROW(refuseStraySlots(strays, *valuation));
}

}  // namespace
}  // namespace vornrun::test

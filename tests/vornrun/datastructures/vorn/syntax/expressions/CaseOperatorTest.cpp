#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using Events = std::vector<std::string>;
using RealCase = TypedCaseOperator<VornReal>;
using IntCase = TypedCaseOperator<VornInt>;

TEST(CaseOperator, SelectsTheFirstConditionThatHoldsAndEvaluatesNoLaterOne) {
    Events events;
    const IntCase node({{new Probe<VornBool>("c1", false, events), new Probe<VornInt>("v1", 1, events)},
                        {new Probe<VornBool>("c2", true, events), new Probe<VornInt>("v2", 2, events)},
                        {new Probe<VornBool>("c3", true, events), new Probe<VornInt>("v3", 3, events)}},
                       new Probe<VornInt>("default", 4, events));
    EXPECT_EQ(node.evaluateDirect(), 2);
    EXPECT_EQ(events, (Events{"c1 evaluated", "c2 evaluated", "v2 evaluated"}));
}

TEST(CaseOperator, WithoutATrueConditionEvaluatesTheDefault) {
    const IntCase node({{constant<VornBool>(false), constant<VornInt>(1)}}, constant<VornInt>(4));
    EXPECT_EQ(node.evaluateDirect(), 4);
}

TEST(CaseOperator, WithoutAnyCaseEvaluatesTheDefault) {
    EXPECT_EQ(IntCase({}, constant<VornInt>(4)).evaluateDirect(), 4);
}

TEST(CaseOperator, ConvertsABranchOfAnotherType) {
    const RealCase node({{constant<VornBool>(true), constant<VornInt>(3)}}, constant<VornInterval>(4));
    EXPECT_EQ(node.evaluateDirect(), 3.0);
    EXPECT_EQ(node.type(), VornDataTypeTag::VornReal);
    EXPECT_EQ(RealCase({}, constant<VornInterval>(4)).evaluateDirect(), 4.0);
    EXPECT_EQ(TypedCaseOperator<VornInterval>({}, constant<VornInt>(5)).evaluateDirect(), 5);
    EXPECT_EQ(TypedCaseOperator<VornClock>({}, constant<VornContinuous>(0.5)).evaluateDirect(), 0.5);
}

TEST(CaseOperator, FailsAtEvaluationWhenTheSelectedBranchDoesNotConvert) {
    const IntCase node({{constant<VornBool>(false), constant<VornReal>(1.5)}}, constant<VornInt>(4));
    EXPECT_EQ(node.evaluateDirect(), 4) << "a branch that is not selected does not matter";
    const IntCase selected({{constant<VornBool>(true), constant<VornReal>(1.5)}}, constant<VornInt>(4));
    try {
        static_cast<void>(selected.evaluateDirect());
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Requested invalid conversion from real to int (value=1.5)");
    }
}

TEST(CaseOperator, PrintsItsCasesAndDefault) {
    EXPECT_EQ(printed(IntCase({{constant<VornBool>(true), constant<VornInt>(1)},
                               {new TypedVornVariable<VornBool>("sub.b"), constant<VornInt>(2)}},
                              constant<VornInt>(3))),
              "case 1 : 1; sub.b : 2 otherwise 3 end");
    EXPECT_EQ(printed(IntCase({{constant<VornBool>(true), constant<VornInt>(1)}}, constant<VornInt>(3))),
              "case 1 : 1 otherwise 3 end");
    EXPECT_EQ(printed(IntCase({}, constant<VornInt>(3))), "case  otherwise 3 end");
}

TEST(CaseOperator, DeletesTheDefaultThenEachConditionAndValueInOrder) {
    Events events;
    {
        const IntCase node({{new Probe<VornBool>("c1", false, events), new Probe<VornInt>("v1", 1, events)},
                            {new Probe<VornBool>("c2", true, events), new Probe<VornInt>("v2", 2, events)}},
                           new Probe<VornInt>("default", 4, events));
    }
    EXPECT_EQ(events, (Events{"default deleted", "c1 deleted", "v1 deleted", "c2 deleted", "v2 deleted"}));
}

TEST(CaseOperator, ShowsItsChildrenToVisitors) {
    auto* const condition = constant<VornBool>(true);
    auto* const value = constant<VornInt>(1);
    auto* const otherwise = constant<VornInt>(2);
    const IntCase node({{condition, value}}, otherwise);
    LastVisited visitor;
    EXPECT_EQ(node.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.kind, "case");
    ASSERT_NE(visitor.cases, nullptr);
    const std::vector<CasePair> expected = {{condition, value}};
    EXPECT_EQ(visitor.cases->getCases(), expected);
    EXPECT_EQ(visitor.cases->getDefaultTree(), static_cast<VornExpressionTree*>(otherwise));
}

TEST(CaseOperator, ClonesDeeply) {
    Events events;
    const IntCase node({{new Probe<VornBool>("c", true, events), new Probe<VornInt>("v", 1, events)}},
                       new Probe<VornInt>("d", 2, events));
    const std::unique_ptr<IntCase> copy(node.clone());
    EXPECT_EQ(printed(*copy), "case c' : v' otherwise d' end");
    EXPECT_EQ(copy->evaluateDirect(), 1);
}

TEST(CaseOperator, IsRewrittenFromPairsAndTheDefaultAtTheEnd) {
    const RealCase node({}, constant<VornReal>(0));
    const std::unique_ptr<RealCase> rewritten(
        node.clone({constant<VornBool>(false), constant<VornInt>(1), constant<VornBool>(true), constant<VornReal>(2.5),
                    constant<VornInterval>(3)}));
    EXPECT_EQ(printed(*rewritten), "case 0 : 1; 1 : 2.5 otherwise 3 end");
    EXPECT_EQ(rewritten->evaluateDirect(), 2.5);
}

TEST(CaseOperator, RewrittenOverAConditionThatIsNoBoolMissesIt) {
    Events events;
    const IntCase node({}, constant<VornInt>(0));
    const std::unique_ptr<IntCase> rewritten(
        node.clone({constant<VornBool>(false), constant<VornInt>(1), new Probe<VornInt>("number", 1, events),
                    constant<VornInt>(2), constant<VornInt>(3)}));
    EXPECT_EQ(events, (Events{"number deleted"}));
    EXPECT_EQ(printed(*rewritten), "case 0 : 1; (null) : 2 otherwise 3 end");
    EXPECT_EQ(rewritten->getCases()[1].first, nullptr);
    try {
        static_cast<void>(rewritten->evaluateDirect());
        FAIL();
    } catch (const missing_operand& error) {
        EXPECT_STREQ(error.what(),
                     "Condition 2 of 'case' (bool) is missing: a name in it did not resolve, or its type was changed");
    }
}

TEST(CaseOperator, MissingValueAndDefaultAreNamedWhenSelected) {
    const IntCase missingValue({{constant<VornBool>(true), nullptr}}, constant<VornInt>(1));
    const IntCase missingDefault({{constant<VornBool>(false), constant<VornInt>(1)}}, nullptr);
    EXPECT_EQ(printed(missingValue), "case 1 : (null) otherwise 1 end");
    EXPECT_EQ(printed(missingDefault), "case 0 : 1 otherwise (null) end");
    for (const auto& [node, text] :
         {std::pair{&missingValue,
                    "Value 1 of 'case' (int) is missing: a name in it did not resolve, or its type was "
                    "changed"},
          {&missingDefault,
           "Default of 'case' (int) is missing: a name in it did not resolve, or its type was "
           "changed"}}) {
        const std::unique_ptr<IntCase> copy(node->clone());
        try {
            static_cast<void>(copy->evaluateDirect());
            FAIL() << text;
        } catch (const missing_operand& error) {
            EXPECT_STREQ(error.what(), text);
        }
    }
}

TEST(CaseOperator, CopesWithListsThatHaveNoPairs) {
    Events events;
    const IntCase node({{constant<VornBool>(true), constant<VornInt>(1)}}, constant<VornInt>(2));
    const std::unique_ptr<IntCase> empty(node.clone(std::list<VornExpressionTree*>()));
    EXPECT_EQ(printed(*empty), "case  otherwise (null) end");
    const std::unique_ptr<IntCase> single(node.clone({constant<VornInt>(7)}));
    EXPECT_EQ(printed(*single), "case  otherwise 7 end");
    const std::unique_ptr<IntCase> stray(
        node.clone({new Probe<VornBool>("stray", true, events), constant<VornInt>(8)}));
    EXPECT_EQ(printed(*stray), "case  otherwise 8 end");
    EXPECT_EQ(events, (Events{"stray deleted"}));
}

TEST(CaseOperator, OverPlaceholderModesKeepsThemThroughEvaluation) {
    const TypedCaseOperator<VornModeVal> node(
        {}, new TypedVornValue<VornModeVal>(new RealisedMode(RealisedMode::DUMMY_ID, "on")));
    EXPECT_EQ(node.evaluateDirect()->name(), "on");
    { const std::unique_ptr<VornValue> box(node.evaluationResult()); }
    EXPECT_EQ(node.evaluateDirect()->name(), "on");
}

TEST(CaseOperator, OverStringsAndBools) {
    EXPECT_EQ(TypedCaseOperator<VornEnum>({{constant<VornBool>(true), constant<VornEnum>("red")}},
                                          constant<VornEnum>("green"))
                  .evaluateDirect(),
              "red");
    EXPECT_TRUE(TypedCaseOperator<VornBool>({}, constant<VornBool>(true)).evaluateDirect());
}

}  // namespace
}  // namespace vornrun::test

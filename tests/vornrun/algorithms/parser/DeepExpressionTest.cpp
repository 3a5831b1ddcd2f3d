// Expressions as deep as the stack allows, and deeper.

#include <gtest/gtest.h>

#include <thread>

#include "tests/support/CaseName.h"
#include "tests/support/OnStack.h"
#include "tests/vornrun/algorithms/parser/ExpressionTest.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun::test {
namespace {

const std::string LEAF_CONTENTS = "<node_type>0</node_type><value>True</value>";

/// A kind of expression within an expression: the text before and after the inner element.
struct Nesting {
    const char* name;
    std::string before;
    std::string inner;  // name of the inner element
    std::string behind;
    std::size_t tooMany;  // levels that no stack holds
};

std::string nested(const Nesting& nesting, std::size_t levels) {
    const auto open = [](const std::string& name, const std::string& type) {
        return "<" + name + " type='" + type + "'>";
    };
    const std::string type = nesting.before.substr(0, nesting.before.find(' '));
    const std::string before = "<node_type>0</node_type>" + nesting.before.substr(type.size() + 1);
    std::string text;
    std::string tail;
    for (std::size_t i = 0; i < levels; ++i) {
        text += open(i == 0 ? "e" : nesting.inner, type) + before;
        tail += nesting.behind + "</" + (i + 1 == levels ? "e" : nesting.inner) + ">";
    }
    return text + open(nesting.inner, "BooleanTreeNode") + LEAF_CONTENTS + "</" + nesting.inner + ">" + tail;
}

class DeepExpressions : public testing::TestWithParam<Nesting> {};

TEST_P(DeepExpressions, AreRefusedBeforeTheStackEnds) {
    const ExpressionDocument document(nested(GetParam(), GetParam().tooMany));
    std::string fault;
    // Half of this stack is less than so many of the smallest frames.
    onStackOf(std::size_t{2} * 1024 * 1024, [&] { fault = faultOf([&] { document.parse(); }); });
    EXPECT_EQ(fault, "Error while parsing: Expression is nested too deeply (Xml encoded invalid vorn.)");
}

TEST_P(DeepExpressions, ThatAreAcceptedCanBeClonedPrintedEvaluatedAndReclaimed) {
    const auto accepts = [](std::size_t levels) {
        const ExpressionDocument document(nested(GetParam(), levels));
        return faultOf([&] { document.parse(); }) == "no fault";
    };
    // Room for these is there in an instrumented build too, whose frames are several times as large.
    std::size_t deepest = 250;
    ASSERT_TRUE(accepts(deepest));
    for (std::size_t step = GetParam().tooMany / 2; step > 200; step /= 2)
        if (accepts(deepest + step)) deepest += step;
    RecordProperty("deepest", static_cast<int>(deepest));
    const ExpressionDocument document(nested(GetParam(), deepest));
    const std::unique_ptr<VornExpressionTree> tree = document.parse();
    ASSERT_NE(tree, nullptr);
    // On a stack of its own, as a worker has it.
    std::thread([&] {
        std::unique_ptr<VornExpressionTree> copy(tree->clone());
        EXPECT_EQ(printed(copy), printed(tree));
        const std::unique_ptr<VornValue> value(copy->evaluationResult());
        EXPECT_EQ(value->type(), VornDataTypeTag::VornBool);
        copy.reset();
    }).join();
}

INSTANTIATE_TEST_SUITE_P(
    ExpressionParser, DeepExpressions,
    testing::Values(Nesting{"Unary", "UnaryOperatorTreeNode <operator>15</operator>", "subexpression", "", 28000},
                    Nesting{"BinaryLeft",
                            "BinaryOperatorTreeNode <operator>10</operator><right type='BooleanTreeNode'>" +
                                LEAF_CONTENTS + "</right>",
                            "left", "", 28000},
                    Nesting{"BinaryRight",
                            "BinaryOperatorTreeNode <operator>10</operator><left type='BooleanTreeNode'>" +
                                LEAF_CONTENTS + "</left>",
                            "right", "", 28000},
                    Nesting{"CaseDefault", "CaseExpressionTreeNode <cases/>", "default_expression", "", 28000},
                    Nesting{"CaseValue",
                            "CaseExpressionTreeNode <default_expression type='BooleanTreeNode'>" + LEAF_CONTENTS +
                                "</default_expression><cases><tuple><c type='BooleanTreeNode'>" + LEAF_CONTENTS +
                                "</c>",
                            "v", "</tuple></cases>", 8000}),
    CaseName());

}  // namespace
}  // namespace vornrun::test

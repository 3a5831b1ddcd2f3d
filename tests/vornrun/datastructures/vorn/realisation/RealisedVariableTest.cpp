#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"

namespace vornrun::test {
namespace {

using RealisedVariableTest = RealisationFixture;

template <class T>
std::string textOf(TypedRealisedVariable<T>* adopted) {
    return printed(std::unique_ptr<TypedRealisedVariable<T>>(adopted));
}

TEST_F(RealisedVariableTest, PrintsNameValueAndTypeWord) {
    EXPECT_EQ(textOf(variable<VornBool>("v", true)), "v{=1:bool}");
    EXPECT_EQ(textOf(variable<VornReal>("v", 0.25)), "v{=0.25:real}");
    EXPECT_EQ(textOf(variable<VornInt>("v", -4)), "v{=-4:int}");
    EXPECT_EQ(textOf(variable<VornContinuous>("v", 1.5)), "v{=1.5:continuous}");
    EXPECT_EQ(textOf(variable<VornClock>("v", 2.0)), "v{=2:clock}");
    EXPECT_EQ(textOf(variable<VornEnum>("v", "red")), "v{=red:enum}");
    EXPECT_EQ(textOf(variable<VornInterval>("v", 7)), "v{=7:interval}");
    EXPECT_EQ(textOf(variable<VornModeVal>("v", b)), "v{=b:mode}");
    EXPECT_EQ(textOf(variable<VornModeVal>("v", nullptr)), "v{=(null):mode}");
}

TEST_F(RealisedVariableTest, ReadsTheTopOfTheStackOfLayers) {
    const std::unique_ptr<TypedRealisedVariable<VornInt>> n(variable<VornInt>("n", 1));
    EXPECT_EQ(n->evaluateDirect(), 1);
    {
        const ScopedLayer layer(*valuation);
        valuation->setValue<VornInt>(n->reference(), 5);
        EXPECT_EQ(n->evaluateDirect(), 5);
    }
    EXPECT_EQ(n->evaluateDirect(), 1);
}

TEST_F(RealisedVariableTest, ACloneReadsTheSameSlot) {
    const std::unique_ptr<TypedRealisedVariable<VornInt>> n(variable<VornInt>("n", 1));
    const std::unique_ptr<TypedRealisedVariable<VornInt>> copy(n->clone());
    const std::unique_ptr<TypedRealisedVariable<VornInt>> rebuilt(n->clone(std::list<VornExpressionTree*>()));
    valuation->setValue<VornInt>(n->reference(), 8);
    for (const auto* each : {copy.get(), rebuilt.get()}) {
        EXPECT_EQ(each->evaluateDirect(), 8);
        EXPECT_EQ(each->reference(), n->reference());
        EXPECT_EQ(each->part(), n->part());
        EXPECT_EQ(each->type(), VornDataTypeTag::VornInt);
    }
}

class OnlyRealisedVariables final : public ExpressionTreeVisitor {
  public:
    VornExpressionTree* visit(const VornVariable*) override { return fail(); }
    VornExpressionTree* visit(const VornValue*) override { return fail(); }
    VornExpressionTree* visit(const BinaryOperator*) override { return fail(); }
    VornExpressionTree* visit(const UnaryOperator*) override { return fail(); }
    VornExpressionTree* visit(const CaseOperator*) override { return fail(); }
    VornExpressionTree* visit(const RealisedVariable* variable) override {
        seen = variable;
        return nullptr;
    }
    const RealisedVariable* seen = nullptr;

  private:
    static VornExpressionTree* fail() {
        ADD_FAILURE() << "the wrong operation of the visitor was called";
        return nullptr;
    }
};

TEST_F(RealisedVariableTest, AVisitorMeetsItAsARealisedVariable) {
    const std::unique_ptr<TypedRealisedVariable<VornInt>> n(variable<VornInt>("n", 1));
    OnlyRealisedVariables visitor;
    EXPECT_EQ(n->accept(&visitor), nullptr);
    EXPECT_EQ(visitor.seen, n.get());
}

}  // namespace
}  // namespace vornrun::test

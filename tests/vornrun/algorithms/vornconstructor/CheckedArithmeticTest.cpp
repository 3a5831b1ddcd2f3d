// Models that are built with checked arithmetic.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>

#include "tests/support/Printed.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/CheckedDivision.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"

namespace vornrun::test {
namespace {

using namespace direct;
using testing::ThrowsMessage;

TypedVornVariable<VornInt>* number(const std::string& name) { return new TypedVornVariable<VornInt>(name); }

class CheckedArithmetic : public testing::Test {
  protected:
    /// n := 1 + n / zero, in a case expression.
    const VornComponentImplementation& dividing() {
        auto* quotient = new TypedBinaryOperator<VornDivide, VornInt, VornInt, VornInt>(number("n"), number("zero"));
        auto* sum = new TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(constant<VornInt>(1), quotient);
        auto* whole = new TypedCaseOperator<VornInt>({}, sum);
        return model.component("T", ComponentDraft()
                                        .mode("A", VornModeType::initial)
                                        .data<VornInt>("n", constant<VornInt>(7))
                                        .data<VornInt>("zero")
                                        .transition("A", "A", "", nullptr, {assign(var<VornInt>("n"), whole)}));
    }
    SyntaxModel model;
};

TEST_F(CheckedArithmetic, TurnsADivisionByZeroInsideAnExpressionIntoAnException) {
    VornModelConstructor constructor(ModelOptions{.checkedArithmetic = true});
    const std::unique_ptr<VornComponentRealisation> root(constructor.realise(&dividing()).first);
    EXPECT_THAT([&] { root->transitions()[0]->effects()[0]->applyAssignment(); },
                ThrowsMessage<arithmetic_fault>("No result of 'n{=7:int} / zero{=0:int}': division by zero"));
}

TEST_F(CheckedArithmetic, IsOffByDefaultAndTheProcessEndsByTheSignal) {
    VornModelConstructor constructor;
    const std::unique_ptr<VornComponentRealisation> root(constructor.realise(&dividing()).first);
    // Sanitizers take the signal for themselves unless its action is the default one.
    const auto apply = [&root] {
        std::signal(SIGFPE, SIG_DFL);
        root->transitions()[0]->effects()[0]->applyAssignment();
    };
    EXPECT_EXIT(apply(), testing::KilledBySignal(SIGFPE), "");
}

TEST_F(CheckedArithmetic, PrintsTheModelAsWithoutIt) {
    VornModelConstructor plain;
    VornModelConstructor checked(ModelOptions{.checkedArithmetic = true});
    const auto& component = dividing();
    const std::unique_ptr<VornComponentRealisation> one(plain.realise(&component).first);
    const std::unique_ptr<VornComponentRealisation> two(checked.realise(&component).first);
    EXPECT_EQ(printed(*one), printed(*two));
}

}  // namespace
}  // namespace vornrun::test

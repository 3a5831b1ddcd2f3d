#pragma once
/// \file
/// A small realised model and what its names become, for the tests of VariablesToValueReferences.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/Printed.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {

using namespace direct;

using Tree = std::unique_ptr<VornExpressionTree>;
using Variable = std::unique_ptr<RealisedVariable>;
using Value = std::unique_ptr<VornValue>;

inline constexpr const char* VALREF = "root.realisation.valref";

template <class T>
TypedVornExpressionTree<T>* typedVar(const std::string& name) {
    return new TypedVornVariable<T>(name);
}
template <class Op, class Result, class T>
Tree binary(TypedVornExpressionTree<T>* left, TypedVornExpressionTree<T>* right) {
    return std::make_unique<TypedBinaryOperator<Op, Result, T, T>>(left, right);
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
class SubstitutionFixture : public testing::Test {
  protected:
    SubstitutionFixture() {
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

}  // namespace vornrun::test

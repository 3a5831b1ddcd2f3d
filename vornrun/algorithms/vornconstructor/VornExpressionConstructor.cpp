#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"

#include <boost/spirit/home/support/detail/hold_any.hpp>
#include <cassert>

#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

const Log VornExpressionConstructor::sLogger("root.exprconstr");

void VornExpressionConstructor::reportPair(std::string_view left, std::string_view operation, std::string_view right) {
    VORNRUN_LOG(sLogger, Error, "Unsupported operator types: " << left << " " << operation << " " << right);
}

void VornExpressionConstructor::reportOperand(std::string_view operand, std::string_view operation) {
    VORNRUN_LOG(sLogger, Error, "Unsupported operator types: " << operand << " " << operation);
}

template <class Op>
VornExpressionTree* VornExpressionConstructor::expressionTree(VornExpressionTree* operand) {
    assert(operand != nullptr && "the caller tests its operand first");
    return withTagClass(operand->type(), [operand]<class Sub>() -> VornExpressionTree* {
        if constexpr (UnaryResultType<Op, Sub>::valid) {
            return new TypedUnaryOperator<Op, typename UnaryResultType<Op, Sub>::type, Sub>(
                dynamic_cast<TypedVornExpressionTree<Sub>*>(operand));
        } else {
            reportOperand(Sub::op, Op::text);
            return nullptr;
        }
    });
}

template VornExpressionTree* VornExpressionConstructor::expressionTree<VornNot>(VornExpressionTree*);
template VornExpressionTree* VornExpressionConstructor::expressionTree<VornInvert>(VornExpressionTree*);

VornExpressionTree* VornExpressionConstructor::expressionTree(VornDataTypeTag tag,
                                                              const boost::spirit::hold_any& value) {
    return withTagClass(tag, [&value]<class T>() -> VornExpressionTree* {
        return new TypedVornValue<T>(value.cast<typename T::AssociatedDataType>());
    });
}

VornVariable* VornExpressionConstructor::expressionVariable(VornDataTypeTag tag, const std::string& name) {
    return withTagClass(tag, [&name]<class T>() -> VornVariable* { return new TypedVornVariable<T>(name); });
}

}  // namespace vornrun

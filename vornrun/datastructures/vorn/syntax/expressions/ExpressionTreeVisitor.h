#pragma once
/// \file
/// The walk over expression trees by kind of node.

namespace vornrun {

class BinaryOperator;
class CaseOperator;
class RealisedVariable;
class UnaryOperator;
class VornExpressionTree;
class VornValue;
class VornVariable;

/// One operation per kind of node. Each returns the rewritten node, owned by the caller of accept(), or null; a
/// visitor that rewrites nothing returns null throughout.
class ExpressionTreeVisitor {
  public:
    virtual ~ExpressionTreeVisitor() = default;
    virtual VornExpressionTree* visit(const VornVariable* variable) = 0;
    virtual VornExpressionTree* visit(const VornValue* value) = 0;
    virtual VornExpressionTree* visit(const BinaryOperator* node) = 0;
    virtual VornExpressionTree* visit(const UnaryOperator* node) = 0;
    virtual VornExpressionTree* visit(const CaseOperator* node) = 0;
    virtual VornExpressionTree* visit(const RealisedVariable* variable) = 0;
};

}  // namespace vornrun

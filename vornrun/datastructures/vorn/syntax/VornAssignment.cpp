#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"

#include <utility>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

VornAssignment::VornAssignment(VornVariable* variable, VornExpressionTree* expression)
    : mVariable(variable), mExpression(expression) {}

void VornAssignment::printVorn(std::ostream& stream) const {
    syntax::printOrNull(stream, mVariable.get());
    stream << " :=  ";
    syntax::printOrNull(stream, mExpression.get());
}

VornFlow::VornFlow(VornVariable* variable, VornExpressionTree* expression, std::vector<std::string> inModes)
    : VornAssignment(variable, expression), mInModes(std::move(inModes)) {}

}  // namespace vornrun

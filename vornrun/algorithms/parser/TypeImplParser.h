#pragma once
/// \file
/// The `implementations` of a subpackage become component implementations.

#include "vornrun/algorithms/parser/VornXmlParser.h"

namespace vornrun {

class VornXmlParser::TypeImplParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser borrowed, for guards, invariants, effects, flows and default values
    TypeImplParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    /// Adds all implementations of a subpackage to the constructor's current section.
    void parseSubpackageImpls(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage);
};

}  // namespace vornrun

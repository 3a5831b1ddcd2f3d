#pragma once
/// \file
/// The `types` of a subpackage become component declarations with their ports.

#include "vornrun/algorithms/parser/VornXmlParser.h"

namespace vornrun {

class VornXmlParser::TypeDeclParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser borrowed, for default values
    TypeDeclParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    /// Adds all declarations of a subpackage to the constructor's current section.
    void parseSubpackageTypes(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage);
};

}  // namespace vornrun

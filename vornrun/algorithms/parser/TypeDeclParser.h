#pragma once
/// \file
/// The element `types` of a subpackage becomes component declarations with their ports.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMNodeList;
XERCES_CPP_NAMESPACE_END

namespace vornrun {

/// What a pass over the types is for. Types are read in a single pass, so that nothing depends on it.
enum class TypeParserMode { declarations, definitions };

class VornXmlParser::TypeDeclParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser for default values; not owned, outlives this object
    TypeDeclParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    void setMode(TypeParserMode mode) noexcept { mMode = mode; }
    TypeParserMode mode() const noexcept { return mMode; }

    /// Adds the declarations of a subpackage to the section that the constructor is filling.
    /// \throws VornXmlException for a fault of the file
    /// \throws std::invalid_argument for a rate that is not positive
    void parseSubpackageTypes(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage) const;
    /// One `ComponentType`; the caller owns the result. Throws as above.
    VornComponentDeclaration* parseTypeDeclaration(const xercesc::DOMElement* element) const;

  private:
    using Ports = std::vector<std::unique_ptr<VornPort>>;

    VornComponentCategory parseCategory(const xercesc::DOMElement* element) const;
    /// The ports among the nodes of a list. Elements of an unexpected name are skipped with a warning.
    Ports parsePorts(const xercesc::DOMNodeList* nodes, PortType type, PortDirection direction) const;
    std::unique_ptr<VornPort> parseEventPort(const xercesc::DOMElement* element, PortDirection direction) const;
    std::unique_ptr<VornPort> parseDataPort(const xercesc::DOMElement* element, PortDirection direction) const;
    /// Always an out port, whatever list it stands in.
    std::unique_ptr<VornPort> parseErrorPort(const xercesc::DOMElement* element, PortDirection direction) const;
    bool parseNonblocking(const xercesc::DOMElement* element) const;
    PortTag parsePortTag(const xercesc::DOMElement* element, const std::string& portName) const;
    /// The name of the elements that a port list is made for.
    const XMLCh* getPortTag(PortDirection direction, PortType type) const;
    bool featureTagMatches(const xercesc::DOMElement* element, PortType type, PortDirection direction) const;

    const ExpressionParser* mExpressionParser;
    TypeParserMode mMode = TypeParserMode::declarations;
};

}  // namespace vornrun

#pragma once
/// \file
/// The element `types` of a subpackage becomes component declarations with their ports.

#include <string>
#include <vector>

#include "vornrun/algorithms/parser/Owned.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMNodeList;
XERCES_CPP_NAMESPACE_END

namespace vornrun {

/// The purpose of a pass over the types. Types are read in a single pass, so that nothing depends on it.
enum class TypeParserMode { declarations, definitions };

/// Each operation throws VornXmlException for a fault of the file. The caller owns each result.
/// \pre no element is null
class VornXmlParser::TypeDeclParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser for default values; not owned, not null, outlives this object
    TypeDeclParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    void setMode(TypeParserMode mode) noexcept { mMode = mode; }
    TypeParserMode mode() const noexcept { return mMode; }

    /// Adds the declarations of a subpackage to the current section of the constructor.
    /// \throws std::invalid_argument for a rate that is not positive
    void parseSubpackageTypes(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage) const;
    /// One `ComponentType`. \throws std::invalid_argument for a rate that is not positive
    VornComponentDeclaration* parseTypeDeclaration(const xercesc::DOMElement* element) const;
    /// The ports among the child nodes of a port list, in their order. An element of another name than getPortTag() and
    /// `ErrorEventPort` is skipped with a warning. \throws std::invalid_argument for a rate that is not positive
    std::vector<VornPort*> parsePorts(const xercesc::DOMNodeList* nodes, PortType type, PortDirection direction) const;
    VornEventPort* parseEventPort(const xercesc::DOMElement* element, PortDirection direction) const;
    VornDataPort* parseDataPort(const xercesc::DOMElement* element, PortDirection direction) const;
    /// An out port, also in a list of in ports.
    /// \throws std::invalid_argument for a rate that is not positive
    VornErrorPort* parseErrorPort(const xercesc::DOMElement* element, PortDirection direction) const;
    /// The name of the elements in a port list of that kind; owned by the parser.
    const XMLCh* getPortTag(PortDirection direction, PortType type) const;
    /// Whether the element has that name.
    bool featureTagMatches(const xercesc::DOMElement* element, PortType type, PortDirection direction) const;

  private:
    VornComponentCategory parseCategory(const xercesc::DOMElement* element) const;
    parser::Owned<VornPort> readPorts(const xercesc::DOMNodeList* nodes, PortType type, PortDirection direction) const;
    bool parseNonblocking(const xercesc::DOMElement* element) const;
    PortTag parsePortTag(const xercesc::DOMElement* element, const std::string& portName) const;

    const ExpressionParser* mExpressionParser;
    TypeParserMode mMode = TypeParserMode::declarations;
};

}  // namespace vornrun

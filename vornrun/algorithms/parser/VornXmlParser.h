#pragma once
/// \file
/// The door to the two input files: a model file becomes a VornSpecification, a property file a list of formulas.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"

namespace vornrun {

class CSLFormula;
class VornPackage;
class VornPackageConstructor;
class VornSpecification;

class VornXmlParser final : public parser::AbstractVornXmlParser {
  public:
    class ExpressionParser;
    class PropertyParser;
    class TypeDeclParser;
    class TypeImplParser;

    /// \throws parser::VornXmlParserException "Failure initializing xerces"
    explicit VornXmlParser(parser::XmlContext& context);
    ~VornXmlParser() override;  // the classes of the members are incomplete here

    /// The model of the file; the caller owns it. Nothing but the file itself is read.
    /// \throws VornXmlException for a fault of the file
    /// \throws std::invalid_argument for a rate that is not positive or a subcomponent reference that misses
    VornSpecification* parseVorn(const std::string& file);
    /// The formulas to be checked, in file order; the caller owns them.
    /// \throws VornXmlException for a fault of the file
    std::vector<CSLFormula*> parseProperties(const std::string& file);

  private:
    class DocumentReader;  // the DOM parser with its error handler and its bounds

    void expectRoot(const xercesc::DOMElement* root, const XMLCh* tag, bool local) const;
    VornSpecification* buildModel(const xercesc::DOMElement* root);
    std::vector<std::unique_ptr<VornPackage>> parsePackages(const xercesc::DOMElement* element);
    std::unique_ptr<VornPackage> parsePackage(const xercesc::DOMElement* element);
    void parseSubpackage(VornPackageConstructor& constructor, const xercesc::DOMElement* element, bool isPrivate);

    std::unique_ptr<DocumentReader> mReader;
    std::unique_ptr<ExpressionParser> mExpressionParser;
    std::unique_ptr<TypeDeclParser> mTypeDeclParser;
    std::unique_ptr<TypeImplParser> mTypeImplParser;
    std::unique_ptr<PropertyParser> mPropertyParser;
};

}  // namespace vornrun

#pragma once
/// \file
/// Parses the two input files: a model file becomes a VornSpecification, a property file a list of formulas.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"
#include "vornrun/algorithms/parser/Owned.h"

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

    /// \throws parser::XmlLibraryException "Failure initializing xerces"
    explicit VornXmlParser(parser::XmlContext& context);
    ~VornXmlParser() override;  // in the source, where the classes of the members are complete

    /// The model of the file; the caller owns it. Nothing but the file itself is read.
    /// \throws VornXmlException for a fault of the file
    /// \throws std::invalid_argument for a rate that is not positive or a subcomponent reference that misses
    VornSpecification* parseVorn(const std::string& file);
    /// The formulas to be checked, in file order; the caller owns them. Nothing but the file itself is read.
    /// \throws VornXmlException for a fault of the file
    std::vector<CSLFormula*> parseProperties(const std::string& file);
    /// Where the cause of a std::invalid_argument of the last call is, when that is known: such an exception has no
    /// place itself.
    const std::optional<SourcePlace>& placeOfInvalidArgument() const noexcept { return notedPlace(); }

    // The steps of parseVorn(). Each takes an element that is not null and throws as parseVorn() does. The caller owns
    // each result. References are resolved in the documents that this parser, or buildContext(), has read.

    /// The model below the root `CompileInformation`. Only the last list of packages counts, but each is parsed.
    VornSpecification* buildModel(const xercesc::DOMElement* root);
    /// The packages of one list, in their order.
    std::vector<VornPackage*> parsePackages(const xercesc::DOMElement* element);
    VornPackage* parsePackage(const xercesc::DOMElement* element);
    /// Adds the types and implementations of a subpackage to the section of the package in work.
    /// \param isPrivate whether it is the private section
    void parseSubpackage(VornPackageConstructor& constructor, const xercesc::DOMElement* element, bool isPrivate);

  private:
    class DocumentReader;  // the DOM parser with its error handler and its bounds

    void expectRoot(const xercesc::DOMElement* root, const XMLCh* tag, bool local) const;
    parser::Owned<VornPackage> readPackages(const xercesc::DOMElement* element);

    std::unique_ptr<DocumentReader> mReader;
    std::unique_ptr<ExpressionParser> mExpressionParser;
    std::unique_ptr<TypeDeclParser> mTypeDeclParser;
    std::unique_ptr<TypeImplParser> mTypeImplParser;
    std::unique_ptr<PropertyParser> mPropertyParser;
};

}  // namespace vornrun

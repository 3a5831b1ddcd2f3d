#include "vornrun/algorithms/parser/VornXmlParser.h"

#include <optional>
#include <utility>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "vornrun/algorithms/parser/DocumentReader.h"
#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/PropertyParser.h"
#include "vornrun/algorithms/parser/TypeDeclParser.h"
#include "vornrun/algorithms/parser/TypeImplParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"
#include "vornrun/datastructures/vorn/syntax/VornPackage.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun {

using parser::at;
using parser::VornInvalidXmlException;
using parser::VornXmlParserException;
using parser::VornXmlUnexpectedNodeException;
using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

constexpr const char* UNEXPECTED = "Unexpected Xercesc exception";

/// The place of a fault of form; none when the library does not know the line.
std::optional<SourcePlace> placeIn(const std::string& file, const xercesc::SAXParseException& fault) {
    if (fault.getLineNumber() == 0) return std::nullopt;
    return parser::ElementPlaces(file).place(fault.getLineNumber(), fault.getColumnNumber());
}

/// Calls `read`, and turns what the XML library throws into faults of the file.
/// \param faultOfForm makes the fault for a document that is not well-formed, but for its place
template <class Read, class FaultOfForm>
const DOMDocument* withoutLibraryFaults(const std::string& file, Read&& read, FaultOfForm&& faultOfForm) {
    try {
        return read();
    } catch (const VornXmlException&) {
        throw;
    } catch (const xercesc::SAXParseException& fault) {
        throw at(placeIn(file, fault), faultOfForm(fault));
    } catch (const xercesc::XMLException& fault) {
        throw VornXmlParserException(parser::util::transcode(fault.getMessage()));
    } catch (const xercesc::DOMException& fault) {
        throw VornInvalidXmlException(parser::util::transcode(fault.getMessage()));
    } catch (...) {
        throw VornXmlParserException(UNEXPECTED);
    }
}

const DOMElement* rootOf(const DOMDocument* document) {
    const DOMElement* root = document == nullptr ? nullptr : document->getDocumentElement();
    if (root == nullptr) throw VornInvalidXmlException("No root element found");
    return root;
}

}  // namespace

VornXmlParser::VornXmlParser(parser::XmlContext& context) : AbstractVornXmlParser(context) {
    if (!xercesInitialized()) throw parser::XmlLibraryException(xercesFault());
    mReader = std::make_unique<DocumentReader>();
    mExpressionParser = std::make_unique<ExpressionParser>(context);
    shareWith(*mExpressionParser);
    mTypeDeclParser = std::make_unique<TypeDeclParser>(context, mExpressionParser.get());
    mTypeImplParser = std::make_unique<TypeImplParser>(context, mExpressionParser.get());
    mPropertyParser = std::make_unique<PropertyParser>(context, mExpressionParser.get());
}

VornXmlParser::~VornXmlParser() = default;

VornSpecification* VornXmlParser::parseVorn(const std::string& file) {
    const DOMDocument* document = withoutLibraryFaults(
        file, [&] { return mReader->read(file); },
        [](const xercesc::SAXParseException& fault) {
            return VornInvalidXmlException(parser::util::transcode(fault.getMessage()));
        });
    const DOMElement* root = rootOf(document);
    buildContext(document);
    expectRoot(root, tags().compileInformation, false);
    return buildModel(root);
}

std::vector<CSLFormula*> VornXmlParser::parseProperties(const std::string& file) {
    // Here, a document that is not well-formed is among the unexpected faults.
    const DOMDocument* document = withoutLibraryFaults(
        file, [&] { return mReader->read(file); },
        [](const xercesc::SAXParseException&) { return VornXmlParserException(UNEXPECTED); });
    const DOMElement* root = rootOf(document);
    buildContext(document);
    expectRoot(root, tags().formulae, true);
    return mPropertyParser->parseProperties(root);
}

void VornXmlParser::expectRoot(const DOMElement* root, const XMLCh* tag, bool local) const {
    if (!parser::util::elemMatchesTag(root, tag, local))
        throw at(root,
                 VornXmlUnexpectedNodeException("", parser::util::transcode(tag), parser::util::nodeName(root, local)));
}

VornSpecification* VornXmlParser::buildModel(const DOMElement* root) {
    parser::Owned<VornPackage> packages;
    // Only the last list counts, but a fault in any list is a fault.
    for (const DOMElement* list : listChildrenWithTag(root, tags().packages)) packages = readPackages(list);
    if (packages.empty()) throw at(root, parser::VornXmlCorruptedVornException("Found no packages"));
    return new VornSpecification(parser::released(std::move(packages)));
}

std::vector<VornPackage*> VornXmlParser::parsePackages(const DOMElement* element) {
    return parser::released(readPackages(element));
}

parser::Owned<VornPackage> VornXmlParser::readPackages(const DOMElement* element) {
    return parser::parsedFrom<VornPackage>(listChildren(element), [&](const DOMElement* child) {
        if (!parser::util::elemMatchesTag(child, tags().package))
            throw at(child, VornXmlUnexpectedNodeException("", parser::util::transcode(tags().package),
                                                           parser::util::nodeName(child)));
        return parsePackage(child);
    });
}

VornPackage* VornXmlParser::parsePackage(const DOMElement* element) {
    VornPackageConstructor constructor(getNameFromChildNodes(element));
    for (const DOMElement* child : listOwnChildren(element)) {
        // As in a list of packages, the name of the target counts. A child of another name is not read, so that it may
        // refer to nothing.
        const DOMElement* const named = referencedOrItself(child);
        if (parser::util::elemMatchesTag(named, tags().publicSubpackage))
            parseSubpackage(constructor, reach(child), false);
        else if (parser::util::elemMatchesTag(named, tags().privateSubpackage))
            parseSubpackage(constructor, reach(child), true);
    }
    return constructor.takePackage();
}

void VornXmlParser::parseSubpackage(VornPackageConstructor& constructor, const DOMElement* element, bool isPrivate) {
    constructor.setPrivate(isPrivate);
    mTypeDeclParser->parseSubpackageTypes(constructor, element);
    mTypeImplParser->parseSubpackageImpls(constructor, element);
}

}  // namespace vornrun

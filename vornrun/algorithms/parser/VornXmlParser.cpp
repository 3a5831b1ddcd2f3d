#include "vornrun/algorithms/parser/VornXmlParser.h"

#include <utility>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "vornrun/algorithms/parser/DocumentReader.h"
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

using parser::VornInvalidXmlException;
using parser::VornXmlParserException;
using parser::VornXmlUnexpectedNodeException;
using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

/// Turns what the XML library throws into faults of the file.
template <class Read>
const DOMDocument* withoutLibraryFaults(Read&& read) {
    try {
        return read();
    } catch (const VornXmlException&) {
        throw;
    } catch (const xercesc::XMLException& fault) {
        throw VornXmlParserException(parser::util::transcode(fault.getMessage()));
    } catch (const xercesc::DOMException& fault) {
        throw VornInvalidXmlException(parser::util::transcode(fault.getMessage()));
    } catch (...) {
        throw VornXmlParserException("Unexpected Xercesc exception");
    }
}

const DOMElement* rootOf(const DOMDocument* document) {
    const DOMElement* root = document == nullptr ? nullptr : document->getDocumentElement();
    if (root == nullptr) throw VornInvalidXmlException("No root element found");
    return root;
}

}  // namespace

VornXmlParser::VornXmlParser(parser::XmlContext& context) : AbstractVornXmlParser(context) {
    if (!xercesInitialized()) throw VornXmlParserException("Failure initializing xerces");
    mReader = std::make_unique<DocumentReader>();
    mExpressionParser = std::make_unique<ExpressionParser>(context);
    countTogetherWith(*mExpressionParser);
    mTypeDeclParser = std::make_unique<TypeDeclParser>(context, mExpressionParser.get());
    mTypeImplParser = std::make_unique<TypeImplParser>(context, mExpressionParser.get());
    mPropertyParser = std::make_unique<PropertyParser>(context, mExpressionParser.get());
}

VornXmlParser::~VornXmlParser() = default;

VornSpecification* VornXmlParser::parseVorn(const std::string& file) {
    const DOMDocument* document = withoutLibraryFaults([&] {
        try {
            return mReader->read(file);
        } catch (const xercesc::SAXParseException& fault) {
            throw VornInvalidXmlException(parser::util::transcode(fault.getMessage()));
        }
    });
    const DOMElement* root = rootOf(document);
    buildContext(document);
    expectRoot(root, tags().compileInformation, false);
    return buildModel(root);
}

std::vector<CSLFormula*> VornXmlParser::parseProperties(const std::string& file) {
    // A fault of the document's form has no case of its own here: it is among the unexpected ones.
    const DOMDocument* document = withoutLibraryFaults([&] { return mReader->read(file); });
    const DOMElement* root = rootOf(document);
    buildContext(document);
    expectRoot(root, tags().formulae, true);
    return mPropertyParser->parseProperties(root);
}

void VornXmlParser::expectRoot(const DOMElement* root, const XMLCh* tag, bool local) const {
    if (!parser::util::elemMatchesTag(root, tag, local))
        throw VornXmlUnexpectedNodeException("", parser::util::transcode(tag), parser::util::nodeName(root, local));
}

VornSpecification* VornXmlParser::buildModel(const DOMElement* root) {
    std::vector<std::unique_ptr<VornPackage>> packages;
    // Only the last list counts, but every list has to be free of faults.
    for (const DOMElement* list : listChildrenWithTag(root, tags().packages)) packages = parsePackages(list);
    if (packages.empty()) throw parser::VornXmlCorruptedVornException("Found no packages");
    std::vector<VornPackage*> adopted;
    adopted.reserve(packages.size());
    for (std::unique_ptr<VornPackage>& package : packages) adopted.push_back(package.release());
    return new VornSpecification(adopted);
}

std::vector<std::unique_ptr<VornPackage>> VornXmlParser::parsePackages(const DOMElement* element) {
    std::vector<std::unique_ptr<VornPackage>> packages;
    for (const DOMElement* child : listChildren(element)) {
        if (!parser::util::elemMatchesTag(child, tags().package))
            throw VornXmlUnexpectedNodeException("", parser::util::transcode(tags().package),
                                                 parser::util::nodeName(child));
        packages.push_back(parsePackage(child));
    }
    return packages;
}

std::unique_ptr<VornPackage> VornXmlParser::parsePackage(const DOMElement* element) {
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
    return std::unique_ptr<VornPackage>(constructor.takePackage());
}

void VornXmlParser::parseSubpackage(VornPackageConstructor& constructor, const DOMElement* element, bool isPrivate) {
    constructor.setPrivate(isPrivate);
    mTypeDeclParser->parseSubpackageTypes(constructor, element);
    mTypeImplParser->parseSubpackageImpls(constructor, element);
}

}  // namespace vornrun

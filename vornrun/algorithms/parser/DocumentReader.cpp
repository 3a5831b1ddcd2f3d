#include "vornrun/algorithms/parser/DocumentReader.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <vector>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "vornrun/algorithms/parser/BoundedMemory.h"
#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun {

using parser::at;
using parser::BoundedMemory;
using parser::ElementPlaces;
using parser::VornInvalidXmlException;
using xercesc::InputSource;
using xercesc::XMLString;

namespace {

constexpr const char* EXPANDS_WITHOUT_BOUND = "The document expands without bound";

}  // namespace

/// The bytes of a file, counted.
class VornXmlParser::DocumentReader::FileStream final : public xercesc::BinInputStream {
  public:
    FileStream(std::ifstream file, BoundedMemory& memory) : mFile(std::move(file)), mMemory(memory) {}

    XMLFilePos curPos() const override { return mPosition; }
    const XMLCh* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) override {
        mFile.read(reinterpret_cast<char*>(toFill), static_cast<std::streamsize>(maxToRead));
        const auto count = static_cast<std::size_t>(mFile.gcount());
        mPosition += count;
        mMemory.addDocumentBytes(count);
        return count;
    }

  private:
    std::ifstream mFile;
    BoundedMemory& mMemory;
    XMLFilePos mPosition = 0;
};

/// A file by its path. The library's own source takes a path of the form "http:..." for an address, and loses the
/// characters that the locale does not have.
class VornXmlParser::DocumentReader::FileSource final : public InputSource {
  public:
    FileSource(const std::string& file, BoundedMemory& memory) : mFile(file), mMemory(memory) {
        // Only for messages: nothing is resolved against it.
        std::error_code unknown;
        const std::filesystem::path absolute = std::filesystem::absolute(file, unknown);
        XMLCh* systemId = XMLString::transcode((unknown ? file : absolute.lexically_normal().string()).c_str());
        setSystemId(systemId);
        XMLString::release(&systemId);
    }

    xercesc::BinInputStream* makeStream() const override {
        std::ifstream file(mFile, std::ios::binary);
        // Null makes the library say that it cannot open the file.
        return file ? new FileStream(std::move(file), mMemory) : nullptr;
    }

  private:
    std::string mFile;
    BoundedMemory& mMemory;
};

/// The library asks it for everything outside the file.
class VornXmlParser::DocumentReader::Resolver final : public xercesc::XMLEntityResolver {
  public:
    /// The document names an external part of its type: the library asks for it next.
    void expectExternalSubset(const XMLCh* systemId) { mExternalSubset = parser::util::transcode(systemId); }
    /// \param places makes the place of a fault; not owned
    void startAfresh(const ElementPlaces* places) {
        mExternalSubset.reset();
        mPlaces = places;
    }

    InputSource* resolveEntity(xercesc::XMLResourceIdentifier* identifier) override {
        const std::string wanted = parser::util::transcode(identifier->getSystemId());
        if (mExternalSubset != wanted) {
            const xercesc::Locator* const locator = identifier->getLocator();
            const auto place =
                locator == nullptr
                    ? std::nullopt
                    : std::optional(mPlaces->place(locator->getLineNumber(), locator->getColumnNumber()));
            throw at(place, VornInvalidXmlException("The document needs the external entity '" + wanted +
                                                    "', and nothing outside the file is read"));
        }
        VORNRUN_LOG(sLogger, Warn,
                    "The external document type '" << wanted << "' is not read: nothing outside the file is.");
        mExternalSubset.reset();
        static constexpr XMLByte NOTHING[] = {' '};
        return new xercesc::MemBufInputSource(NOTHING, 1, identifier->getSystemId(), false);
    }

  private:
    std::optional<std::string> mExternalSubset;
    const ElementPlaces* mPlaces = nullptr;
};

/// Notes the document type and the places of elements, and refuses what the library only reports.
class VornXmlParser::DocumentReader::Parser final : public xercesc::XercesDOMParser {
  public:
    Parser(BoundedMemory& memory, Resolver& resolver) : XercesDOMParser(nullptr, &memory), mResolver(resolver) {}

    void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId, const XMLCh* const systemId,
                     const bool hasInternalSubset, const bool hasExternalSubset) override {
        XercesDOMParser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
        mExternalSubset = hasExternalSubset ? systemId : nullptr;
        // The library asks for what the internal part needs first; that is not the external part.
        if (!hasInternalSubset && hasExternalSubset) mResolver.expectExternalSubset(systemId);
    }

    void endIntSubset() override {
        XercesDOMParser::endIntSubset();
        if (mExternalSubset != nullptr) mResolver.expectExternalSubset(mExternalSubset);
    }

    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uri, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override {
        if (mDepth == DEPTH_LIMIT) refuse("The document is nested too deeply");
        if (attributeCount > ATTRIBUTE_LIMIT) refuse("An element has too many attributes");
        const std::size_t depth = mDepth++;
        XercesDOMParser::startElement(declaration, uri, prefix, attributes, attributeCount, isEmpty, isRoot);
        if (isEmpty) mDepth = depth;  // the library may have reported its end already
        endOfEvent();
    }

    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uri, const bool isRoot,
                    const XMLCh* const prefix) override {
        --mDepth;
        XercesDOMParser::endElement(declaration, uri, isRoot, prefix);
        endOfEvent();
    }

    // The other events between two start tags.

    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCData) override {
        XercesDOMParser::docCharacters(text, length, isCData);
        endOfEvent();
    }
    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCData) override {
        XercesDOMParser::ignorableWhitespace(text, length, isCData);
        endOfEvent();
    }
    void docComment(const XMLCh* const text) override {
        XercesDOMParser::docComment(text);
        endOfEvent();
    }
    void docPI(const XMLCh* const target, const XMLCh* const data) override {
        XercesDOMParser::docPI(target, data);
        endOfEvent();
    }
    void XMLDecl(const XMLCh* const version, const XMLCh* const encoding, const XMLCh* const standalone,
                 const XMLCh* const actualEncoding) override {
        XercesDOMParser::XMLDecl(version, encoding, standalone, actualEncoding);
        endOfEvent();
    }
    void startEntityReference(const xercesc::XMLEntityDecl& entity) override {
        XercesDOMParser::startEntityReference(entity);
        endOfEvent();
    }
    void endEntityReference(const xercesc::XMLEntityDecl& entity) override {
        XercesDOMParser::endEntityReference(entity);
        endOfEvent();
    }

    /// Prepares for the next document, wherever the reading of the last one ended.
    void startAfresh(const std::string& file) {
        mDepth = 0;
        mExternalSubset = nullptr;
        mPlaces.push_back(std::make_unique<ElementPlaces>(file));
        mResolver.startAfresh(mPlaces.back().get());
        mLine = 1;
        mColumn = 1;
    }

    /// Gives the elements of the document that was just read their places.
    void attachPlaces() {
        if (const xercesc::DOMDocument* const document = getDocument()) mPlaces.back()->attachTo(document);
    }

    /// Throws a fault at the last place that is known.
    [[noreturn]] void refuse(const std::string& why) const {
        throw at(mPlaces.back()->place(mLine, mColumn), VornInvalidXmlException(why));
    }

    void error(const unsigned int code, const XMLCh* const domain, const ErrTypes type, const XMLCh* const text,
               const XMLCh* const systemId, const XMLCh* const publicId, const XMLFileLoc line,
               const XMLFileLoc column) override {
        // The only report of an entity that the unread document type may declare. The library would leave it out.
        if (code == xercesc::XMLValid::VC_EntityNotFound &&
            XMLString::equals(domain, xercesc::XMLUni::fgValidityDomain))
            refuse("The document does not declare all that it needs: " + parser::util::transcode(text));
        // Without a grammar each element is an error of validation, which does not matter.
        if (type != XMLErrorReporter::ErrType_Fatal) return;
        if (code == xercesc::XMLErrs::EntityExpansionLimitExceeded &&
            XMLString::equals(domain, xercesc::XMLUni::fgXMLErrDomain))
            refuse(EXPANDS_WITHOUT_BOUND);
        XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
    }

  protected:
    xercesc::DOMElement* createElementNS(const XMLCh* space, const XMLCh* prefix, const XMLCh* localName,
                                         const XMLCh* name) override {
        xercesc::DOMElement* const element = XercesDOMParser::createElementNS(space, prefix, localName, name);
        mPlaces.back()->add(element, mLine, mColumn);
        return element;
    }

  private:
    /// Notes where the scanner is. The library reports a start tag at the tag's end; the tag begins where the event
    /// before it ended.
    void endOfEvent() {
        const xercesc::Locator* const locator = getScanner()->getLocator();
        mLine = locator->getLineNumber();
        mColumn = locator->getColumnNumber();
    }

    Resolver& mResolver;
    std::size_t mDepth = 0;
    const XMLCh* mExternalSubset = nullptr;  // valid while the document type is read
    XMLFileLoc mLine = 1;
    XMLFileLoc mColumn = 1;
    std::vector<std::unique_ptr<ElementPlaces>> mPlaces;  // one for each document
};

struct VornXmlParser::DocumentReader::State {
    // In this order, since the parser and its documents use the memory until they end.
    BoundedMemory memory;
    xercesc::HandlerBase errorHandler;  // throws on a fatal error, ignores the others
    xercesc::SecurityManager security;
    Resolver resolver;
    Parser domParser{memory, resolver};
};

VornXmlParser::DocumentReader::DocumentReader() : mState(std::make_unique<State>()) {
    mState->security.setEntityExpansionLimit(ENTITY_EXPANSION_LIMIT);
    Parser& parser = mState->domParser;
    parser.setValidationScheme(Parser::Val_Always);
    parser.setDoNamespaces(true);
    // With grammar caching the library refuses any document with declarations of its own.
    parser.cacheGrammarFromParse(false);
    parser.setErrorHandler(&mState->errorHandler);
    parser.setXMLEntityResolver(&mState->resolver);
    parser.setDisableDefaultEntityResolution(true);
    parser.setSecurityManager(&mState->security);
    parser.setCreateEntityReferenceNodes(false);
    parser.setCreateCommentNodes(false);
}

VornXmlParser::DocumentReader::~DocumentReader() = default;

const xercesc::DOMDocument* VornXmlParser::DocumentReader::read(const std::string& file) {
    std::error_code unknown;
    if (std::filesystem::is_directory(file, unknown))
        throw VornInvalidXmlException("'" + file + "' is a folder, not a file");
    mState->domParser.startAfresh(file);
    try {
        mState->domParser.parse(FileSource(file, mState->memory));
    } catch (const xercesc::OutOfMemoryException&) {
        if (mState->memory.exceeded()) mState->domParser.refuse(EXPANDS_WITHOUT_BOUND);
        throw;
    }
    mState->domParser.attachPlaces();
    return mState->domParser.getDocument();
}

}  // namespace vornrun

#pragma once
/// \file
/// The door through which the two input files come in. A file may come from a stranger: nothing but the file itself is
/// read for it, and what it makes the XML library do is bounded in time and memory.

#include <memory>
#include <string>

#include "vornrun/algorithms/parser/VornXmlParser.h"

namespace vornrun {

/// Reads files into documents, which live as long as the reader. An external document type is left unread, which a
/// WARN tells; references to other files in it, schema locations and inclusions are not followed.
class VornXmlParser::DocumentReader {
  public:
    /// Entities that a document may refer to, counting every reference inside every replacement text. With the
    /// library's own default of 50,000, files with a named character in each of many thousand names would be refused.
    static constexpr std::size_t ENTITY_EXPANSION_LIMIT = 100'000;

    /// Elements within elements, and attributes of one element. The library's work for an element grows with the one,
    /// its work for an attribute with the other, so that reading would not stay linear.
    static constexpr std::size_t DEPTH_LIMIT = 30'000;
    static constexpr std::size_t ATTRIBUTE_LIMIT = 1'000;

    DocumentReader();
    DocumentReader(const DocumentReader&) = delete;
    DocumentReader& operator=(const DocumentReader&) = delete;
    ~DocumentReader();  // the classes of the members are incomplete here

    /// The document of a file; owned by the reader.
    /// \throws xercesc::SAXParseException, xercesc::XMLException, xercesc::DOMException as the library does: for a file
    ///         that cannot be read, that is not well-formed, or that is empty
    /// \throws parser::VornInvalidXmlException for a folder, a document that needs an external entity, or one that
    ///         exceeds the bounds
    const xercesc::DOMDocument* read(const std::string& file);

  private:
    class FileSource;
    class FileStream;
    class Resolver;
    class Parser;
    struct State;

    std::unique_ptr<State> mState;
};

}  // namespace vornrun

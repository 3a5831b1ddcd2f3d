#pragma once
/// \file
/// Reads the two input files. A file may be from a stranger: nothing outside the file is read, and the work of the XML
/// library on it is bounded in time and memory.

#include <memory>
#include <string>

#include "vornrun/algorithms/parser/VornXmlParser.h"

namespace vornrun {

/// Reads files into documents, which live as long as the reader. An external document type is not read, with a WARN.
/// Schema locations and inclusions are not followed. Belongs to one thread.
class VornXmlParser::DocumentReader {
  public:
    /// How many references to entities a document may have, those inside replacement texts included. The library's own
    /// default of 50,000 is too low for files with a named character in each of many thousand names.
    static constexpr std::size_t ENTITY_EXPANSION_LIMIT = 100'000;

    /// How deep elements may be nested, and how many attributes an element may have. The library's work for an element
    /// grows with its depth, its work for an attribute with their number. Without limits, reading would not be linear.
    static constexpr std::size_t DEPTH_LIMIT = 30'000;
    static constexpr std::size_t ATTRIBUTE_LIMIT = 1'000;

    DocumentReader();
    DocumentReader(const DocumentReader&) = delete;
    DocumentReader& operator=(const DocumentReader&) = delete;
    ~DocumentReader();  // in the source, where State is complete

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

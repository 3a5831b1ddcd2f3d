#pragma once
/// \file
/// A set of element names, each transcoded once, so that comparing one with a name of a document allocates nothing.

#include <memory>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

namespace vornrun::parser {

/// Base of classes whose fields are the names of one file format. Read-only names, owned by this object. The XML
/// library must be up for as long as it lives.
class XmlNameTable {
    /// Gives a transcoded text back to the library.
    struct Release {
        void operator()(XMLCh* text) const;
    };

  public:
    XmlNameTable(const XmlNameTable&) = delete;
    XmlNameTable& operator=(const XmlNameTable&) = delete;

    /// All names, in the order of the fields; a name of several fields comes as often.
    std::vector<const XMLCh*> all() const;

  protected:
    XmlNameTable() = default;
    ~XmlNameTable() = default;

    /// Transcodes a name and keeps it for release.
    const XMLCh* own(const char* text);

  private:
    std::vector<std::unique_ptr<XMLCh, Release>> mOwned;
};

}  // namespace vornrun::parser

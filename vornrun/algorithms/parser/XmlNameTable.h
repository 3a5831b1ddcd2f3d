#pragma once
/// \file
/// Names of elements or attributes, each transcoded once, so that comparing one with a name of a document allocates
/// nothing.

#include <memory>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

namespace vornrun::parser {

/// Base of classes whose fields are names. This object owns the names. The XML library must be started before it and
/// stopped after it.
class XmlNameTable {
    /// Gives a transcoded text back to the library.
    struct Release {
        void operator()(XMLCh* text) const;
    };

  public:
    XmlNameTable(const XmlNameTable&) = delete;
    XmlNameTable& operator=(const XmlNameTable&) = delete;

  protected:
    XmlNameTable() = default;
    ~XmlNameTable() = default;

    /// Transcodes a name and keeps it for release.
    const XMLCh* own(const char* text);

  private:
    std::vector<std::unique_ptr<XMLCh, Release>> mOwned;
};

}  // namespace vornrun::parser

#pragma once
/// \file
/// A name as the XML library compares it.

#include <xercesc/util/XercesDefs.hpp>

namespace vornrun::parser {

/// Transcoded once, so that comparing it with a name of a document allocates nothing. The XML library must be up for as
/// long as it lives.
class XmlName {
  public:
    explicit XmlName(const char* text);
    XmlName(const XmlName&) = delete;
    XmlName& operator=(const XmlName&) = delete;
    ~XmlName();  // gives the text back to the library

    const XMLCh* get() const noexcept { return mText; }
    operator const XMLCh*() const noexcept { return mText; }

  private:
    XMLCh* mText;
};

}  // namespace vornrun::parser

#include "vornrun/algorithms/parser/XmlNameTable.h"

#include <xercesc/util/XMLString.hpp>

namespace vornrun::parser {

void XmlNameTable::Release::operator()(XMLCh* text) const { xercesc::XMLString::release(&text); }

const XMLCh* XmlNameTable::own(const char* text) {
    return mOwned.emplace_back(xercesc::XMLString::transcode(text)).get();
}

}  // namespace vornrun::parser

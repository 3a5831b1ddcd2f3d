#include "vornrun/algorithms/parser/XmlNameTable.h"

#include <xercesc/util/XMLString.hpp>

namespace vornrun::parser {

void XmlNameTable::Release::operator()(XMLCh* text) const { xercesc::XMLString::release(&text); }

std::vector<const XMLCh*> XmlNameTable::all() const {
    std::vector<const XMLCh*> result;
    result.reserve(mOwned.size());
    for (const auto& name : mOwned) result.push_back(name.get());
    return result;
}

const XMLCh* XmlNameTable::own(const char* text) {
    return mOwned.emplace_back(xercesc::XMLString::transcode(text)).get();
}

}  // namespace vornrun::parser

#include "vornrun/algorithms/parser/VornXmlTags.h"

#include <xercesc/util/XMLString.hpp>

namespace vornrun {

void VornXmlTags::Release::operator()(XMLCh* text) const { xercesc::XMLString::release(&text); }

const XMLCh* VornXmlTags::own(const char* text) {
    return mOwned.emplace_back(xercesc::XMLString::transcode(text)).get();
}

}  // namespace vornrun

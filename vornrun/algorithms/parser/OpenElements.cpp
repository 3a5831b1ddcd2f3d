#include "vornrun/algorithms/parser/OpenElements.h"

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::parser {

OpenElements::Entry::~Entry() {
    for (; mOpen.mPath.size() > mStart; mOpen.mPath.pop_back()) mOpen.mOpen.erase(mOpen.mPath.back());
}

void OpenElements::Entry::enter(const xercesc::DOMElement* element, const XMLCh* identifier) {
    if (identifier == nullptr) return;
    if (mOpen.mOpen.contains(element))
        throw at(element, VornXmlCorruptedVornException("XML references lead from an object back to itself: " +
                                                        util::transcode(identifier)));
    mOpen.mPath.push_back(element);
    mOpen.mOpen.insert(element);
}

}  // namespace vornrun::parser

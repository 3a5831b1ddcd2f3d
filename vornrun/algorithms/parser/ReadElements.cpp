#include "vornrun/algorithms/parser/ReadElements.h"

#include <xercesc/dom/DOMElement.hpp>

namespace vornrun::parser {

using xercesc::DOMElement;

ReadElements::ReadElements(const VornXmlTags& tags)
    : mListsByOwnName{tags.caseTuple, tags.packages},
      mFormulas{tags.formulae,
                mPropertyTags.cslFormula,
                mPropertyTags.formula,
                mPropertyTags.conjunction,
                mPropertyTags.disjunction,
                mPropertyTags.implication,
                mPropertyTags.equivalence,
                mPropertyTags.equality,
                mPropertyTags.negation,
                mPropertyTags.atomicProposition,
                mPropertyTags.probability,
                mPropertyTags.until,
                mPropertyTags.next} {
    for (const XMLCh* name : tags.all()) mNames.insert(name);
    for (const XMLCh* name : mPropertyTags.all()) mNames.insert(name);
    mNames.erase(tags.modeInvariants);
    mNames.erase(tags.probabilisticModeTransitions);
}

bool ReadElements::isReadByName(const DOMElement* child) const { return mNames.contains(child->getLocalName()); }

bool ReadElements::readsAnyChild(const DOMElement* element, const DOMElement* target) const {
    return mListsByOwnName.contains(element->getLocalName()) || mFormulas.contains(target->getLocalName());
}

}  // namespace vornrun::parser

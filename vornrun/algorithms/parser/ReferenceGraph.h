#pragma once
/// \file
/// How the elements of a document refer to each other. A parser walks from an element to those children that it reads,
/// and from a reference element to its target; this is the graph of those steps. It must have no cycle, or the parser
/// would not come to an end, and it must not unfold into a tree of excessive size, since a shared element is parsed
/// anew for every reference to it: a chain of n elements, each referring twice to the next, stands for 2^n.

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"
#include "vornrun/algorithms/parser/ReadElements.h"

namespace vornrun::parser {

/// Fills the context with one document and checks it. Needs time and memory linear in the document's elements.
class ReferenceGraph {
  public:
    /// A document unfolds too far when it stands for more elements than this ...
    static constexpr std::uint64_t UNFOLDED_LIMIT = 10'000'000;
    /// ... and also for more than this many times the elements that it holds.
    static constexpr std::uint64_t UNFOLDED_FACTOR = 100;

    /// \param objid, objref names of the attributes, which must outlive this object
    /// \param tags names of the model file, which must outlive this object too
    ReferenceGraph(XmlContext& context, const XMLCh* objid, const XMLCh* objref, const VornXmlTags& tags);

    /// Stores all elements with an identifier, below and including the root, in document order: of a repeated
    /// identifier the last one stands.
    void enter(const xercesc::DOMElement* root);
    /// \throws VornXmlCorruptedVornException naming the identifier of an element that contains itself
    /// \throws VornXmlCorruptedVornException when the document unfolds too far
    /// \note a reference to an identifier that nothing carries is no fault here, and no reference is one in elements
    ///       that are not read
    void check();

  private:
    /// An element with an identifier in one role: what it unfolds into is computed once.
    struct Shared {
        bool isOpen = false;         // on the path from the start of the walk
        std::uint64_t unfolded = 0;  // elements that it stands for, itself included; 0 while unknown
    };
    struct Frame {
        const xercesc::DOMElement* nextChild;
        std::uint64_t unfolded;
        Shared* shared;      // null for an element without an identifier
        bool readsAnyChild;  // in the role in which it was come to
    };

    std::uint64_t unfold(const xercesc::DOMElement* start);
    /// Adds what the element stands for to the last frame, or opens a frame for it.
    void visit(const xercesc::DOMElement* element, bool readsAnyChild);
    /// The target of a reference element, else the element itself; null for a target that is nowhere.
    const xercesc::DOMElement* resolve(const xercesc::DOMElement* element) const;
    Shared* sharedState(const xercesc::DOMElement* element, bool readsAnyChild);
    std::string attribute(const xercesc::DOMElement* element, const XMLCh* name) const;

    XmlContext& mContext;
    const XMLCh* mObjid;
    const XMLCh* mObjref;
    const ReadElements mRead;
    const xercesc::DOMElement* mRoot = nullptr;
    // By element and by whether all its children are read.
    std::unordered_map<const xercesc::DOMElement*, std::array<Shared, 2>> mShared;
    std::vector<Frame> mPath;
    std::uint64_t mElementCount = 0;
    bool mHasReferences = false;
};

}  // namespace vornrun::parser

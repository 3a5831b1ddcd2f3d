#pragma once
/// \file
/// The element `implementations` of a subpackage becomes component implementations: modes, transitions, connections,
/// flows, subcomponents and data. Numbers of modes, transitions and subcomponents are given out in the order in which
/// the parts are read.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

class VornXmlParser::TypeImplParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser not owned, outlives this object
    TypeImplParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    /// Adds the implementations of a subpackage to the section that the constructor is filling. Their types must be
    /// declared in the package by then.
    /// \throws VornXmlException for a fault of the file
    void parseSubpackageImpls(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage) const;
    /// One `ComponentImplementation`; the caller owns the result. Throws as above.
    VornComponentImplementation* parseComponentImplementation(const xercesc::DOMElement* element,
                                                              const VornPackageConstructor& constructor) const;

  private:
    // Parts are held by owning pointers until the whole is built, so that a fault leaves nothing behind.
    template <class T>
    using Owned = std::vector<std::unique_ptr<T>>;

    Owned<VornMode> parseModes(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornMode> parseMode(const xercesc::DOMElement* element) const;
    Owned<VornTrajectoryEquation> parseTrajectories(const xercesc::DOMElement* element) const;
    /// Null for a right side that cannot be a rate.
    std::unique_ptr<VornTrajectoryEquation> parseTrajectory(const xercesc::DOMElement* element) const;

    /// \throws VornXmlCorruptedVornException with the text when the expression is null or not boolean
    std::unique_ptr<TypedVornExpressionTree<VornBool>> parseBoolean(const xercesc::DOMElement* element,
                                                                    const char* notBoolean) const;
    Owned<Clause> parseClauses(const xercesc::DOMElement* element) const;
    std::unique_ptr<Clause> parseClause(const xercesc::DOMElement* element) const;
    std::unique_ptr<LinExp> parseLinExp(const xercesc::DOMElement* element) const;
    /// The plain form with the clauses that stand in `clauses` of `parent`.
    std::unique_ptr<VornLinearExpression> parseLinearExpression(const xercesc::DOMElement* plain,
                                                                const char* notBoolean,
                                                                const xercesc::DOMElement* parent,
                                                                const char* noClauses) const;

    Owned<VornTransition> parseTransitions(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornTransition> parseTransition(const xercesc::DOMElement* element) const;
    Owned<VornAssignment> parseEffects(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornAssignment> parseAssignment(const xercesc::DOMElement* element) const;

    Owned<VornConnection> parseConnections(const xercesc::DOMElement* element, bool isEvent) const;
    std::unique_ptr<VornConnection> parseConnection(const xercesc::DOMElement* element, bool isEvent) const;
    Owned<VornFlow> parseFlows(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornFlow> parseFlow(const xercesc::DOMElement* element) const;
    Owned<VornSubComponent> parseSubcomponents(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornSubComponent> parseSubcomponent(const xercesc::DOMElement* element) const;
    /// All accesses first, then running on, then stored in.
    std::vector<VornBinding> parseSubcomponentBindings(const xercesc::DOMElement* element) const;
    Owned<VornDataSubcomponent> parseDataSubcomponents(const xercesc::DOMElement* element) const;
    std::unique_ptr<VornDataSubcomponent> parseDataSubcomponent(const xercesc::DOMElement* element) const;

    const ExpressionParser* mExpressionParser;
};

}  // namespace vornrun

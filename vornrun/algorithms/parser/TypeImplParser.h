#pragma once
/// \file
/// The element `implementations` of a subpackage becomes component implementations: modes, transitions, connections,
/// flows, subcomponents and data. Modes, transitions and subcomponents get their numbers in the order of reading.

#include <memory>
#include <vector>

#include "vornrun/algorithms/parser/Owned.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

/// Each operation throws VornXmlException for a fault of the file. The caller owns each result. Operations in the
/// plural take the list element and return its parts in their order; elements of another name in a list are skipped,
/// mostly with a warning.
/// \pre no element is null
class VornXmlParser::TypeImplParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser not owned, not null, outlives this object
    TypeImplParser(parser::XmlContext& context, const ExpressionParser* expressionParser);

    /// Adds the implementations of a subpackage to the current section of the constructor. Their types must be declared
    /// in the package by then.
    void parseSubpackageImpls(VornPackageConstructor& constructor, const xercesc::DOMElement* subpackage) const;
    /// One `ComponentImplementation`, whose type is declared in the constructor's package.
    VornComponentImplementation* parseComponentImplementation(const xercesc::DOMElement* element,
                                                              const VornPackageConstructor& constructor) const;

    /// At least one mode. \throws VornXmlNodeMissingException for an empty list
    std::vector<VornMode*> parseModes(const xercesc::DOMElement* element) const;
    VornMode* parseMode(const xercesc::DOMElement* element) const;
    std::vector<Clause*> parseClauses(const xercesc::DOMElement* element) const;
    /// An equation whose right side cannot be a rate is left out.
    std::vector<VornTrajectoryEquation*> parseTrajectories(const xercesc::DOMElement* element) const;

    std::vector<VornTransition*> parseTransitions(const xercesc::DOMElement* element) const;
    VornTransition* parseTransition(const xercesc::DOMElement* element) const;
    /// One effect: an element with `left` and `right`. The value is null if its expression has a fault of types.
    VornAssignment* parseAssignment(const xercesc::DOMElement* element) const;

    std::vector<VornConnection*> parseConnections(const xercesc::DOMElement* element, bool isEvent) const;
    VornConnection* parseConnection(const xercesc::DOMElement* element, bool isEvent) const;
    std::vector<VornFlow*> parseFlows(const xercesc::DOMElement* element) const;
    VornFlow* parseFlow(const xercesc::DOMElement* element) const;

    std::vector<VornSubComponent*> parseSubcomponents(const xercesc::DOMElement* element) const;
    VornSubComponent* parseSubcomponent(const xercesc::DOMElement* element) const;
    /// The bindings of a `NonDataSubcomponent`: all accesses first, then running on, then stored in.
    std::vector<VornBinding> parseSubcomponentBindings(const xercesc::DOMElement* element) const;
    std::vector<VornDataSubcomponent*> parseDataSubcomponents(const xercesc::DOMElement* element) const;
    VornDataSubcomponent* parseDataSubcomponent(const xercesc::DOMElement* element) const;

  private:
    template <class T>
    using Owned = parser::Owned<T>;

    // The operations in the plural, with results that a fault behind them leaves to be reclaimed.
    Owned<VornMode> readModes(const xercesc::DOMElement* element) const;
    Owned<Clause> readClauses(const xercesc::DOMElement* element) const;
    Owned<VornTrajectoryEquation> readTrajectories(const xercesc::DOMElement* element) const;
    Owned<VornTransition> readTransitions(const xercesc::DOMElement* element) const;
    Owned<VornAssignment> readEffects(const xercesc::DOMElement* element) const;
    Owned<VornConnection> readConnections(const xercesc::DOMElement* element, bool isEvent) const;
    Owned<VornFlow> readFlows(const xercesc::DOMElement* element) const;
    Owned<VornSubComponent> readSubcomponents(const xercesc::DOMElement* element) const;
    Owned<VornDataSubcomponent> readDataSubcomponents(const xercesc::DOMElement* element) const;

    /// Null for a right side that cannot be a rate.
    std::unique_ptr<VornTrajectoryEquation> parseTrajectory(const xercesc::DOMElement* element) const;
    Clause* parseClause(const xercesc::DOMElement* element) const;
    LinExp* parseLinExp(const xercesc::DOMElement* element) const;
    /// \throws VornXmlCorruptedVornException with the text when the expression is null or not boolean
    std::unique_ptr<TypedVornExpressionTree<VornBool>> parseBoolean(const xercesc::DOMElement* element,
                                                                    const char* notBoolean) const;
    /// The expression `plain` together with the clauses in the child `clauses` of `parent`.
    std::unique_ptr<VornLinearExpression> parseLinearExpression(const xercesc::DOMElement* plain,
                                                                const char* notBoolean,
                                                                const xercesc::DOMElement* parent,
                                                                const char* noClauses) const;

    const ExpressionParser* mExpressionParser;
};

}  // namespace vornrun

#pragma once
/// \file
/// Writes property files. Expressions stand as atomic propositions by themselves:
///
///     const Var broken = var("pump.broken", Type::Bool), x = var("x", Type::Clock);
///
///     PropertyWriter properties;
///     properties.p(until(!broken, x >= 5.0, 0, 100));               // P > 0 ( not broken U [0, 100] x >= 5 )
///     properties.p(Bound::AtLeast, 0.9, eventually(broken, 0, 50));
///     properties.p(next(truth() && p(Bound::Below, 0.5, eventually(broken, 0, 1)), 0, 10));    // nested
///     const std::string text = properties.text();
///
/// `&&`, `||` and `!` over expressions alone make one proposition; over formulas they make formulas, and atom() makes
/// a formula of an expression where that difference matters.

#include <string>
#include <vector>

#include "tests/support/ExprWriter.h"
#include "tests/support/Xml.h"

namespace vornrun::test {

/// The comparison of a probability operator.
enum class Bound { Below, AtMost, Above, AtLeast };

class StateFormula {
  public:
    StateFormula(const Expr& proposition);
    /// An element as it stands.
    explicit StateFormula(Xml element) : mXml(std::move(element)) {}
    const Xml& xml() const noexcept { return mXml; }

  private:
    Xml mXml;
};

class PathFormula {
  public:
    explicit PathFormula(Xml element) : mXml(std::move(element)) {}
    const Xml& xml() const noexcept { return mXml; }

  private:
    Xml mXml;
};

StateFormula atom(const Expr& proposition);
StateFormula truth();
StateFormula falsity();
StateFormula operator!(const StateFormula& operand);
StateFormula operator&&(const StateFormula& left, const StateFormula& right);
StateFormula operator||(const StateFormula& left, const StateFormula& right);
StateFormula imp(const StateFormula& left, const StateFormula& right);
StateFormula iff(const StateFormula& left, const StateFormula& right);
StateFormula eq(const StateFormula& left, const StateFormula& right);
/// A probability operator, for nesting.
StateFormula p(Bound bound, double threshold, const PathFormula& path);

/// `left` until `right`, which must happen between the bounds.
PathFormula until(const StateFormula& left, const StateFormula& right, double lower, double upper);
/// The same with a left side that is always true.
PathFormula eventually(const StateFormula& goal, double lower, double upper);
PathFormula next(const StateFormula& goal, double lower, double upper);

// The formula inside the element `formula`, which stands for what it holds.
StateFormula wrapped(const StateFormula& formula);
PathFormula wrapped(const PathFormula& formula);

class PropertyWriter {
  public:
    /// A property with the bound "above 0".
    PropertyWriter& p(const PathFormula& path);
    PropertyWriter& p(Bound bound, double threshold, const PathFormula& path);
    /// A `cslFormula` over any state formula.
    PropertyWriter& formula(const StateFormula& formula);
    /// A further child of the root.
    PropertyWriter& splice(Xml child);
    /// Puts all formula elements under a namespace prefix; expressions keep their names.
    PropertyWriter& prefix(const std::string& prefix);

    /// The root element.
    Xml document() const;
    /// The whole file.
    std::string text() const { return toDocument(document()); }

  private:
    std::string mPrefix;
    std::vector<Xml> mFormulae;
};

}  // namespace vornrun::test

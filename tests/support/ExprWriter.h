#pragma once
/// \file
/// Expressions as a test writes them, and as a model file holds them.
///
///     const Var x = var("x", Type::Clock), n = var("pump.n", Type::Int), mode = modeOf("pump");
///     const Expr e = x <= 5.0 && (n == 3 || !var("b", Type::Bool)) && mode == modeLiteral("pump.mode:failed");
///     e.xml("guard");    // <guard type="BinaryOperatorTreeNode"><node_type>0</node_type><left ...
///
/// C++ numbers and truth values are constants by themselves: 5 is an int, 5.0 a real, true a bool. Every operator of
/// the language has its C++ form but `imp`, `iff` and `mod` (%): + - * / % - ! && || == != < <= > >=. The writer
/// follows the type rules only to fill in `node_type`; it writes ill-typed expressions as well, since tests need them.

#include <concepts>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Xml.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorType.h"

namespace vornrun::test {

/// The data types; Interval is declared as "IntRange", and Mode cannot be declared.
enum class Type { Bool, Int, Real, Enum, Clock, Continuous, Interval, Mode };

using Op = parser::OperatorType;

/// An immutable expression; copies share their contents.
class Expr {
  public:
    enum class Kind { Binary, Unary, Case, Boolean, Number, Literal, Variable, Trajectory, Raw };
    struct Node {
        Kind kind;
        Type type;
        int nodeType;                     // the number in `node_type`
        std::string text;                 // name, number, truth value
        Op op = Op::Lt;                   // of a binary or unary node
        std::vector<Expr> children = {};  // operands; of a case: condition, value, ..., default
        std::vector<Xml> raw = {};        // of a raw node: the one element
    };

    explicit Expr(Node node);
    Expr(bool value);
    Expr(double value);
    template <std::integral Integer>
    Expr(Integer value) : Expr(integerNode(std::to_string(value))) {}

    const Node& node() const noexcept { return *mNode; }
    Type type() const noexcept { return mNode->type; }
    /// The same with another number in `node_type`.
    Expr withNodeType(int number) const;
    /// As an expression element of that name.
    Xml xml(const std::string& tag) const;
    /// As a value element of that name: without `node_type` and attribute, as default values are written.
    Xml valueXml(const std::string& tag) const;

  private:
    static Node integerNode(std::string text);
    void addContents(Xml& element) const;

    std::shared_ptr<const Node> mNode;
};

/// A variable: an expression, and the thing that is declared, assigned to or given a rate.
class Var : public Expr {
  public:
    Var(const std::string& name, Type type, int nodeType);
    const std::string& name() const noexcept { return node().text; }
};

/// A variable, by its name as the component sees it: "x" or "sub.x".
Var var(const std::string& name, Type type);
/// The variable that holds a component's current mode: of a subcomponent by its name, of the component itself for "".
Var modeOf(const std::string& subcomponent = "");
/// The error state of a subcomponent, which the file spells "sub.error".
Var errorOf(const std::string& subcomponent);

// Constants.
Expr boolean(bool value);
Expr integer(long value);
Expr real(double value);
/// A number of another type, for instance `number(2.0, Type::Clock)`.
Expr number(double value, Type type);
Expr enumLiteral(const std::string& name);
Expr modeLiteral(const std::string& name);
/// A trajectory where an expression is expected: it stands for true.
Expr trajectoryTerm();
/// An expression element given as it stands, but for its name; `type` is what the writer takes it for.
Expr rawExpr(Xml element, Type type);

/// A binary element with any operator number.
Expr binary(Op op, const Expr& left, const Expr& right);
Expr unary(Op op, const Expr& operand);
Expr imp(const Expr& left, const Expr& right);
Expr iff(const Expr& left, const Expr& right);
/// Conditions with their values, and the default; of the default's type.
Expr caseOf(const std::vector<std::pair<Expr, Expr>>& cases, const Expr& otherwise);
/// The same with the declared type given.
Expr caseOf(Type type, const std::vector<std::pair<Expr, Expr>>& cases, const Expr& otherwise);

Expr operator+(const Expr& left, const Expr& right);
Expr operator-(const Expr& left, const Expr& right);
Expr operator*(const Expr& left, const Expr& right);
Expr operator/(const Expr& left, const Expr& right);
Expr operator%(const Expr& left, const Expr& right);
Expr operator&&(const Expr& left, const Expr& right);
Expr operator||(const Expr& left, const Expr& right);
Expr operator==(const Expr& left, const Expr& right);
Expr operator!=(const Expr& left, const Expr& right);
Expr operator<(const Expr& left, const Expr& right);
Expr operator<=(const Expr& left, const Expr& right);
Expr operator>(const Expr& left, const Expr& right);
Expr operator>=(const Expr& left, const Expr& right);
Expr operator!(const Expr& operand);
Expr operator-(const Expr& operand);

/// The number as a file holds it: the shortest text that reads back as the same double.
std::string numberText(double value);
/// The number in `node_type` that a variable of the type has.
int nodeTypeOf(Type type);
/// The attribute "type" of `data_type`. \throws std::logic_error for Mode, which cannot be declared
std::string dataTypeName(Type type);

}  // namespace vornrun::test

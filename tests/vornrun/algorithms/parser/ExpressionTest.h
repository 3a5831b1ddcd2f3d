#pragma once
/// \file
/// What the tests of the expression parser share.

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Xml.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"

namespace vornrun::test {

/// Parses one element as an expression.
class ExpressionDocument {
  public:
    explicit ExpressionDocument(const Xml& element) : ExpressionDocument(toDocument(element)) {}
    explicit ExpressionDocument(const std::string& text) : mXml(text), mParser(mContext) {}

    const VornXmlParser::ExpressionParser& parser() const { return mParser; }
    const xercesc::DOMElement* root() const { return mXml.root(); }
    std::unique_ptr<VornExpressionTree> parse() const {
        return std::unique_ptr<VornExpressionTree>(mParser.parseSubexpression(root()));
    }

  private:
    XmlDocument mXml;
    parser::XmlContext mContext;
    VornXmlParser::ExpressionParser mParser;
};

inline std::unique_ptr<VornExpressionTree> parseExpression(const Xml& element) {
    return ExpressionDocument(element).parse();
}

/// The printed form; "null" for null.
inline std::string printed(const VornExpressionTree* tree) {
    if (tree == nullptr) return "null";
    std::ostringstream stream;
    tree->printExpression(stream);
    return stream.str();
}
inline std::string printed(const std::unique_ptr<VornExpressionTree>& tree) { return printed(tree.get()); }

// Expression elements by hand, with any number as node type.
inline Xml element(const std::string& type, int nodeType) {
    return Xml("e").attribute("type", type).add(Xml("node_type", std::to_string(nodeType)));
}
inline Xml variable(int nodeType, const std::string& name) {
    return element("IdentifierTreeNode", nodeType).add(Xml("name", name));
}
inline Xml number(int nodeType, const std::string& text) {
    return element("NumberTreeNode", nodeType).add(Xml("number", text));
}
inline Xml boolean(const std::string& text, int nodeType = 0) {
    return element("BooleanTreeNode", nodeType).add(Xml("value", text));
}
inline Xml unary(int operation, Xml operand, int nodeType = 0) {
    return element("UnaryOperatorTreeNode", nodeType)
        .add(operand.rename("subexpression"))
        .add(Xml("operator", std::to_string(operation)));
}
inline Xml binary(int operation, Xml left, Xml right, int nodeType = 0) {
    return element("BinaryOperatorTreeNode", nodeType)
        .add(left.rename("left"))
        .add(right.rename("right"))
        .add(Xml("operator", std::to_string(operation)));
}
inline Xml tuple(Xml condition, Xml value) {
    return Xml("tuple").add(condition.rename("anything")).add(value.rename("whatever"));
}
inline Xml caseOf(int nodeType, std::vector<Xml> tuples, Xml otherwise) {
    return element("CaseExpressionTreeNode", nodeType)
        .add(Xml("cases", std::move(tuples)))
        .add(otherwise.rename("default_expression"));
}

}  // namespace vornrun::test

#include "tests/support/PropertyWriter.h"

#include <gtest/gtest.h>

namespace vornrun::test {
namespace {

const Var b = var("b", Type::Bool);

TEST(PropertyWriter, WritesAnUntilProperty) {
    PropertyWriter properties;
    properties.p(Bound::AtLeast, 0.5, until(b, falsity(), 0, 10));
    EXPECT_EQ(properties.document().toString(),
              "<formulae>\n"
              "  <cslFormula>\n"
              "    <p>\n"
              "      <comparisonOperator>\n"
              "        <greaterEqual/>\n"
              "      </comparisonOperator>\n"
              "      <threshold>\n"
              "        <value>0.5</value>\n"
              "      </threshold>\n"
              "      <u>\n"
              "        <lowerBound>\n"
              "          <value>0</value>\n"
              "        </lowerBound>\n"
              "        <upperBound>\n"
              "          <value>10</value>\n"
              "        </upperBound>\n"
              "        <atomicProposition>\n"
              "          <expression type=\"IdentifierTreeNode\">\n"
              "            <node_type>0</node_type>\n"
              "            <name>b</name>\n"
              "          </expression>\n"
              "        </atomicProposition>\n"
              "        <false/>\n"
              "      </u>\n"
              "    </p>\n"
              "  </cslFormula>\n"
              "</formulae>\n");
}

TEST(PropertyWriter, MakesPropositionsOfExpressionsAndFormulasOfFormulas) {
    EXPECT_EQ(StateFormula(b && b).xml().name(), "atomicProposition");
    EXPECT_EQ((atom(b) && b).xml().name(), "and");
    EXPECT_EQ((truth() || b).xml().name(), "or");
    EXPECT_EQ((!truth()).xml().name(), "not");
    EXPECT_EQ(imp(truth(), b).xml().name(), "imp");
    EXPECT_EQ(iff(truth(), b).xml().name(), "iff");
    EXPECT_EQ(eq(b, b).xml().name(), "eq");
    EXPECT_EQ(wrapped(atom(b)).xml().name(), "formula");
    EXPECT_EQ(wrapped(next(b, 0, 1)).xml().children().front().name(), "x");
}

TEST(PropertyWriter, NestsProbabilityOperators) {
    PropertyWriter properties;
    properties.p(next(truth() && p(Bound::Below, 0.5, eventually(b, 0, 1)), 0, 10));
    Xml document = properties.document();
    EXPECT_NO_THROW(document.first("x").first("and").first("p").first("lessThan"));
    EXPECT_NO_THROW(document.first("greaterThan"));
}

TEST(PropertyWriter, PutsAllButExpressionsUnderAPrefix) {
    PropertyWriter properties;
    Xml document = properties.p(next(b, 0, 1)).prefix("f").document();
    EXPECT_EQ(document.name(), "f:formulae");
    EXPECT_EQ(document.first("f:atomicProposition").children().front().name(), "expression");
    EXPECT_NE(document.toString().find("xmlns:f="), std::string::npos);
}

}  // namespace
}  // namespace vornrun::test

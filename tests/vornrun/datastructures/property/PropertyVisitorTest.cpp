#include "vornrun/datastructures/property/PropertyVisitor.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/vornrun/datastructures/property/FormulaFixtures.h"

namespace vornrun::test {
namespace {

/// Writes down which operation was called.
class NamingVisitor final : public PropertyVisitor {
  public:
    CSLFormula* visit(const CSLAbstractBinaryStateFormula*) override { return called("binary"); }
    CSLFormula* visit(const CSLAbstractUnaryStateFormula*) override { return called("unary"); }
    CSLFormula* visit(const CSLPropositionStateFormula*) override { return called("proposition"); }
    CSLFormula* visit(const CSLProbabilityStateFormula*) override { return called("probability"); }
    CSLFormula* visit(const CSLTrue*) override { return called("true"); }
    CSLFormula* visit(const CSLFalse*) override { return called("false"); }
    CSLFormula* visit(const CSLUntilPathFormula*) override { return called("until"); }
    CSLFormula* visit(const CSLNextPathFormula*) override { return called("next"); }

    std::string operation;

  private:
    CSLFormula* called(const char* name) {
        operation = name;
        return nullptr;
    }
};

std::string operationFor(const CSLFormula& formula) {
    NamingVisitor visitor;
    EXPECT_EQ(formula.accept(visitor), nullptr) << "accept() returns what the visitor gives";
    return visitor.operation;
}

TEST(PropertyVisitor, IsCalledByTheClassOfTheFormula) {
    EXPECT_EQ(operationFor(CSLTrue()), "true");
    EXPECT_EQ(operationFor(CSLFalse()), "false");
    EXPECT_EQ(operationFor(CSLPropositionStateFormula(nullptr)), "proposition");
    EXPECT_EQ(operationFor(CSLProbabilityStateFormula(nullptr, 0, CSLProbabilityStateFormula::Operator::less)),
              "probability");
    EXPECT_EQ(operationFor(CSLUntilPathFormula(nullptr, nullptr, 0, 1)), "until");
    EXPECT_EQ(operationFor(CSLNextPathFormula(nullptr, 0, 1)), "next");
}

TEST(PropertyVisitor, HasOneOperationForAllOperatorsOfOneArity) {
    EXPECT_EQ(operationFor(CSLBinaryStateFormula<CSLAnd>(nullptr, nullptr)), "binary");
    EXPECT_EQ(operationFor(CSLBinaryStateFormula<CSLOr>(nullptr, nullptr)), "binary");
    EXPECT_EQ(operationFor(CSLBinaryStateFormula<CSLImp>(nullptr, nullptr)), "binary");
    EXPECT_EQ(operationFor(CSLBinaryStateFormula<CSLIff>(nullptr, nullptr)), "binary");
    EXPECT_EQ(operationFor(CSLUnaryStateFormula<CSLNot>(nullptr)), "unary");
}

}  // namespace
}  // namespace vornrun::test

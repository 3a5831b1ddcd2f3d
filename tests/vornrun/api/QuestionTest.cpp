#include "vornrun/api/Question.h"

#include <gtest/gtest.h>

#include "tests/vornrun/api/DoorModels.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

namespace vornrun::test {
namespace {

TEST(Question, ComesFromAFileInFileOrder) {
    const TempDir folder;
    PropertyWriter writer;
    writer.p(Bound::AtLeast, 0.5, eventually(truth(), 0, 1)).p(Bound::Below, 0.25, next(falsity(), 2, 3));
    const auto questions = Question::fromFile(folder.write("p.xml", writer.text()));
    ASSERT_EQ(questions.size(), 2U);
    EXPECT_EQ(questions[0].text(), "P[>=0.5]trueU[0,1]true");
    EXPECT_EQ(questions[1].text(), "P[<0.25]X[2,3]false");
}

TEST(Question, ComesFromAFormula) {
    const CSLUntilPathFormula formula(new CSLTrue, new CSLFalse, 0, 2);
    EXPECT_EQ(Question::fromFormula(formula).text(), "trueU[0,2]false");
}

TEST(Question, IsNotAStateFormula) { EXPECT_THROW(Question::fromFormula(CSLTrue()), FaultException); }

TEST(Question, RefusesAFileWithoutAny) {
    const TempDir folder;
    EXPECT_THROW(Question::fromFile(folder.write("p.xml", PropertyWriter().text())), FaultException);
}

TEST(Question, SaysWhereAFileIsBroken) {
    const TempDir folder;
    try {
        Question::fromFile(folder.write("p.xml", "<formulae>\n<cslFormula></p>\n</formulae>\n"));
        FAIL() << "no exception";
    } catch (const FaultException& exception) {
        EXPECT_EQ(exception.faults().back().line, 2U) << exception.what();
    }
}

}  // namespace
}  // namespace vornrun::test

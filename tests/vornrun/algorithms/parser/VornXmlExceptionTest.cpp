#include "vornrun/algorithms/parser/VornXmlException.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/CaseName.h"

namespace vornrun::test {
namespace {

using namespace parser;

struct Frame {
    const char* name;
    std::shared_ptr<const VornXmlException> fault;
    const char* what;
};

class Frames : public testing::TestWithParam<Frame> {};

TEST_P(Frames, NameTheDescriptionAndTheKindOfTheFault) {
    const std::exception& fault = *GetParam().fault;
    EXPECT_STREQ(fault.what(), GetParam().what);
    EXPECT_STREQ(fault.what(), GetParam().what) << "the second time";
}

INSTANTIATE_TEST_SUITE_P(
    VornXmlException, Frames,
    testing::Values(
        Frame{"General", std::make_shared<VornXmlException>("d"), "Error while parsing: d (General parser error)"},
        Frame{"WithALine", std::make_shared<VornXmlException>("d", 7U),
              "Error while parsing on line: 7 d (General parser error)"},
        Frame{"WithoutDescription", std::make_shared<VornXmlException>(""),
              "Error while parsing:  (General parser error)"},
        Frame{"ParserFailed", std::make_shared<VornXmlParserException>("d"), "Error while parsing: d (Parser failed.)"},
        Frame{"InvalidXml", std::make_shared<VornInvalidXmlException>("d"), "Error while parsing: d (Invalid xml.)"},
        Frame{"CorruptedVorn", std::make_shared<VornXmlCorruptedVornException>("d"),
              "Error while parsing: d (Xml encoded invalid vorn.)"},
        Frame{"UnexpectedNode", std::make_shared<VornXmlUnexpectedNodeException>("d", "this", "that"),
              "Error while parsing: d (Unexpected node:\n\tExpected: this .\n\tFound: that)"},
        Frame{"UnexpectedValue", std::make_shared<VornXmlUnexpectedValueException>("d", "this", "that"),
              "Error while parsing: d (Unexpected value:\n\tExpected: this .\n\tFound: that)"},
        Frame{"MissingChild", std::make_shared<VornXmlNodeMissingException>("d", "x", "y"),
              "Error while parsing: d (Expected child node 'x' missing from 'y')"},
        Frame{"UnknownType", std::make_shared<UnknownTypeException>("d", "Pump"),
              "Error while parsing: d (Xml encoded invalid vorn.Unknown type Pump not found in package.)"},
        Frame{"MutualExclusive", std::make_shared<MutualExclusiveException>("d", "observable", "alarm"),
              "Error while parsing: d (Xml encoded invalid vorn.observable and alarm are mutual exclusive.)"}),
    CaseName());

TEST(VornXmlException, IsFramedAloneWhenItsKindIsEmpty) {
    class Kindless final : public VornXmlException {
      public:
        using VornXmlException::VornXmlException;
        std::string errorTypeMsg() const override { return ""; }
    };
    EXPECT_STREQ(Kindless("d").what(), "Error while parsing: d");
    EXPECT_STREQ(Kindless("d", 3U).what(), "Error while parsing on line: 3 d");
}

TEST(VornXmlException, IsFramedWithTheDescriptionThatASubclassGives) {
    class Described final : public VornXmlException {
      public:
        using VornXmlException::VornXmlException;
        std::string errorDescription() const override { return "another"; }
    };
    EXPECT_STREQ(Described("d").what(), "Error while parsing: another (General parser error)");
}

TEST(VornXmlException, KeepsItsTextWhenItIsCopied) {
    const auto copy = [] {
        const VornXmlNodeMissingException original("d", "x", "y");
        static_cast<void>(original.what());
        return VornXmlNodeMissingException(original);
    }();
    EXPECT_STREQ(copy.what(), "Error while parsing: d (Expected child node 'x' missing from 'y')");
}

TEST(VornXmlException, CatchesEveryFaultOfTheFamily) {
    EXPECT_THROW(throw UnknownTypeException("", "T"), VornXmlCorruptedVornException);
    EXPECT_THROW(throw MutualExclusiveException("", "a", "b"), VornXmlCorruptedVornException);
    EXPECT_THROW(throw VornXmlUnexpectedNodeException("", "a", "b"), VornXmlUnexpected_Exception);
    EXPECT_THROW(throw VornXmlUnexpectedValueException("", "a", "b"), VornXmlException);
    EXPECT_THROW(throw VornInvalidXmlException(""), std::exception);
}

}  // namespace
}  // namespace vornrun::test

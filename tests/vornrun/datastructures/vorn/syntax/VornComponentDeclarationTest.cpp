#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

struct CategoryCase {
    const char* lookedUp;
    const char* printed;
    unsigned int number;
};

class VornComponentCategoryNamed : public testing::TestWithParam<CategoryCase> {};

TEST_P(VornComponentCategoryNamed, IsLookedUpAndPrinted) {
    const VornComponentCategory category = componentCategory(GetParam().lookedUp);
    EXPECT_EQ(static_cast<unsigned int>(category), GetParam().number);
    std::ostringstream stream;
    stream << category;
    EXPECT_EQ(stream.str(), GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(AllNine, VornComponentCategoryNamed,
                         testing::Values(CategoryCase{"bus", "bus", 0}, CategoryCase{"data", "data", 1},
                                         CategoryCase{"device", "device", 2}, CategoryCase{"memory", "memory", 3},
                                         CategoryCase{"process", "process", 4},
                                         CategoryCase{"processor", "processor", 5}, CategoryCase{"system", "system", 6},
                                         CategoryCase{"thread", "thread", 7},
                                         CategoryCase{"thread group", "threadGroup", 8}),
                         [](const auto& test) { return std::string(test.param.printed); });

TEST(VornComponentCategory, CannotBeLookedUpByAnUnknownName) {
    EXPECT_THROW(componentCategory("threadGroup"), std::out_of_range);
    EXPECT_THROW(componentCategory(""), std::out_of_range);
    EXPECT_EQ(VornComponentCategoryNames.size(), 9u);
}

TEST(VornComponentDeclaration, FindsAPortByItsName) {
    auto* const port = makeEventPort("go");
    const VornComponentDeclaration declaration("Pump", VornComponentCategory::device, {makeEventPort("stop"), port});
    EXPECT_EQ(declaration.featureByName("go"), port);
    EXPECT_THAT([&] { declaration.featureByName("og"); },
                ThrowsMessage<std::invalid_argument>("Unknown feature name og"));
}

TEST(VornComponentDeclaration, KeepsTheFirstOfTwoPortsOfOneNameAndWarnsOfTheSecond) {
    const CapturedLog log;
    auto* const first = makeEventPort("go", 10);
    const VornComponentDeclaration declaration("Pump", VornComponentCategory::device, {first, makeEventPort("go", 11)});
    EXPECT_EQ(declaration.featureByName("go"), first);
    EXPECT_EQ(declaration.features().size(), 1u);
    EXPECT_THAT(log.records(),
                ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml",
                                      "A second port of name 'go' in component type 'Pump' is ignored, the first one "
                                      "stays."}));
}

TEST(VornComponentDeclaration, PrintsItsPortsInNameOrder) {
    const VornComponentDeclaration declaration("Pump", VornComponentCategory::device,
                                               {makeEventPort("stop", 10), makeEventPort("go", 11)});
    EXPECT_EQ(printed(declaration),
              "device Pump\n"
              "\tfeatures\n"
              "\t\tgo : in event port; --11\n"
              "\t\tstop : in event port; --10\n"
              "end Pump;\n");
}

TEST(VornComponentDeclaration, PrintsNoFeaturesSectionWithoutPorts) {
    EXPECT_EQ(printed(VornComponentDeclaration("Pump", VornComponentCategory::threadGroup, {})),
              "threadGroup Pump\nend Pump;\n");
}

}  // namespace
}  // namespace vornrun::test

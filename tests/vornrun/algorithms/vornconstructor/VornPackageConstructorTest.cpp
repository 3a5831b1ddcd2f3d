#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/datastructures/vorn/syntax/VornPackage.h"

namespace vornrun::test {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(VornPackageConstructor, StartsInThePublicSectionOfANamedPackage) {
    VornPackageConstructor constructor("P");
    constructor.addDeclaration(makeDeclaration("T"));
    const std::unique_ptr<VornPackage> package(constructor.takePackage());
    EXPECT_EQ(package->name(), "P");
    EXPECT_THAT(printed(*package), HasSubstr("public\nsystem T\nend T;\nend P;\n"));
    EXPECT_EQ(constructor.package(), nullptr);
}

TEST(VornPackageConstructor, AddsToTheSectionThatIsChosen) {
    VornPackageConstructor constructor("P");
    auto* const hidden = makeDeclaration("Hidden");
    auto* const shown = makeDeclaration("Shown");
    constructor.setPrivate(true);
    constructor.addDeclaration(hidden);
    constructor.addImplementation(makeImplementation(hidden, "i"));
    constructor.setPrivate(false);
    constructor.addDeclaration(shown);
    constructor.addImplementation(makeImplementation(shown, "i"));
    const std::string mode = "\tsubcomponents\n\t\tmode: data mode;\n";
    EXPECT_THAT(printed(*constructor.package()), HasSubstr("public\n"
                                                           "system Shown\nend Shown;\n"
                                                           "system implementation Shown.i\n" +
                                                           mode +
                                                           "end Shown.i;\n"
                                                           "private\n"
                                                           "system Hidden\nend Hidden;\n"
                                                           "system implementation Hidden.i\n" +
                                                           mode + "end Hidden.i;\n"));
}

TEST(VornPackageConstructor, FindsDeclarationsOfBothSections) {
    VornPackageConstructor constructor("P");
    auto* const shown = makeDeclaration("Shown");
    auto* const hidden = makeDeclaration("Hidden");
    constructor.addDeclaration(shown);
    constructor.setPrivate(true);
    constructor.addDeclaration(hidden);
    EXPECT_EQ(constructor.getDeclarationFromCurrentPackage("Shown"), shown);
    EXPECT_EQ(constructor.getDeclarationFromCurrentPackage("Hidden"), hidden);
    EXPECT_THAT([&] { constructor.getDeclarationFromCurrentPackage("Other"); },
                ThrowsMessage<std::invalid_argument>("No declaration with name Other in this package."));
}

using Counters = VornComponentImplementationConstructor;

// Read before any test runs: other tests of this program parse models as well.
const unsigned int COUNTERS_AT_PROGRAM_START[] = {Counters::mSubcompId, Counters::mModeId, Counters::mTransitionId};

TEST(VornComponentImplementationConstructor, CountsFromZero) {
    EXPECT_THAT(COUNTERS_AT_PROGRAM_START, testing::Each(0u));
}

}  // namespace
}  // namespace vornrun::test

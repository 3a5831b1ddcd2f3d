#include "vornrun/datastructures/vorn/syntax/VornSubComponent.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

struct SpecifierCase {
    const char* name;
    const char* reference;
    std::tuple<std::string, std::string, std::string> parts;
};

class CompSpecifier : public testing::TestWithParam<SpecifierCase> {};

TEST_P(CompSpecifier, TakesTheReferenceApart) {
    EXPECT_EQ(VornSubComponent(0, "s", GetParam().reference, {}, {}).compSpecifier(), GetParam().parts);
}

INSTANTIATE_TEST_SUITE_P(References, CompSpecifier,
                         testing::Values(SpecifierCase{"PackageTypeAndImplementation", "P::T.i", {"P", "T", "i"}},
                                         SpecifierCase{"TypeAndImplementation", "T.i", {"", "T", "i"}},
                                         SpecifierCase{"TypeOnly", "T", {"", "T", ""}},
                                         SpecifierCase{"PackageAndType", "P::T", {"P", "T", ""}},
                                         SpecifierCase{"DotInThePackage", "a.b::T.i", {"a.b", "T", "i"}},
                                         SpecifierCase{"FirstColonSkipsTwoCharacters", "P:xT.i", {"P", "T", "i"}},
                                         SpecifierCase{"OnlyTheFirstColonsCount", "P::Q::T", {"P", "Q::T", ""}},
                                         SpecifierCase{"TrailingColon", "P:", {"P", "", ""}},
                                         SpecifierCase{"TrailingColons", "P::", {"P", "", ""}},
                                         SpecifierCase{"LeadingColons", "::T", {"", "T", ""}},
                                         SpecifierCase{"TrailingDot", "T.", {"", "T", ""}},
                                         SpecifierCase{"Empty", "", {"", "", ""}}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(VornSubComponent, PrintsItsReferenceUntilItIsResolved) {
    EXPECT_EQ(printed(VornSubComponent(8, "s", "P::T.i", {}, {})), "s : ? P::T.i; --8");
}

TEST(VornSubComponent, PrintsItsImplementationBindingsAndModes) {
    const std::unique_ptr<VornComponentDeclaration> declaration(makeDeclaration("T"));
    const std::unique_ptr<VornComponentImplementation> implementation(makeImplementation(declaration.get(), "i"));
    VornSubComponent subcomponent(
        9, "s", "T",
        {VornBinding(VornBinding::Type::accesses, "bus1"), VornBinding(VornBinding::Type::runningOn, "cpu"),
         VornBinding(VornBinding::Type::storedIn, "ram")},
        {"m", "n"});
    subcomponent.setImplementation(implementation.get());
    EXPECT_EQ(printed(subcomponent), "s : system T.i accesses bus1 running on cpu stored in ram in modes (m, n); --9");
}

TEST(VornBinding, PrintsItsTypeAndTarget) {
    EXPECT_EQ(printed(VornBinding(VornBinding::Type::accesses, "b")), "accesses b");
    EXPECT_EQ(printed(VornBinding(VornBinding::Type::storedIn, "b")), "stored in b");
    EXPECT_EQ(printed(VornBinding(VornBinding::Type::runningOn, "b")), "running on b");
}

}  // namespace
}  // namespace vornrun::test

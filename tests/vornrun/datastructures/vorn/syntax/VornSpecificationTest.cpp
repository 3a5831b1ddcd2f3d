#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

/// Builds packages of types and implementations by name.
class Model {
  public:
    /// Adds an implementation "Type.name"; of each reference one subcomponent s0, s1, ... in the given modes.
    VornComponentImplementation* implementation(const std::string& packageName, const std::string& typeName,
                                                const std::string& name, const std::vector<std::string>& references,
                                                const std::vector<std::string>& inModes = {}, bool isPublic = true) {
        auto& package = packageOf(packageName);
        auto*& declaration = mDeclarations[packageName + "::" + typeName];
        if (declaration == nullptr) {
            declaration = makeDeclaration(typeName);
            package.addPublicDeclaration(declaration);
        }
        Parts parts;
        for (const std::string& reference : references) {
            parts.subcomponents.push_back(
                makeSubcomponent("s" + std::to_string(parts.subcomponents.size()), reference, inModes));
        }
        auto* const made = makeImplementation(declaration, name, parts);
        if (isPublic) {
            package.addPublicImplementation(made);
        } else {
            package.addPrivateImplementation(made);
        }
        return made;
    }

    VornPackage& packageOf(const std::string& name) {
        auto& package = mPackages[name];
        if (package == nullptr) package = std::make_unique<VornPackage>(name);
        return *package;
    }

    /// The packages leave the model.
    std::unique_ptr<VornSpecification> specification() {
        std::vector<VornPackage*> packages;
        for (auto& [name, package] : mPackages) packages.push_back(package.release());
        mPackages.clear();
        return std::make_unique<VornSpecification>(packages);
    }

  private:
    std::map<std::string, std::unique_ptr<VornPackage>> mPackages;
    std::map<std::string, VornComponentDeclaration*> mDeclarations;
};

TEST(RootCandidates, OneImplementationWithoutSubcomponentsIsTheOne) {
    Model model;
    const auto* const only = model.implementation("P", "T", "i", {});
    EXPECT_THAT(model.specification()->findRootCandidates(), ElementsAre(only));
}

TEST(RootCandidates, TwoImplementationsThatNobodyInstantiatesAreBothCandidatesInTheOrderOfParsing) {
    Model model;
    const auto* const z = model.implementation("Q", "Z", "i", {});
    const auto* const a = model.implementation("P", "A", "i", {});
    EXPECT_THAT(model.specification()->findRootCandidates(), ElementsAre(z, a));
}

TEST(RootCandidates, TwoImplementationsThatInstantiateEachOtherAreNone) {
    Model model;
    model.implementation("P", "A", "i", {"B.i"});
    model.implementation("P", "B", "i", {"A.i"});
    EXPECT_THAT(model.specification()->findRootCandidates(), IsEmpty());
}

TEST(RootCandidates, AnImplementationThatInstantiatesItselfIsNone) {
    Model model;
    model.implementation("P", "A", "i", {"A.i"});
    EXPECT_THAT(model.specification()->findRootCandidates(), IsEmpty());
}

TEST(RootCandidates, AnImplementationUsedInOneModeOnlyIsNone) {
    Model model;
    const auto* const root = model.implementation("P", "Root", "i", {"Spare.i"}, {"degraded"});
    model.implementation("P", "Spare", "i", {});
    EXPECT_THAT(model.specification()->findRootCandidates(), ElementsAre(root));
}

TEST(RootCandidates, APrivateImplementationMayBeOne) {
    Model model;
    const auto* const root = model.implementation("P", "Root", "i", {"Part.i"}, {}, false);
    model.implementation("P", "Part", "i", {});
    EXPECT_THAT(model.specification()->findRootCandidates(), ElementsAre(root));
}

TEST(VornSpecification, ResolvesReferencesInTheEnclosingAndInNamedPackages) {
    Model model;
    const auto* const root = model.implementation("P", "Root", "i", {"T.i", "Q::T.i", "Q::T", "T"});
    const auto* const own = model.implementation("P", "T", "i", {}, {}, false);
    const auto* const other = model.implementation("Q", "T", "i", {});
    const auto specification = model.specification();
    const auto& subcomponents = root->subcomponents();
    EXPECT_EQ(subcomponents.at("s0")->implementation(), own);
    EXPECT_EQ(subcomponents.at("s1")->implementation(), other);
    EXPECT_EQ(subcomponents.at("s2")->implementation(), other);
    EXPECT_EQ(subcomponents.at("s3")->implementation(), own);
}

TEST(VornSpecification, RefusesAReferenceToATypeWithTwoImplementations) {
    Model model;
    model.implementation("P", "Root", "i", {"pkg::Type"});
    model.implementation("pkg", "Type", "i", {});
    model.implementation("pkg", "Type", "j", {});
    EXPECT_THAT([&] { model.specification(); },
                ThrowsMessage<std::invalid_argument>("Declaration Type has multiple implementations."));
}

struct MissCase {
    const char* name;
    const char* reference;
    const char* message;
};

class MissingReference : public testing::TestWithParam<MissCase> {};

TEST_P(MissingReference, IsRefusedByName) {
    Model model;
    model.implementation("P", "Root", "i", {GetParam().reference});
    model.implementation("Q", "T", "i", {});
    EXPECT_THAT([&] { model.specification(); }, ThrowsMessage<std::invalid_argument>(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    References, MissingReference,
    testing::Values(MissCase{"NoSuchPackage", "R::T.i", "No package with name R in this specification."},
                    MissCase{"TypeOfAnotherPackage", "T", "No single implementation of type T in this package."},
                    MissCase{"ImplementationOfAnotherPackage", "T.i",
                             "No implementation with name T.i in this package."},
                    MissCase{"NoSuchImplementation", "Q::T.j", "No implementation with name T.j in this package."},
                    MissCase{"Empty", "", "No single implementation of type  in this package."},
                    MissCase{"PackageOnly", "Q:", "No single implementation of type  in this package."}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(VornSpecification, KeepsTheFirstOfTwoPackagesOfOneNameAndWarnsOfTheSecond) {
    const CapturedLog log;
    auto* const first = new VornPackage("P");
    const VornSpecification specification({first, new VornPackage("P")});
    EXPECT_EQ(specification.packages().at("P").get(), first);
    EXPECT_EQ(specification.packages().size(), 1u);
    EXPECT_THAT(
        log.records(),
        ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml",
                              "A second package of name 'P' in the specification is ignored, the first one stays."}));
}

TEST(VornSpecification, PrintsItsPackagesInNameOrder) {
    const VornSpecification specification({new VornPackage("Q"), new VornPackage("P")});
    EXPECT_EQ(printed(specification), printed(VornPackage("P")) + printed(VornPackage("Q")));
}

}  // namespace
}  // namespace vornrun::test

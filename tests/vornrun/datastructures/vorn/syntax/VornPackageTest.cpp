#include "vornrun/datastructures/vorn/syntax/VornPackage.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

TEST(VornPackage, ListsPublicThingsBeforePrivateOnesInNameOrder) {
    VornPackage package("P");
    auto* const d = makeDeclaration("D");
    auto* const c = makeDeclaration("C");
    auto* const b = makeDeclaration("B");
    auto* const a = makeDeclaration("A");
    package.addPrivateDeclaration(b);
    package.addPrivateDeclaration(a);
    package.addPublicDeclaration(d);
    package.addPublicDeclaration(c);
    EXPECT_THAT(package.declarations(), ElementsAre(c, d, a, b));

    auto* const di = makeImplementation(d, "i");
    auto* const ci = makeImplementation(c, "i");
    auto* const ai = makeImplementation(a, "i");
    package.addPrivateImplementation(ai);
    package.addPublicImplementation(di);
    package.addPublicImplementation(ci);
    EXPECT_THAT(package.implementations(), ElementsAre(ci, di, ai));
}

TEST(VornPackage, FindsPublicThingsBeforePrivateOnesOfTheSameName) {
    VornPackage package("P");
    auto* const hidden = makeDeclaration("T");
    auto* const shown = makeDeclaration("T");
    auto* const hiddenOnly = makeDeclaration("U");
    package.addPrivateDeclaration(hidden);
    package.addPublicDeclaration(shown);
    package.addPrivateDeclaration(hiddenOnly);
    EXPECT_EQ(package.findDeclaration("T"), shown);
    EXPECT_EQ(package.findDeclaration("U"), hiddenOnly);

    auto* const hiddenImplementation = makeImplementation(hidden, "i");
    auto* const shownImplementation = makeImplementation(shown, "i");
    package.addPrivateImplementation(hiddenImplementation);
    EXPECT_EQ(package.findImplementation("T.i"), hiddenImplementation);
    package.addPublicImplementation(shownImplementation);
    EXPECT_EQ(package.findImplementation("T.i"), shownImplementation);
}

TEST(VornPackage, NamesWhatItDoesNotFind) {
    VornPackage package("P");
    package.addPublicDeclaration(makeDeclaration("T"));
    EXPECT_THAT([&] { package.findDeclaration("X"); },
                ThrowsMessage<std::invalid_argument>("No declaration with name X in this package."));
    EXPECT_THAT([&] { package.findImplementation("T.i"); },
                ThrowsMessage<std::invalid_argument>("No implementation with name T.i in this package."));
    EXPECT_THAT([&] { package.findImplementationByType("T"); },
                ThrowsMessage<std::invalid_argument>("No single implementation of type T in this package."));
}

TEST(VornPackage, FindsTheSoleImplementationOfATypeInEitherPart) {
    VornPackage package("P");
    auto* const t = makeDeclaration("T");
    auto* const u = makeDeclaration("U");
    package.addPublicDeclaration(t);
    package.addPublicDeclaration(u);
    auto* const ti = makeImplementation(t, "i");
    auto* const ui = makeImplementation(u, "i");
    package.addPublicImplementation(ti);
    package.addPrivateImplementation(ui);
    EXPECT_EQ(package.findImplementationByType("T"), ti);
    EXPECT_EQ(package.findImplementationByType("U"), ui);
}

TEST(VornPackage, RefusesToChooseBetweenAPublicAndAPrivateImplementationOfAType) {
    VornPackage package("P");
    auto* const t = makeDeclaration("T");
    package.addPublicDeclaration(t);
    package.addPublicImplementation(makeImplementation(t, "i"));
    package.addPrivateImplementation(makeImplementation(t, "j"));
    EXPECT_THAT([&] { package.findImplementationByType("T"); },
                ThrowsMessage<std::invalid_argument>("Declaration T has multiple implementations."));
}

TEST(VornPackage, KeepsTheFirstOfANameAndWarnsOfEachSecond) {
    const CapturedLog log;
    VornPackage package("P");
    auto* const t = makeDeclaration("T");
    package.addPublicDeclaration(t);
    package.addPublicDeclaration(makeDeclaration("T"));
    auto* const i = makeImplementation(t, "i");
    package.addPrivateImplementation(i);
    package.addPrivateImplementation(makeImplementation(t, "i"));
    EXPECT_EQ(package.findDeclaration("T"), t);
    EXPECT_EQ(package.findImplementation("T.i"), i);
    EXPECT_EQ(package.findImplementationByType("T"), i) << "the refused one does not count";
    EXPECT_THAT(
        log.records(),
        ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml",
                              "A second component type of name 'T' in the public part of package 'P' is ignored, the "
                              "first one stays."},
                    LogRecord{LogLevel::Warn, "root.vornxml",
                              "A second component implementation of name 'T.i' in the private part of package 'P' is "
                              "ignored, the first one stays."}));
}

TEST(VornPackage, PrintsThePublicPartAlsoWhenEmpty) {
    EXPECT_EQ(printed(VornPackage("P")),
              "-------- PACKAGE P --------\n"
              "package P\n"
              "public\n"
              "end P;\n"
              "-------- END PACKAGE --------\n");
}

TEST(VornPackage, PrintsDeclarationsAndThenImplementationsOfEachPart) {
    VornPackage package("P");
    auto* const t = makeDeclaration("T");
    auto* const u = makeDeclaration("U");
    package.addPublicDeclaration(t);
    package.addPublicImplementation(makeImplementation(t, "i"));
    package.addPrivateDeclaration(u);
    EXPECT_EQ(printed(package),
              "-------- PACKAGE P --------\n"
              "package P\n"
              "public\n"
              "system T\n"
              "end T;\n"
              "system implementation T.i\n"
              "\tsubcomponents\n"
              "\t\tmode: data mode;\n"
              "end T.i;\n"
              "private\n"
              "system U\n"
              "end U;\n"
              "end P;\n"
              "-------- END PACKAGE --------\n");
}

}  // namespace
}  // namespace vornrun::test

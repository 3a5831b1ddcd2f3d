#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

template <class T>
VornDataSubcomponent* makeData(const std::string& name) {
    return new TypedVornDataSubcomponent<T>(name, nullptr, {}, false);
}

/// Implementations of a type Pump with an event port "go" and one "level".
class VornComponentImplementationOfAPump : public testing::Test {
  protected:
    std::unique_ptr<VornComponentImplementation> pump(const Parts& parts, const std::string& name = "i") {
        return std::unique_ptr<VornComponentImplementation>(makeImplementation(mDeclaration.get(), name, parts));
    }

    const std::unique_ptr<VornComponentDeclaration> mDeclaration{
        makeDeclaration("Pump", {makeEventPort("go", 10), makeEventPort("level", 11)})};
};

using Pump = VornComponentImplementationOfAPump;

TEST_F(Pump, WithoutDeclaredDataHasExactlyTheModeVariable) {
    const auto implementation = pump({});
    ASSERT_EQ(implementation->dataSubcomponents().size(), 1u);
    const VornDataSubcomponent& mode = *implementation->dataSubcomponents().at("mode");
    EXPECT_EQ(mode.type(), VornDataTypeTag::VornMode);
    EXPECT_EQ(mode.defaultValue(), nullptr);
    EXPECT_TRUE(mode.inModes().empty());
    EXPECT_FALSE(mode.observable());
}

TEST_F(Pump, KeepsADeclaredModeVariableWithoutAWarning) {
    const CapturedLog log;
    auto* const declared = makeData<VornInt>("mode");
    const auto implementation = pump({.data = {declared}});
    EXPECT_EQ(implementation->dataSubcomponents().size(), 1u);
    EXPECT_EQ(implementation->dataSubcomponents().at("mode").get(), declared);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(Pump, KeepsTheFirstOfANameAndWarnsOfEachSecond) {
    const CapturedLog log;
    auto* const subcomponent = makeSubcomponent("s", "A");
    auto* const data = makeData<VornInt>("x");
    auto* const mode = makeMode("m");
    const auto implementation = pump({.subcomponents = {subcomponent, makeSubcomponent("s", "B")},
                                      .data = {data, makeData<VornBool>("x")},
                                      .modes = {mode, makeMode("m", VornModeType::activation)}});
    EXPECT_EQ(implementation->subcomponents().at("s").get(), subcomponent);
    EXPECT_EQ(implementation->dataSubcomponents().at("x").get(), data);
    EXPECT_EQ(implementation->findMode("m"), mode);
    EXPECT_FALSE(implementation->hasActivationMode());
    const std::string where = " in component implementation 'Pump.i' is ignored, the first one stays.";
    EXPECT_THAT(log.records(),
                ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml", "A second subcomponent of name 's'" + where},
                            LogRecord{LogLevel::Warn, "root.vornxml", "A second data subcomponent of name 'x'" + where},
                            LogRecord{LogLevel::Warn, "root.vornxml", "A second mode of name 'm'" + where}));
}

TEST_F(Pump, IsNamedByItsTypeAndItself) {
    const auto implementation = pump({}, "electric");
    EXPECT_EQ(implementation->qualifiedName(), "Pump.electric");
    EXPECT_EQ(implementation->name(), "electric");
    EXPECT_EQ(implementation->category(), VornComponentCategory::system);
}

TEST_F(Pump, ListsItsModesInNameOrder) {
    auto* const b = makeMode("b");
    auto* const a = makeMode("a");
    const auto implementation = pump({.modes = {b, a}});
    EXPECT_THAT(implementation->modePointers(), ElementsAre(a, b));
    EXPECT_EQ(implementation->findMode("b"), b);
}

TEST_F(Pump, NamesAModeThatDoesNotExist) {
    const auto implementation = pump({.modes = {makeMode("a")}});
    EXPECT_THAT([&] { implementation->findMode("z"); },
                ThrowsMessage<std::invalid_argument>("No mode with name z in implementation Pump.i."));
}

TEST_F(Pump, HasAnActivationModeOnlyWhenOneOfThatTypeIsThere) {
    EXPECT_FALSE(pump({.modes = {makeMode("a", VornModeType::initial), makeMode("b", VornModeType::error)}})
                     ->hasActivationMode());
    EXPECT_TRUE(pump({.modes = {makeMode("a"), makeMode("b", VornModeType::activation)}})->hasActivationMode());
}

TEST_F(Pump, FindsADataSubcomponentBeforeAPortOfTheSameName) {
    auto* const data = makeData<VornReal>("level");
    const auto implementation = pump({.data = {data}});
    const VornReference reference("level");
    EXPECT_EQ(implementation->findIdentifier(&reference), data);
}

TEST_F(Pump, FindsItsPortsAndItsModeVariable) {
    const auto implementation = pump({});
    const VornReference port("go");
    const VornReference mode("mode");
    EXPECT_EQ(implementation->findIdentifier(&port), mDeclaration->featureByName("go"));
    EXPECT_EQ(implementation->findIdentifier(&mode), implementation->dataSubcomponents().at("mode").get());
}

TEST_F(Pump, ThrowsForAnUnknownNameOfItsOwn) {
    const auto implementation = pump({});
    const VornReference reference("nothing");
    EXPECT_THAT([&] { implementation->findIdentifier(&reference); },
                ThrowsMessage<std::invalid_argument>("Unknown feature name nothing"));
}

TEST_F(Pump, FindsPartsOfItsSubcomponentsAtAnyDepth) {
    auto* const data = makeData<VornReal>("x");
    const auto inner = pump({.data = {data}}, "inner");
    auto* const innerSubcomponent = makeSubcomponent("c", "Pump.inner");
    innerSubcomponent->setImplementation(inner.get());
    const auto middle = pump({.subcomponents = {innerSubcomponent}}, "middle");
    auto* const middleSubcomponent = makeSubcomponent("b", "Pump.middle");
    middleSubcomponent->setImplementation(middle.get());
    const auto outer = pump({.subcomponents = {middleSubcomponent}}, "outer");

    const VornReference found("b.c.x");
    EXPECT_EQ(outer->findIdentifier(&found), data);
    const VornReference unknownName("b.c.y");
    EXPECT_THAT([&] { outer->findIdentifier(&unknownName); },
                ThrowsMessage<std::invalid_argument>("Unknown feature name y"));
}

TEST_F(Pump, FindsNothingBehindAnUnknownOrUnresolvedSubcomponent) {
    const auto implementation = pump({.subcomponents = {makeSubcomponent("s", "Pump.i")}});
    for (const char* const text : {"t.x", "s.x", ".x", "s.t.x"}) {
        SCOPED_TRACE(text);
        const VornReference reference(text);
        EXPECT_EQ(implementation->findIdentifier(&reference), nullptr);
    }
}

TEST_F(Pump, NumbersImplementationsInTheOrderOfMaking) {
    const auto first = pump({}, "z");
    const auto second = pump({}, "a");
    EXPECT_LT(first->serial(), second->serial());
}

TEST_F(Pump, PrintsTheModeVariableWhenThereIsNothingElse) {
    EXPECT_EQ(printed(*pump({})),
              "system implementation Pump.i\n"
              "\tsubcomponents\n"
              "\t\tmode: data mode;\n"
              "end Pump.i;\n");
}

TEST_F(Pump, PrintsAllSectionsWithDataBeforeOtherSubcomponents) {
    const auto implementation =
        pump({.subcomponents = {makeSubcomponent("a", "T.i")},
              .data = {makeData<VornInt>("x")},
              .flows = {new VornFlow(new TypedVornVariable<VornInt>("out"), new TypedVornVariable<VornInt>("x"), {})},
              .connections = {new VornConnection(new VornReference("go"), new VornReference("a.go"), true, {}, false)},
              .modes = {makeMode("n"), makeMode("m", VornModeType::initial)},
              .transitions = {new VornTransition(0, "m", "n", nullptr, nullptr, {})},
              .reactivations = {new VornTransition(1, "n", "m", nullptr, nullptr, {})}});
    EXPECT_EQ(printed(*implementation),
              "system implementation Pump.i\n"
              "\tsubcomponents\n"
              "\t\tmode: data mode;\n"
              "\t\tx: data int;\n"
              "\t\ta : ? T.i; --0\n"
              "\tconnections\n"
              "\t\tevent port go -> a.go;\n"
              "\tflows\n"
              "\t\tout :=  x\n"
              "\tmodes\n"
              "\t\tm: initial mode;\n"
              "\t\tn: mode;\n"
              "\ttransitions\n"
              "\t\tm-[ ]->n; -- 0\n"
              "--@activation\n"
              "\t\tn-[ ]->m; -- 1\n"
              "end Pump.i;\n");
}

TEST_F(Pump, PrintsReactivationsWithoutTheHeadingOfTransitionsWhenThereAreNone) {
    const auto implementation = pump({.modes = {makeMode("m", VornModeType::initial)},
                                      .reactivations = {new VornTransition(0, "m", "m", nullptr, nullptr, {})}});
    EXPECT_EQ(printed(*implementation),
              "system implementation Pump.i\n"
              "\tsubcomponents\n"
              "\t\tmode: data mode;\n"
              "\tmodes\n"
              "\t\tm: initial mode;\n"
              "--@activation\n"
              "\t\tm-[ ]->m; -- 0\n"
              "end Pump.i;\n");
}

}  // namespace
}  // namespace vornrun::test

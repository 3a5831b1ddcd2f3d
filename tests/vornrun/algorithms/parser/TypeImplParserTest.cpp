#include "vornrun/algorithms/parser/TypeImplParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/ParsedImplementation.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TypeImplParser, LeavesReactivationsEmptyWithoutTheirElement) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a");
    const auto specification = parseModel(model);
    EXPECT_EQ(implementation(*specification).transitions().size(), 1u);
    EXPECT_THAT(implementation(*specification).reactivationTransitions(), IsEmpty());
}

TEST(TypeImplParser, KeepsNormalTransitionsAndReactivationsApart) {
    ModelWriter model;
    model.implementation("T.i").mode("a").mode("b").reactivation("a", "b").transition("b", "a");
    const auto specification = parseModel(model);
    const auto& parsed = implementation(*specification);
    ASSERT_EQ(parsed.transitions().size(), 1u);
    EXPECT_EQ(parsed.transitions()[0]->source(), "b");
    ASSERT_EQ(parsed.reactivationTransitions().size(), 1u);
    EXPECT_EQ(parsed.reactivationTransitions()[0]->source(), "a");
}

TEST(TypeImplParser, IgnoresProbabilisticTransitionsAndInvariants) {
    ModelWriter model;
    model.implementation("T.i")
        .splice("probabilistic_mode_transitions", Xml("ModeTransition"))
        .splice("invariants", Xml("nonsense"));
    const CapturedLog log(LogLevel::Warn);
    EXPECT_THAT(implementation(*parseModel(model)).transitions(), IsEmpty());
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(TypeImplParser, TakesTheFirstTwoPartsOfTheName) {
    ModelWriter model;
    model.implementation("T.i.more");
    const auto specification = parseModel(model);
    EXPECT_EQ(implementation(*specification).qualifiedName(), "T.i");
}

TEST(TypeImplParser, NumbersPartsInTheOrderOfReading) {
    ModelWriter model;
    auto& inner = model.implementation("T.i");
    inner.mode("b").mode("a").reactivation("a", "b").transition("a", "b").transition("b", "a");
    inner.subcomponent("z", "U.i").subcomponent("y", "U.i");
    model.implementation("U.i").mode("c").transition("c", "c");
    const unsigned int mode = VornComponentImplementationConstructor::mModeId;
    const unsigned int transition = VornComponentImplementationConstructor::mTransitionId;
    const unsigned int subcomponent = VornComponentImplementationConstructor::mSubcompId;
    const auto specification = parseModel(model);
    const auto& t = implementation(*specification);
    const auto& u = implementation(*specification, "U.i");
    EXPECT_EQ(t.findMode("b")->id(), mode);
    EXPECT_EQ(t.findMode("a")->id(), mode + 1);
    EXPECT_EQ(u.findMode("c")->id(), mode + 2);
    EXPECT_EQ(t.transitions()[0]->id(), transition);
    EXPECT_EQ(t.transitions()[1]->id(), transition + 1);
    EXPECT_EQ(t.reactivationTransitions()[0]->id(), transition + 2);
    EXPECT_EQ(u.transitions()[0]->id(), transition + 3);
    EXPECT_EQ(t.subcomponents().at("z")->id(), subcomponent);
    EXPECT_EQ(t.subcomponents().at("y")->id(), subcomponent + 1);
}

TEST(TypeImplParser, ReadsConnectionsDataBeforeEvents) {
    ModelWriter model;
    model.implementation("T.i")
        .connectEvent("go", "sub.go", inModes("a", "b"), passive)
        .connectData("sub.out.deep", "in");
    const auto specification = parseModel(model);
    const auto& connections = implementation(*specification).connections();
    ASSERT_EQ(connections.size(), 2u);
    EXPECT_FALSE(connections[0]->isEvent());
    EXPECT_FALSE(connections[0]->passive());
    EXPECT_EQ(connections[0]->source().subComponent(), "sub");
    EXPECT_EQ(connections[0]->source().name(), "out.deep");
    EXPECT_EQ(connections[0]->target().name(), "in");
    EXPECT_THAT(connections[0]->inModes(), IsEmpty());
    EXPECT_TRUE(connections[1]->isEvent());
    EXPECT_TRUE(connections[1]->passive());
    EXPECT_EQ(connections[1]->target().text(), "sub.go");
    EXPECT_THAT(connections[1]->inModes(), ElementsAre("a", "b"));
}

TEST(TypeImplParser, ReadsFlowsWithTheirModes) {
    ModelWriter model;
    model.implementation("T.i").flow(n, n + 1, inModes("a")).flow(var("sub.b", Type::Bool), b);
    const auto specification = parseModel(model);
    const auto& flows = implementation(*specification).flows();
    ASSERT_EQ(flows.size(), 2u);
    EXPECT_EQ(flows[0]->variable()->text(), "n");
    EXPECT_EQ(text(*flows[0]->expression()), "n + 1");
    EXPECT_THAT(flows[0]->inModes(), ElementsAre("a"));
    EXPECT_EQ(flows[1]->variable()->subComponent(), "sub");
    EXPECT_THAT(flows[1]->inModes(), IsEmpty());
}

TEST(TypeImplParser, ReadsSubcomponentsWithBindingsByKind) {
    ModelWriter model;
    model.implementation("T.i").subcomponent("s", "main::U.i", storedIn("ram"), runningOn("cpu"), accesses("bus"),
                                             accesses("net"), inModes("a"));
    model.implementation("U.i");
    const auto specification = parseModel(model);
    const VornSubComponent& s = *implementation(*specification).subcomponents().at("s");
    EXPECT_EQ(s.implementationRef(), "main::U.i");
    EXPECT_EQ(s.implementation(), &implementation(*specification, "U.i"));
    EXPECT_THAT(s.inModes(), ElementsAre("a"));
    std::vector<std::string> bindings;
    for (const VornBinding& binding : s.bindings()) bindings.push_back(text(binding));
    EXPECT_THAT(bindings, ElementsAre("accesses bus", "accesses net", "running on cpu", "stored in ram"));
}

TEST(TypeImplParser, LooksAtImplementationReferencesOnlyWhenTheWholeFileIsRead) {
    ModelWriter model;
    model.implementation("T.i").subcomponent("s", "U.wrong");
    model.implementation("U.i");
    try {
        parseModel(model);
        FAIL() << "accepted";
    } catch (const std::invalid_argument& fault) {
        EXPECT_STREQ(fault.what(), "No implementation with name U.wrong in this package.");
    }
    // A fault later in the file is found before the reference is resolved.
    Xml document = model.document();
    document.nth("ComponentImplementation", 1).remove("flows");
    EXPECT_THROW(parseModel(document), VornXmlException);
}

TEST(TypeImplParser, ReadsDataWithDefaultsModesAndObservability) {
    ModelWriter model;
    model.implementation("T.i").data(n, 3, observable, inModes("a", "b")).data(x);
    const auto specification = parseModel(model);
    const auto& data = implementation(*specification).dataSubcomponents();
    const VornDataSubcomponent& count = *data.at("n");
    EXPECT_EQ(count.type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(text(*count.defaultValue()), "3");
    EXPECT_TRUE(count.observable());
    EXPECT_THAT(count.inModes(), ElementsAre("a", "b"));
    EXPECT_TRUE(data.at("x")->isClock());
    EXPECT_EQ(data.at("x")->defaultValue(), nullptr);
    EXPECT_FALSE(data.at("x")->observable());
    EXPECT_THAT(data.at("x")->inModes(), IsEmpty());
    EXPECT_EQ(data.at("mode")->type(), VornDataTypeTag::VornMode);
}

TEST(TypeImplParser, TakesObservableFalseAsSaid) {
    ModelWriter model;
    model.implementation("T.i").data(n, Xml("observable", "False"));
    EXPECT_FALSE(implementation(*parseModel(model)).dataSubcomponents().at("n")->observable());
}

struct DataCase {
    const char* name;
    Type type;
    Expr value;
    VornDataTypeTag tag;
    const char* text;
};

class Data : public testing::TestWithParam<DataCase> {};

TEST_P(Data, HasItsTypeAndDefault) {
    ModelWriter model;
    model.implementation("T.i").data(var("v", GetParam().type), GetParam().value);
    const auto specification = parseModel(model);
    const VornDataSubcomponent& v = *implementation(*specification).dataSubcomponents().at("v");
    EXPECT_EQ(v.type(), GetParam().tag);
    ASSERT_NE(v.defaultValue(), nullptr);
    EXPECT_EQ(v.defaultValue()->type(), GetParam().tag);
    EXPECT_EQ(text(*v.defaultValue()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    TypeImplParser, Data,
    testing::Values(DataCase{"Bool", Type::Bool, false, VornDataTypeTag::VornBool, "0"},
                    DataCase{"Real", Type::Real, 0.5, VornDataTypeTag::VornReal, "0.5"},
                    DataCase{"Int", Type::Int, -7, VornDataTypeTag::VornInt, "-7"},
                    DataCase{"Continuous", Type::Continuous, 2.5, VornDataTypeTag::VornContinuous, "2.5"},
                    DataCase{"Clock", Type::Clock, 1, VornDataTypeTag::VornClock, "1"},
                    DataCase{"Enum", Type::Enum, enumLiteral("red"), VornDataTypeTag::VornEnum, "red"}),
    CaseName());

TEST(TypeImplParser, LeavesTheDefaultOfAnIntervalOutAfterAnError) {
    ModelWriter model;
    model.implementation("T.i").data(var("v", Type::Interval), 3);
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    const VornDataSubcomponent& v = *implementation(*specification).dataSubcomponents().at("v");
    EXPECT_EQ(v.type(), VornDataTypeTag::VornInterval);
    EXPECT_EQ(v.defaultValue(), nullptr);
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Error, "root.vornxml",
                                                     "Unable to parse Vorn value of type VornInterval"}));
}

TEST(TypeImplParser, TakesModeNamesFromElementsOfAnyName) {
    ModelWriter model;
    model.implementation("T.i").data(n, Xml("in_modes", {Xml("a", "one"), Xml("b", "two")})).data(x, Xml("in_modes"));
    const auto specification = parseModel(model);
    const auto& data = implementation(*specification).dataSubcomponents();
    EXPECT_THAT(data.at("n")->inModes(), ElementsAre("one", "two"));
    EXPECT_THAT(data.at("x")->inModes(), IsEmpty());
}

struct StrangerCase {
    const char* name;  // of the list
    const char* warning;
};

class Strangers : public testing::TestWithParam<StrangerCase> {};

TEST_P(Strangers, AreSkippedWithAWarning) {
    ModelWriter model;
    auto& parts = model.implementation("T.i");
    parts.mode("a", invariant(x <= 5.0), rate(y, 1.0)).reactivation("a", "a").transition("a", "a", when(x > 1.0));
    Xml document = model.document();
    document.first(GetParam().name).add(Xml("Odd", {Xml("name", "p")}));
    const CapturedLog log(LogLevel::Warn);
    parseModel(document);
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml", GetParam().warning}));
}

#define STRANGER(list) \
    StrangerCase { list, "[Incomplete parser warning:] Unknown tag 'Odd' in '" list "' ignored." }
INSTANTIATE_TEST_SUITE_P(TypeImplParser, Strangers,
                         testing::Values(STRANGER("implementations"), STRANGER("normal_mode_transitions"),
                                         STRANGER("reactivation_mode_transitions"), STRANGER("data_port_connections"),
                                         STRANGER("event_port_connections"), STRANGER("flows"),
                                         STRANGER("non_data_subcomponents"), STRANGER("data_subcomponents"),
                                         STRANGER("clauses"), STRANGER("terms"), STRANGER("trajectories")),
                         CaseName());
#undef STRANGER

TEST(TypeImplParser, SeesTheTypesOfBothSectionsButNoneThatComeLater) {
    ModelWriter model;
    model.package("main").publicPart().type("T");
    model.package("main").privatePart().implementation("T.i");
    EXPECT_EQ(implementation(*parseModel(model)).declaration()->name(), "T");

    ModelWriter reversed;
    reversed.package("main").privatePart().type("T");
    reversed.package("main").publicPart().implementation("T.i");
    EXPECT_THROW(parseModel(reversed), parser::UnknownTypeException);
}

}  // namespace
}  // namespace vornrun::test

#include "vornrun/algorithms/parser/TypeDeclParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const VornComponentDeclaration& declaration(const VornSpecification& specification, const std::string& name = "T") {
    return *specification.packages().at("main")->findDeclaration(name);
}

/// The port of type T of a parsed model, as the class that the test expects.
template <class Port>
const Port& port(const VornSpecification& specification, const std::string& name) {
    return dynamic_cast<const Port&>(*declaration(specification).featureByName(name));
}

Xml errorPort(const std::string& name, const std::string& distribution, const std::string& parameter) {
    return Xml("ErrorEventPort", {Xml("name", name), Xml("nonblocking", "False"), Xml("distribution", distribution),
                                  Xml("parameter", parameter)});
}

TEST(TypeDeclParser, GivesATypeWithoutListsNoFeatures) {
    ModelWriter model;
    model.type("T");
    const auto specification = parseModel(model);
    EXPECT_THAT(declaration(*specification).features(), IsEmpty());
    EXPECT_EQ(declaration(*specification).name(), "T");
}

TEST(TypeDeclParser, IgnoresTheNonblockingSpecifierOfAnInEventPort) {
    ModelWriter model;
    model.type("T").splice("in_event_ports", Xml("InEventPort", {Xml("name", "p"), Xml("nonblocking", "True")}));
    model.type("U").splice("in_event_ports", Xml("InEventPort", {Xml("name", "p"), Xml("nonblocking", "nonsense")}));
    const auto specification = parseModel(model);
    const auto& p = port<VornEventPort>(*specification, "p");
    EXPECT_FALSE(p.nonblocking());
    EXPECT_EQ(p.direction(), PortDirection::in);
}

TEST(TypeDeclParser, ReadsTheNonblockingSpecifierOfAnOutEventPort) {
    ModelWriter model;
    model.type("T").outEvent("p").outEvent("q", nonblocking);
    const auto specification = parseModel(model);
    EXPECT_FALSE(port<VornEventPort>(*specification, "p").nonblocking());
    EXPECT_TRUE(port<VornEventPort>(*specification, "q").nonblocking());
    EXPECT_EQ(port<VornEventPort>(*specification, "p").direction(), PortDirection::out);
}

class ErrorPortsIn : public testing::TestWithParam<const char*> {};

TEST_P(ErrorPortsIn, BecomeOutPortsWhateverTheList) {
    ModelWriter model;
    model.type("T").splice(GetParam(), errorPort("p", "1", "0.25"));
    const auto specification = parseModel(model);
    const auto& p = port<VornErrorPort>(*specification, "p");
    EXPECT_EQ(p.direction(), PortDirection::out);
    EXPECT_EQ(p.distribution(), DistributionType::poisson);
    EXPECT_EQ(p.parameter(), 0.25);
}

INSTANTIATE_TEST_SUITE_P(TypeDeclParser, ErrorPortsIn,
                         testing::Values("in_data_ports", "out_data_ports", "in_event_ports", "out_event_ports"),
                         [](const auto& row) { return std::string(row.param); });

TEST(TypeDeclParser, GivesAnErrorPortWithoutDistributionNoOccurrence) {
    ModelWriter model;
    model.type("T").errorPort("p", nonblocking).errorPort("q", Xml("parameter", "nonsense"));
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornErrorPort>(*specification, "p").distribution(), DistributionType::none);
    EXPECT_TRUE(port<VornErrorPort>(*specification, "p").nonblocking());
    EXPECT_FALSE(port<VornErrorPort>(*specification, "q").nonblocking());
}

TEST(TypeDeclParser, TakesAnotherDistributionForPoissonAfterAWarning) {
    ModelWriter model;
    model.type("T")
        .splice("out_event_ports", errorPort("p", "2", "3"))
        .splice("out_event_ports", errorPort("q", "0", "4"));
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornErrorPort>(*specification, "p").distribution(), DistributionType::poisson);
    EXPECT_EQ(port<VornErrorPort>(*specification, "p").parameter(), 3.0);
    EXPECT_EQ(port<VornErrorPort>(*specification, "q").parameter(), 4.0);
    EXPECT_THAT(
        log.records(),
        ElementsAre(LogRecord{LogLevel::Warn, "root.vornxml",
                              "[Incomplete parser warning:] Errorport - distribution '2' ignored, assuming poisson."},
                    LogRecord{LogLevel::Warn, "root.vornxml",
                              "[Incomplete parser warning:] Errorport - distribution '0' ignored, assuming poisson."}));
}

class BadRates : public testing::TestWithParam<const char*> {};

TEST_P(BadRates, LeaveTheParserAsInvalidArguments) {
    ModelWriter model;
    model.type("T").splice("out_event_ports", errorPort("p", "1", GetParam()));
    try {
        parseModel(model);
        FAIL() << "accepted";
    } catch (const std::invalid_argument& fault) {
        EXPECT_STREQ(fault.what(), "Poisson numbers have to be positive");
    }
}

INSTANTIATE_TEST_SUITE_P(TypeDeclParser, BadRates, testing::Values("0", "-0.5", "nan", "-inf"),
                         NamesInOrder({"Zero", "Negative", "NoNumber", "MinusInfinity"}));

struct CategoryCase {
    const char* name;
    const char* number;
    VornComponentCategory category;
};

class Categories : public testing::TestWithParam<CategoryCase> {};

TEST_P(Categories, HaveTheNumbersOfTheFile) {
    ModelWriter model;
    model.type("T");
    Xml document = model.document();
    document.first("category").text(GetParam().number);
    EXPECT_EQ(declaration(*parseModel(document)).category(), GetParam().category);
}

INSTANTIATE_TEST_SUITE_P(TypeDeclParser, Categories,
                         testing::Values(CategoryCase{"Process", "0", VornComponentCategory::process},
                                         CategoryCase{"ThreadGroup", "1", VornComponentCategory::threadGroup},
                                         CategoryCase{"Thread", "2", VornComponentCategory::thread},
                                         CategoryCase{"Data", "3", VornComponentCategory::data},
                                         CategoryCase{"Processor", "4", VornComponentCategory::processor},
                                         CategoryCase{"Memory", "5", VornComponentCategory::memory},
                                         CategoryCase{"Device", "6", VornComponentCategory::device},
                                         CategoryCase{"Bus", "7", VornComponentCategory::bus},
                                         CategoryCase{"System", "8", VornComponentCategory::system}),
                         CaseName());

struct DataPortCase {
    const char* name;
    Type type;
    Expr value;
    VornDataTypeTag tag;
    const char* line;  // as printed, but for the id
};

class DataPorts : public testing::TestWithParam<DataPortCase> {};

TEST_P(DataPorts, HaveTheirTypesAndDefaults) {
    ModelWriter model;
    model.type("T").inData(var("p", GetParam().type), GetParam().value).inData(var("q", GetParam().type));
    const auto specification = parseModel(model);
    const auto& p = port<VornDataPort>(*specification, "p");
    EXPECT_EQ(p.type(), GetParam().tag);
    EXPECT_EQ(p.direction(), PortDirection::in);
    EXPECT_EQ(p.tag(), PortTag::none);
    ASSERT_NE(p.defaultValue(), nullptr);
    std::ostringstream text;
    p.defaultValue()->printVorn(text);
    EXPECT_EQ(text.str(), GetParam().line);
    EXPECT_EQ(port<VornDataPort>(*specification, "q").defaultValue(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    TypeDeclParser, DataPorts,
    testing::Values(DataPortCase{"Bool", Type::Bool, true, VornDataTypeTag::VornBool, "1"},
                    DataPortCase{"Real", Type::Real, 0.5, VornDataTypeTag::VornReal, "0.5"},
                    DataPortCase{"Int", Type::Int, -7, VornDataTypeTag::VornInt, "-7"},
                    DataPortCase{"Continuous", Type::Continuous, 2, VornDataTypeTag::VornContinuous, "2"},
                    DataPortCase{"Clock", Type::Clock, 1.25, VornDataTypeTag::VornClock, "1.25"},
                    DataPortCase{"Enum", Type::Enum, enumLiteral("red"), VornDataTypeTag::VornEnum, "red"}),
    CaseName());

TEST(TypeDeclParser, LeavesTheDefaultOfAnIntervalOutAfterAnError) {
    ModelWriter model;
    model.type("T").inData(var("p", Type::Interval), 3);
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornDataPort>(*specification, "p").type(), VornDataTypeTag::VornInterval);
    EXPECT_EQ(port<VornDataPort>(*specification, "p").defaultValue(), nullptr);
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Error, "root.vornxml",
                                                     "Unable to parse Vorn value of type VornInterval"}));
}

TEST(TypeDeclParser, TagsOutDataPortsOnly) {
    ModelWriter model;
    model.type("T")
        .outData(var("none", Type::Bool))
        .outData(var("alarm", Type::Bool), alarm)
        .outData(var("observable", Type::Bool), observable)
        .inData(var("in", Type::Bool), Xml("observable", "True"), Xml("alarm", "True"));
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornDataPort>(*specification, "none").tag(), PortTag::none);
    EXPECT_EQ(port<VornDataPort>(*specification, "none").direction(), PortDirection::out);
    EXPECT_EQ(port<VornDataPort>(*specification, "alarm").tag(), PortTag::alarm);
    EXPECT_EQ(port<VornDataPort>(*specification, "observable").tag(), PortTag::observable);
    EXPECT_EQ(port<VornDataPort>(*specification, "in").tag(), PortTag::none);
}

TEST(TypeDeclParser, NumbersPortsInTheOrderOfTheFourListsAndNotOfTheFile) {
    ModelWriter model;
    model.type("T").outEvent("oe").inEvent("ie").outData(var("od", Type::Int)).inData(var("id", Type::Int));
    const unsigned int first = VornPartsConstructor::portIdCounter;
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornPort>(*specification, "id").id(), first);
    EXPECT_EQ(port<VornPort>(*specification, "od").id(), first + 1);
    EXPECT_EQ(port<VornPort>(*specification, "ie").id(), first + 2);
    EXPECT_EQ(port<VornPort>(*specification, "oe").id(), first + 3);
}

TEST(TypeDeclParser, SkipsOtherElementsOfAPortListWithAWarning) {
    ModelWriter model;
    model.type("T").inEvent("p").splice("in_event_ports", Xml("OutEventPort", {Xml("name", "q")}));
    model.type("U").splice("out_data_ports", Xml("DataPort"));
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    EXPECT_EQ(declaration(*specification).features().size(), 1u);
    EXPECT_THAT(declaration(*specification, "U").features(), IsEmpty());
    EXPECT_THAT(log.texts("root.vornxml"),
                ElementsAre("[Incomplete parser warning:] Unknown port tag 'OutEventPort' ignored.",
                            "[Incomplete parser warning:] Unknown port tag 'DataPort' ignored."));
}

TEST(TypeDeclParser, PassesOverTextAndCommentsInPortLists) {
    ModelWriter model;
    model.type("T").splice("in_event_ports", Xml::raw("text <!-- comment --> <![CDATA[more]]>")).inEvent("p");
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    EXPECT_EQ(declaration(*specification).features().size(), 1u);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(TypeDeclParser, MatchesAReferenceInAPortListByItsOwnNameAndReadsItsTarget) {
    ModelWriter model;
    model.type("T").splice("in_event_ports", Xml("InEventPort").attribute("objref", "p"));
    model.type("U").outEvent("shared", nonblocking);
    Xml document = model.document();
    document.first("OutEventPort").attribute("objid", "p");
    const auto specification = parseModel(document);
    EXPECT_EQ(port<VornEventPort>(*specification, "shared").direction(), PortDirection::in);
}

TEST(TypeDeclParser, ReadsASharedPortListAnewForEachType) {
    ModelWriter model;
    model.type("T").splice("in_event_ports", Xml("InEventPort", {Xml("name", "p")}));
    model.type("U").inEvent("own");
    Xml document = model.document();
    document.nth("in_event_ports", 0).attribute("objid", "list");
    document.nth("in_event_ports", 1) = Xml("in_event_ports").attribute("objref", "list");
    const auto specification = parseModel(document);
    const VornPort* first = declaration(*specification).featureByName("p");
    const VornPort* second = declaration(*specification, "U").featureByName("p");
    EXPECT_EQ(second->id(), first->id() + 1);
}

TEST(TypeDeclParser, KeepsTheFirstOfTwoPortsOfOneName) {
    ModelWriter model;
    model.type("T").inEvent("p").outEvent("p");
    const CapturedLog log(LogLevel::Warn);
    const auto specification = parseModel(model);
    EXPECT_EQ(port<VornEventPort>(*specification, "p").direction(), PortDirection::in);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_THAT(log.records().front().text, testing::HasSubstr("'p'"));
}

TEST(TypeDeclParser, SkipsOtherElementsAmongTheTypesWithAWarning) {
    ModelWriter model;
    model.type("T");
    Xml document = model.document();
    document.first("types").add(Xml("Odd"));
    const CapturedLog log(LogLevel::Warn);
    EXPECT_EQ(declaration(*parseModel(document)).name(), "T");
    EXPECT_THAT(log.texts("root.vornxml"),
                ElementsAre("[Incomplete parser warning:] Unknown tag 'Odd' in 'types' ignored."));
}

}  // namespace
}  // namespace vornrun::test

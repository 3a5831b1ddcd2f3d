#include "vornrun/algorithms/parser/TypeDeclParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
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
                         testing::PrintToStringParamName());

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

INSTANTIATE_TEST_SUITE_P(TypeDeclParser, BadRates, testing::Values("0", "-0.5", "nan", "-inf"));

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

struct Fault {
    const char* name;
    void (*spoil)(Xml& document);
    const char* what;
};

class TypeFaults : public testing::TestWithParam<Fault> {};

TEST_P(TypeFaults, AreToldInFull) {
    ModelWriter model;
    model.type("T")
        .inEvent("ie")
        .outEvent("oe")
        .errorPort("ee", 0.5)
        .inData(var("id", Type::Bool), true)
        .outData(var("od", Type::Int), 3);
    Xml document = model.document();
    GetParam().spoil(document);
    try {
        parseModel(document);
        FAIL() << "accepted";
    } catch (const VornXmlException& fault) {
        EXPECT_STREQ(fault.what(), GetParam().what);
    }
}

INSTANTIATE_TEST_SUITE_P(
    TypeDeclParser, TypeFaults,
    testing::Values(
        Fault{"NoTypes", [](Xml& d) { d.remove("types"); },
              "Error while parsing: Package needs types defined (Expected child node 'types' missing from "
              "'public_subpackage')"},
        Fault{"TypeWithoutName", [](Xml& d) { d.first("ComponentType").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'ComponentType')"},
        Fault{"TypeWithoutCategory", [](Xml& d) { d.remove("category"); },
              "Error while parsing: type declarations need a category (Expected child node 'category' missing from "
              "'ComponentType')"},
        Fault{"CategoryNotANumber", [](Xml& d) { d.first("category").text("system"); },
              "Error while parsing: Parsing type category (Unexpected value:\n\tExpected: An integer number larger "
              "than or equal 0 .\n\tFound: system)"},
        Fault{"CategoryNegative", [](Xml& d) { d.first("category").text("-1"); },
              "Error while parsing: Parsing type category (Unexpected value:\n\tExpected: An integer number larger "
              "than or equal 0 .\n\tFound: -1)"},
        Fault{"CategoryAboveEight", [](Xml& d) { d.first("category").text("9"); },
              "Error while parsing: Parsing type category (Unexpected value:\n\tExpected: A category number from 0 to "
              "8 .\n\tFound: 9)"},
        Fault{"InEventPortWithoutName", [](Xml& d) { d.first("InEventPort").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'InEventPort')"},
        Fault{"OutEventPortWithoutName", [](Xml& d) { d.first("OutEventPort").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'OutEventPort')"},
        Fault{"OutEventPortWithoutNonblocking", [](Xml& d) { d.first("OutEventPort").remove("nonblocking"); },
              "Error while parsing: Error port requires nonblocking specifier (Expected child node 'nonblocking' "
              "missing from 'OutEventPort')"},
        Fault{"OutEventPortNonblockingNotBoolean",
              [](Xml& d) { d.first("OutEventPort").first("nonblocking").text("true"); },
              "Error while parsing: Nonblocking specifier must be boolean (Unexpected value:\n\tExpected: Either True "
              "or False .\n\tFound: true)"},
        Fault{"ErrorPortWithoutName", [](Xml& d) { d.first("ErrorEventPort").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'ErrorEventPort')"},
        Fault{"ErrorPortWithoutNonblocking", [](Xml& d) { d.first("ErrorEventPort").remove("nonblocking"); },
              "Error while parsing: Error port requires nonblocking specifier (Expected child node 'nonblocking' "
              "missing from 'ErrorEventPort')"},
        Fault{"ErrorPortNonblockingNotBoolean",
              [](Xml& d) { d.first("ErrorEventPort").first("nonblocking").text(" True"); },
              "Error while parsing: Nonblocking specifier must be boolean (Unexpected value:\n\tExpected: Either True "
              "or False .\n\tFound:  True)"},
        Fault{"DistributionNotANumber", [](Xml& d) { d.first("distribution").text("poisson"); },
              "Error while parsing: Distribution type (Unexpected value:\n\tExpected: An integer number larger than or "
              "equal 0 .\n\tFound: poisson)"},
        Fault{"DistributionWithoutParameter", [](Xml& d) { d.remove("parameter"); },
              "Error while parsing: error port distribution need info about parameter (Expected child node "
              "'parameter' missing from 'ErrorEventPort')"},
        Fault{"ParameterNotANumber", [](Xml& d) { d.first("parameter").text("often"); },
              "Error while parsing: port parameter should be a Real value (Unexpected value:\n\tExpected: Any number. "
              ".\n\tFound: often)"},
        Fault{"InDataPortWithoutName", [](Xml& d) { d.first("DataPort").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'DataPort')"},
        Fault{"InDataPortWithoutType", [](Xml& d) { d.first("DataPort").remove("data_type"); },
              "Error while parsing: Data type specification is needed for data elements (Expected child node "
              "'data_type' missing from 'DataPort')"},
        Fault{"UnknownDataType", [](Xml& d) { d.first("data_type").attribute("type", "Mode"); },
              "Error while parsing:  (Unexpected value:\n\tExpected: One out of {Bool, Clock, Continuous, Enum, Int, "
              "IntRange, Real} .\n\tFound: Mode)"},
        Fault{"DefaultOfTheWrongForm",
              [](Xml& d) { d.first("default_value") = Xml("default_value", {Xml("number", "1")}); },
              "Error while parsing: Default value for VornBool needs a Boolean value. (Expected child node 'value' "
              "missing from 'default_value')"},
        Fault{"DefaultNotReadable", [](Xml& d) { d.first("default_value").first("value").text("1"); },
              "Error while parsing: Could not parse value type as Boolean. (Unexpected value:\n\tExpected: Either True "
              "or False .\n\tFound: 1)"},
        Fault{"OutDataPortWithoutName", [](Xml& d) { d.first("OutDataPort").remove("name"); },
              "Error while parsing:  (Expected child node 'name' missing from 'OutDataPort')"},
        Fault{"OutDataPortWithoutObservable", [](Xml& d) { d.first("OutDataPort").remove("observable"); },
              "Error while parsing: data port declarations need info about observability (Expected child node "
              "'observable' missing from 'OutDataPort')"},
        Fault{"ObservableNotBoolean", [](Xml& d) { d.first("observable").text("1"); },
              "Error while parsing: port observability should be a Boolean value (Unexpected value:\n\tExpected: "
              "Either True or False .\n\tFound: 1)"},
        Fault{"OutDataPortWithoutAlarm", [](Xml& d) { d.first("OutDataPort").remove("alarm"); },
              "Error while parsing: data port declarations need info about alarm (Expected child node 'alarm' missing "
              "from 'OutDataPort')"},
        Fault{"AlarmNotBoolean", [](Xml& d) { d.first("alarm").text(""); },
              "Error while parsing: port alarm should be a Boolean value (Unexpected value:\n\tExpected: Either True "
              "or False .\n\tFound: )"},
        Fault{"ObservableAndAlarm",
              [](Xml& d) {
                  d.first("observable").text("True");
                  d.first("alarm").text("True");
              },
              "Error while parsing: feature od declaration (Xml encoded invalid vorn.observable and alarm are mutual "
              "exclusive.)"},
        Fault{"OutDataPortWithoutType", [](Xml& d) { d.first("OutDataPort").remove("data_type"); },
              "Error while parsing: Data type specification is needed for data elements (Expected child node "
              "'data_type' missing from 'OutDataPort')"},
        Fault{"IntegerDefaultTooLarge", [](Xml& d) { d.nth("default_value", 1).first("number").text("3000000000"); },
              "Error while parsing: Could not parse value type as int. (Unexpected value:\n\tExpected: Any integer "
              "number. .\n\tFound: 3000000000)"}),
    CaseName());

TEST(TypeDeclParser, TellsOfAPortReferenceToNothing) {
    ModelWriter model;
    model.type("T").splice("in_event_ports", Xml("InEventPort").attribute("objref", "nowhere"));
    try {
        parseModel(model);
        FAIL() << "accepted";
    } catch (const VornXmlException& fault) {
        EXPECT_STREQ(
            fault.what(),
            "Error while parsing: XML references object that has not been parsed yet: nowhere (Parser failed.)");
    }
}

}  // namespace
}  // namespace vornrun::test

// Every structural fault of a component type, with its whole text.

#include <gtest/gtest.h>

#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/parser/TypeDeclParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"

namespace vornrun::test {
namespace {

struct Fault {
    const char* name;
    void (*spoil)(Xml& document);
    const char* what;
};

class TypeFaults : public testing::TestWithParam<Fault> {};

TEST_P(TypeFaults, AreReportedInFull) {
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

TEST(TypeDeclParser, ReportsAPortReferenceToNothing) {
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

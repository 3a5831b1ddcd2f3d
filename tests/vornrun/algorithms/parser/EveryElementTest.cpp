// A model file that uses every element there is, against what it must print as.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "tests/support/CapturedLog.h"
#include "tests/support/TempDir.h"
#include "tests/vornrun/algorithms/parser/ParsedImplementation.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"

namespace vornrun::test {
namespace {

const std::string goldenFolder = VORNRUN_GOLDEN_FOLDER;
const std::string modelFile = goldenFolder + "/every-element.xml";

/// Parses the file as the first one of a process, whose parts have the numbers of the rendering.
std::unique_ptr<VornSpecification> parseFirst() {
    VornPartsConstructor::portIdCounter = 10;
    VornComponentImplementationConstructor::mSubcompId = 0;
    VornComponentImplementationConstructor::mModeId = 0;
    VornComponentImplementationConstructor::mTransitionId = 0;
    parser::XmlContext context;
    VornXmlParser parser(context);
    return std::unique_ptr<VornSpecification>(parser.parseVorn(modelFile));
}

TEST(EveryElement, IsRenderedLineByLine) {
    const auto specification = parseFirst();
    std::istringstream rendering(text(*specification));
    std::istringstream golden(readFile(goldenFolder + "/every-element.rendering.txt"));
    std::string line, expected;
    for (unsigned int number = 1; std::getline(golden, expected); ++number) {
        ASSERT_TRUE(std::getline(rendering, line)) << "line " << number << " is missing";
        EXPECT_EQ(line, expected) << "line " << number;
    }
    EXPECT_FALSE(std::getline(rendering, line)) << "a line too many: " << line;
}

TEST(EveryElement, ParsesWithoutAWarning) {
    const CapturedLog log(LogLevel::Warn);
    parseFirst();
    EXPECT_THAT(log.records(), testing::IsEmpty());
}

TEST(EveryElement, HasTheClausesThatItsTransitionsShare) {
    const auto specification = parseFirst();
    const VornPackage& package = *specification->packages().at("Plant");
    for (const char* name : {"Plant.main", "Pump.basic"}) {
        const auto& guard = *package.findImplementation(name)->transitions()[0]->guard();
        ASSERT_EQ(guard.clauses().size(), 3u);
        EXPECT_EQ(text(*guard.clauses()[0]), "x * 1 >= 2");
        EXPECT_EQ(text(*guard.clauses()[1]), "c * 1 + x * 0 != i + r and b");
        EXPECT_EQ(text(*guard.clauses()[2]), " and 0");
    }
    const auto& invariant = *package.findImplementation("Pump.basic")->findMode("running")->invariant();
    ASSERT_EQ(invariant.clauses().size(), 1u);
    EXPECT_EQ(text(*invariant.clauses()[0]), "x * 1 <= 5 and b");
}

TEST(EveryElement, LeavesTheImplementationsThatNobodyInstantiatesAsRoots) {
    const auto specification = parseFirst();
    // A private one is a candidate as well.
    std::vector<std::string> names;
    for (const VornComponentImplementation* root : specification->findRootCandidates())
        names.push_back(root->qualifiedName());
    EXPECT_THAT(names, testing::ElementsAre("Plant.main", "Store.ram"));
}

TEST(EveryElement, StandsInTheFile) {
    const std::string file = readFile(modelFile);
    for (const char* tag : {"Clause",
                            "clauses",
                            "cond",
                            "equations",
                            "CompileInformation",
                            "PortConnection",
                            "passive",
                            "source_port",
                            "target_port",
                            "data_port_connections",
                            "event_port_connections",
                            "data_subcomponents",
                            "DataSubcomponent",
                            "data_type",
                            "default_value",
                            "observable",
                            "expression",
                            "tuple",
                            "cases",
                            "default_expression",
                            "left",
                            "node_type",
                            "operator",
                            "right",
                            "subexpression",
                            "Flow",
                            "flows",
                            "implementations",
                            "in_modes",
                            "LinExp",
                            "constant",
                            "terms",
                            "Mode",
                            "invariant",
                            "invariants",
                            "trajectories",
                            "type",
                            "modes",
                            "name",
                            "nonblocking",
                            "Package",
                            "packages",
                            "alarm",
                            "DataPort",
                            "OutDataPort",
                            "distribution",
                            "ErrorEventPort",
                            "InEventPort",
                            "OutEventPort",
                            "parameter",
                            "in_data_ports",
                            "out_data_ports",
                            "in_event_ports",
                            "out_event_ports",
                            "private_subpackage",
                            "public_subpackage",
                            "NonDataSubcomponent",
                            "implementation_ref",
                            "accesses",
                            "running_on",
                            "stored_in",
                            "non_data_subcomponents",
                            "Term",
                            "factor",
                            "var",
                            "TrajectoryEquationTreeNode",
                            "variable",
                            "trajectory_expression",
                            "ModeTransition",
                            "guard",
                            "trigger",
                            "BinaryOperatorTreeNode",
                            "effects",
                            "label",
                            "source_mode",
                            "target_mode",
                            "normal_mode_transitions",
                            "reactivation_mode_transitions",
                            "probabilistic_mode_transitions",
                            "category",
                            "ComponentType",
                            "ComponentImplementation",
                            "types",
                            "value",
                            "number"})
        EXPECT_THAT(file, testing::ContainsRegex(std::string("<") + tag + "[ />]"));
    for (const char* kind : {"BinaryOperatorTreeNode", "UnaryOperatorTreeNode", "CaseExpressionTreeNode",
                             "BooleanTreeNode", "NumberTreeNode", "IdentifierTreeNode", "TrajectoryEquationTreeNode",
                             "Bool", "Enum", "Real", "Clock", "Continuous", "Int", "IntRange"})
        EXPECT_THAT(file, testing::HasSubstr(std::string("type=\"") + kind + "\""));
    for (const int number : {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 15, 16, 19, 20})
        EXPECT_THAT(file, testing::HasSubstr("<node_type>" + std::to_string(number) + "<"));
    for (const int number : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 15, 16, 17, 18, 19})
        EXPECT_THAT(file, testing::HasSubstr("<operator>" + std::to_string(number) + "<"));
}

}  // namespace
}  // namespace vornrun::test

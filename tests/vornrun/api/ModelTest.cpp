#include "vornrun/api/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/vornrun/api/DoorModels.h"

namespace vornrun::test {
namespace {

ModelWriter plant() {
    const Var level = var("level", Type::Continuous), broken = var("broken", Type::Bool);
    ModelWriter model;
    model.type("Pump").errorPort("fails", 0.5).outData(broken, false).inData(var("speed", Type::Int), 3);
    model.implementation("Pump.i").mode("running").mode("dead").transition("running", "dead", on("fails"),
                                                                           set(broken, true));
    model.implementation("Plant.i")
        .subcomponent("pump", "Pump.i")
        .data(level, 2.5)
        .data(var("x", Type::Clock))
        .data(var("label", Type::Enum), enumLiteral("blue"))
        .mode("on");
    return model;
}

const Fault& lastFault(const FaultException& exception) { return exception.faults().back(); }

TEST(Model, NamesItsComponentsRootFirst) {
    const Model model = modelOf(plant());
    ASSERT_EQ(model.components().size(), 2U);
    const ComponentInfo& root = model.components()[0];
    EXPECT_EQ(root.name, "main");
    EXPECT_EQ(root.implementation, "Plant.i");
    EXPECT_EQ(root.parent, std::nullopt);
    const ComponentInfo& pump = model.components()[1];
    EXPECT_EQ(pump.name, "main.pump");
    EXPECT_EQ(pump.implementation, "Pump.i");
    EXPECT_EQ(pump.parent, 0U);
    EXPECT_EQ(pump.modes, (std::vector<std::string>{"dead", "running"}));
}

TEST(Model, NamesItsValuesAsPropertiesDo) {
    const Model model = modelOf(plant());
    std::vector<std::string> values;
    for (const ValueInfo& value : model.values())
        values.push_back(value.name + ": " + word(value.type) + " of " + std::to_string(value.component));
    EXPECT_EQ(values, (std::vector<std::string>{"label: enum of 0", "level: continuous of 0", "mode: mode of 0",
                                                "x: clock of 0", "pump.mode: mode of 1", "pump.broken: bool of 1",
                                                "pump.speed: int of 1"}));
}

TEST(Model, TellsWhereAValueComesFrom) {
    const Model model = modelOf(plant());
    const auto kind = [&model](const char* name) { return model.values()[*model.findValue(name)].kind; };
    EXPECT_EQ(kind("level"), ValueInfo::Kind::data);
    EXPECT_EQ(kind("pump.mode"), ValueInfo::Kind::mode);
    EXPECT_EQ(kind("pump.broken"), ValueInfo::Kind::outPort);
    EXPECT_EQ(kind("pump.speed"), ValueInfo::Kind::inPort);
    EXPECT_EQ(model.findValue("pump.nothing"), std::nullopt);
}

TEST(Model, SaysInWhichFileWhatIsMissing) {
    const TempDir folder;
    const std::string path = folder.write("broken.xml", "<CompileInformation>\n  <packages>\n</CompileInformation>\n");
    try {
        Model::fromFile(path);
        FAIL() << "no exception";
    } catch (const FaultException& exception) {
        EXPECT_EQ(lastFault(exception).file, path);
        EXPECT_EQ(lastFault(exception).line, 3U);
        EXPECT_GT(lastFault(exception).column, 0U);
        EXPECT_EQ(lastFault(exception).severity, Severity::error);
    }
}

TEST(Model, SaysAtWhichElementAChildIsMissing) {
    const TempDir folder;
    const std::string path =
        folder.write("broken.xml",
                     "<CompileInformation>\n<packages>\n <Package>\n </Package>\n</packages>\n</CompileInformation>\n");
    try {
        Model::fromFile(path);
        FAIL() << "no exception";
    } catch (const FaultException& exception) {
        EXPECT_EQ(lastFault(exception).line, 3U) << exception.what();
        EXPECT_NE(lastFault(exception).text.find("'name' missing from 'Package'"), std::string::npos)
            << exception.what();
    }
}

TEST(Model, RefusesAFileThatIsNotThere) { EXPECT_THROW(Model::fromFile("/nowhere/model.xml"), FaultException); }

TEST(Model, NamesTheCandidatesWhenThereIsNoOneRoot) {
    ModelWriter model;
    model.implementation("A.i");
    model.implementation("B.i");
    try {
        modelOf(model);
        FAIL() << "no exception";
    } catch (const FaultException& exception) {
        EXPECT_NE(lastFault(exception).text.find("this one has 2: A.i, B.i"), std::string::npos) << exception.what();
    }
}

TEST(Model, RefusesAModelThatCannotBeBuilt) {
    ModelWriter model;
    model.implementation("A.i").mode("only", ModeKind::Error);
    try {
        modelOf(model);
        FAIL() << "no exception";
    } catch (const FaultException& exception) {
        EXPECT_NE(lastFault(exception).text.find("initial/activation mode"), std::string::npos) << exception.what();
    }
}

TEST(Model, RefusesFlowsThatDependOnEachOtherInACircle) {
    const Var a = var("a", Type::Int), b = var("b", Type::Int), c = var("c", Type::Int);
    ModelWriter model;
    model.implementation("A.i").data(a, 0).data(b, 0).data(c, 0).mode("m").flow(a, b).flow(b, a).flow(c, a);
    EXPECT_THROW(modelOf(model), FaultException);
}

TEST(Model, WarnsOfNamesThatDoNotResolve) {
    ModelWriter model;
    model.implementation("A.i").mode("a").mode("b").transition("a", "b", when(var("nothing", Type::Bool)));
    const Model read = modelOf(model);
    ASSERT_FALSE(read.warnings().empty());
    EXPECT_NE(read.warnings().front().text.find("nothing"), std::string::npos);
}

TEST(Model, WritesToNoStandardStream) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ModelWriter model;
    model.implementation("A.i").mode("a").mode("b").transition("a", "b", when(var("nothing", Type::Bool)));
    modelOf(model);
    EXPECT_THROW(Model::fromFile("/nowhere/model.xml"), FaultException);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Fault, PrintsWhatIsKnownOfItsPlace) {
    const auto text = [](const Fault& fault) {
        std::ostringstream stream;
        stream << fault;
        return stream.str();
    };
    EXPECT_EQ(text({Severity::error, "bad", "m.xml", 3, 7}), "m.xml:3:7: error: bad");
    EXPECT_EQ(text({Severity::warning, "odd", "m.xml", 0, 0}), "m.xml: warning: odd");
    EXPECT_EQ(text({Severity::error, "bad", "", 0, 0}), "error: bad");
}

}  // namespace
}  // namespace vornrun::test

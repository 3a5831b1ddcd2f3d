// The whole printed form of a realised model.

#include <regex>

#include <gtest/gtest.h>

#include "tests/support/ParseModel.h"
#include "tests/vornrun/algorithms/vornconstructor/RealisedModel.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

using namespace direct;

/// `variable <= bound`, as a plain condition.
VornLinearExpression* atMost(const std::string& variable, double bound) {
    return plainly(new TypedBinaryOperator<VornLEq, VornBool, VornClock, VornReal>(
        new TypedVornVariable<VornClock>(variable), constant<VornReal>(bound)));
}
VornLinearExpression* above(const std::string& variable, long bound) {
    return plainly(new TypedBinaryOperator<VornGt, VornBool, VornInt, VornInt>(new TypedVornVariable<VornInt>(variable),
                                                                               constant<VornInt>(bound)));
}

// Two levels. Numbers of declarations count in the order of the drafts (ports from 10: start 10, fail 11, flowOut 12,
// speed 13, go 14, result 15; modes from 0: idle 0, on 1, dead 2, work 3, stop 4). Numbers of parts count depth first,
// ports before data, each by name: go 0, result 1, age 2, mode 3, total 4; in the pump fail 5, flowOut 6, speed 7,
// start 8, its implicit reset 9, count 10, level 11, mode 12, spare 13, t 14, two tau 15 and 16, @activation 17; and at
// last the plant's tau 18.
constexpr const char* PLANT =
    "Component: 0 implementing Plant.i\n"
    "\tData ports:\n"
    "\t\t[1] (from feature [15]) (result)\n"
    "\tEvent ports:\n"
    "\t\t(go)[0]\n"
    "\t\t(tau)[18]\n"
    "\tData:\n"
    "\t\t[2] (age)\n"
    "\t\t[3] (mode)\n"
    "\t\t[4] (total)\n"
    "\tEvent connections:\n"
    "\t\t[0] -> [8] (event port go -> pump.start in modes (work);)\n"
    "\tFlows:\n"
    "\t\tresult{=0:int} := flowOut{=3:int} in modes (work)\n"
    "\t\ttotal{=4:int} := result{=0:int} + 1\n"
    "\tModes:\n"
    "\t\tstop: mode\n"
    "\t\twork: initial mode\n"
    "\tTransitions:\n"
    "\t\t(work)-[(fail)[5] then result{=0:int} := 0]->4 (stop)\n"
    "\t\t(stop)-[(tau)[18] when total{=4:int} > 3 then total{=4:int} := 0]->3 (work)\n"
    "\n"
    "Component: 1 implementing Pump.i\n"
    "\tData ports:\n"
    "\t\t[6] (from feature [12]) (flowOut)\n"
    "\t\t[7] (from feature [13]) (speed)\n"
    "\tEvent ports:\n"
    "\t\t(fail)[5]\n"
    "\t\t(start)[8]\n"
    "\t\t(reset)[9]\n"
    "\t\t(tau)[15]\n"
    "\t\t(tau)[16]\n"
    "\t\t(@activation)[17]\n"
    "\tData:\n"
    "\t\t[10] (count)\n"
    "\t\t[11] (level)\n"
    "\t\t[12] (mode)\n"
    "\t\t[13] (spare)\n"
    "\t\t[14] (t)\n"
    "\tFlows:\n"
    "\t\tflowOut{=3:int} := 42 in modes (on)\n"
    "\tModes:\n"
    "\t\tdead: error mode while t{=1.5:clock}' = 0 and level{=10:continuous}' = 0\n"
    "\t\tidle: initial mode while t{=1.5:clock}' = 0 and level{=10:continuous}' = 0\n"
    "\t\ton: mode while t{=1.5:clock} <= 5 and level{=10:continuous}' = -2\n"
    "\tTransitions:\n"
    "\t\t(idle)-[(start)[8] then count{=5:int} := 5; spare{=0:bool} := 0; t{=1.5:clock} := 1.5]->1 (on)\n"
    "\t\t(on)-[(tau)[15] then flowOut{=3:int} := 3]->0 (idle)\n"
    "\t\t(on)-[(tau)[16] then flowOut{=3:int} := 0]->0 (idle)\n"
    "\t\t(idle)-[(reset)[9] then t{=1.5:clock} := 0; count{=5:int} := 5; spare{=0:bool} := 0]->1 (on)\n"
    "\tReactivation Transitions:\n"
    "\t\t(idle)-[(@activation)[17] then level{=10:continuous} := 1]->1 (on)\n";

TEST(RealisedText, AModelOfTwoLevelsPrintsAsDerivedByHand) {
    SyntaxModel model;
    const auto& pump = model.component(
        "Pump", ComponentDraft()
                    .eventPort("start", PortDirection::in)
                    .errorPort("fail", 0.5)
                    .dataPort<VornInt>("flowOut", PortDirection::out, constant<VornInt>(3))
                    .dataPort<VornReal>("speed", PortDirection::in)
                    .data<VornClock>("t", constant<VornClock>(1.5), {"on"})
                    .data<VornContinuous>("level", constant<VornContinuous>(10.0))
                    .data<VornInt>("count", constant<VornInt>(5), {"on"})
                    .data<VornBool>("spare", nullptr, {"on"})
                    .mode("idle", VornModeType::initial)
                    .mode("on", VornModeType::plain, atMost("t", 5.0), {rate<VornReal>("level", -2.0)})
                    .mode("dead", VornModeType::error)
                    .flow(var<VornInt>("flowOut"), constant<VornInt>(42), {"on"})
                    .transition("idle", "on", "start")
                    .transition("on", "idle")
                    .transition("on", "idle", "", nullptr, {assign(var<VornInt>("flowOut"), constant<VornInt>(0))})
                    .transition("idle", "on", "reset", nullptr, {assign(var<VornClock>("t"), constant<VornInt>(0))})
                    .reactivation("idle", "on", {assign(var<VornContinuous>("level"), constant<VornReal>(1.0))}));
    const Realised realised(model.component(
        "Plant",
        ComponentDraft()
            .eventPort("go", PortDirection::in)
            .dataPort<VornInt>("result", PortDirection::out)
            .data<VornInt>("total", constant<VornInt>(4))
            .data<VornClock>("age")
            .mode("work", VornModeType::initial)
            .mode("stop")
            .subcomponent("pump", pump, {"work"})
            .connectEvent("go", "pump.start", {"work"})
            .connectData("pump.flowOut", "result", {"work"})
            .flow(var<VornInt>("total"), new TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(
                                             new TypedVornVariable<VornInt>("result"), constant<VornInt>(1)))
            .transition("work", "stop", "pump.fail")
            .transition("stop", "work", "", above("total", 3), {assign(var<VornInt>("total"), constant<VornInt>(0))})));
    EXPECT_EQ(printed(*realised.root), PLANT);
    std::vector<unsigned int> ids;
    for (const auto& each : realised.at("pump").transitions()) ids.push_back(each->id());
    for (const auto& each : realised.at("pump").reactivationTransitions()) ids.push_back(each->id());
    for (const auto& each : realised.root->transitions()) ids.push_back(each->id());
    EXPECT_EQ(ids, (std::vector<unsigned int>{0, 1, 2, 3, 4, 5, 6})) << "those below come first";
}
/// The text without the numbers of declarations and modes, which count over all that a process ever parses.
std::string withoutSyntaxIds(const std::string& text) {
    const std::string ports = std::regex_replace(text, std::regex("from feature \\[[0-9]+\\]"), "from feature");
    return std::regex_replace(ports, std::regex("\\]->[0-9]+ "), "]-> ");
}

TEST(RealisedText, TheSameModelOutOfAFileIsTheSameButForTheNumbersOfTheSyntax) {
    using test::rate;
    using test::var;
    const Var t = var("t", Type::Clock), age = var("age", Type::Clock), level = var("level", Type::Continuous);
    const Var count = var("count", Type::Int), total = var("total", Type::Int), result = var("result", Type::Int);
    const Var flowOut = var("flowOut", Type::Int), spare = var("spare", Type::Bool), speed = var("speed", Type::Real);
    ModelWriter file;
    file.type("Pump").inEvent("start").errorPort("fail", 0.5).outData(flowOut, 3).inData(speed);
    file.implementation("Pump.i")
        .data(t, number(1.5, Type::Clock), inModes("on"))
        .data(level, number(10.0, Type::Continuous))
        .data(count, 5, inModes("on"))
        .data(spare, inModes("on"))
        .mode("idle")
        .mode("on", invariant(t <= 5.0), rate(level, -2.0))
        .mode("dead", ModeKind::Error)
        .flow(flowOut, 42, inModes("on"))
        .transition("idle", "on", on("start"))
        .transition("on", "idle")
        .transition("on", "idle", set(flowOut, 0))
        .transition("idle", "on", on("reset"), set(t, 0))
        .reactivation("idle", "on", set(level, 1.0));
    file.type("Plant").inEvent("go").outData(result);
    file.implementation("Plant.i")
        .data(total, 4)
        .data(age)
        .mode("work")
        .mode("stop")
        .subcomponent("pump", "Pump.i", inModes("work"))
        .connectEvent("go", "pump.start", inModes("work"))
        .connectData("pump.flowOut", "result", inModes("work"))
        .flow(total, result + 1)
        .transition("work", "stop", on("pump.fail"))
        .transition("stop", "work", when(total > 3), set(total, 0));
    const auto specification = parseModel(file);
    const RootCandidates roots = specification->findRootCandidates();
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(withoutSyntaxIds(printed(*Realised(**roots.begin()).root)), withoutSyntaxIds(PLANT));
}

}  // namespace
}  // namespace vornrun::test

#include "tests/support/ModelWriter.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vornrun::test {
namespace {

TEST(ModelWriter, WritesAWholeImplementationWithEmptyLists) {
    ModelWriter model;
    model.implementation("T.i");
    EXPECT_EQ(model.text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<CompileInformation>\n"
              "  <packages>\n"
              "    <Package>\n"
              "      <name>main</name>\n"
              "      <public_subpackage>\n"
              "        <types>\n"
              "          <ComponentType>\n"
              "            <name>T</name>\n"
              "            <category>8</category>\n"
              "          </ComponentType>\n"
              "        </types>\n"
              "        <implementations>\n"
              "          <ComponentImplementation>\n"
              "            <name>T.i</name>\n"
              "            <modes>\n"
              "              <Mode>\n"
              "                <name>main</name>\n"
              "                <type>0</type>\n"
              "              </Mode>\n"
              "            </modes>\n"
              "            <normal_mode_transitions/>\n"
              "            <data_port_connections/>\n"
              "            <event_port_connections/>\n"
              "            <flows/>\n"
              "            <non_data_subcomponents/>\n"
              "            <data_subcomponents/>\n"
              "          </ComponentImplementation>\n"
              "        </implementations>\n"
              "      </public_subpackage>\n"
              "    </Package>\n"
              "  </packages>\n"
              "</CompileInformation>\n");
}

TEST(ModelWriter, WritesPortsWithTheirTagsAndDefaults) {
    TypeWriter type("T", Category::device);
    type.inEvent("go").outEvent("done", nonblocking).errorPort("fail", 0.25).errorPort("odd");
    type.inData(var("n", Type::Int), 3).outData(var("e", Type::Enum), enumLiteral("red"), alarm);
    EXPECT_EQ(type.xml().toString(),
              "<ComponentType>\n"
              "  <name>T</name>\n"
              "  <category>6</category>\n"
              "  <in_event_ports>\n"
              "    <InEventPort>\n"
              "      <name>go</name>\n"
              "    </InEventPort>\n"
              "  </in_event_ports>\n"
              "  <out_event_ports>\n"
              "    <OutEventPort>\n"
              "      <name>done</name>\n"
              "      <nonblocking>True</nonblocking>\n"
              "    </OutEventPort>\n"
              "    <ErrorEventPort>\n"
              "      <name>fail</name>\n"
              "      <nonblocking>False</nonblocking>\n"
              "      <distribution>1</distribution>\n"
              "      <parameter>0.25</parameter>\n"
              "    </ErrorEventPort>\n"
              "    <ErrorEventPort>\n"
              "      <name>odd</name>\n"
              "      <nonblocking>False</nonblocking>\n"
              "    </ErrorEventPort>\n"
              "  </out_event_ports>\n"
              "  <in_data_ports>\n"
              "    <DataPort>\n"
              "      <name>n</name>\n"
              "      <data_type type=\"Int\"/>\n"
              "      <default_value>\n"
              "        <number>3</number>\n"
              "      </default_value>\n"
              "    </DataPort>\n"
              "  </in_data_ports>\n"
              "  <out_data_ports>\n"
              "    <OutDataPort>\n"
              "      <name>e</name>\n"
              "      <observable>False</observable>\n"
              "      <alarm>True</alarm>\n"
              "      <data_type type=\"Enum\"/>\n"
              "      <default_value>\n"
              "        <name>red</name>\n"
              "      </default_value>\n"
              "    </OutDataPort>\n"
              "  </out_data_ports>\n"
              "</ComponentType>\n");
}

TEST(ModelWriter, WritesModesAndTransitions) {
    const Var level = var("level", Type::Continuous);
    ImplementationWriter implementation("T.i");
    implementation.mode("a").mode("b", invariant(level >= 0.0), rate(level, -2.0)).mode("c", ModeKind::Error);
    implementation.transition("a", "b", on("sub.go"), when(level > 1.0), set(level, 3.0), set(level, 4.0));
    Xml element = implementation.xml();
    EXPECT_EQ(element.first("modes").nth("type", 0).text(), "0");
    EXPECT_EQ(element.first("modes").nth("type", 1).text(), "3");
    EXPECT_EQ(element.first("modes").nth("type", 2).text(), "2");
    EXPECT_EQ(element.first("trajectory_expression").first("number").text(), "-2");
    EXPECT_EQ(element.first("trigger").text(), "sub.go");
    EXPECT_EQ(element.first("label").first("clauses").first("constant").first("number").text(), "1");
    EXPECT_EQ(element.first("effects").children().size(), 2u);
    EXPECT_EQ(element.first("effects").nth("right", 1).first("number").text(), "4");
}

TEST(ModelWriter, WritesTheListsOfAnImplementation) {
    ImplementationWriter implementation("T.i");
    implementation.subcomponent("s", "P::S.i", accesses("bus"), storedIn("ram"), runningOn("cpu"), inModes("a", "b"))
        .data(var("n", Type::Interval), 2, observable, inModes("a"))
        .flow(var("o", Type::Int), var("n", Type::Int) + 1, inModes("b"))
        .connectEvent("x", "s.y", passive)
        .connectData("s.p", "q", inModes("a"))
        .reactivation("a", "b", set(var("n", Type::Int), 0), Xml("odd"));
    Xml element = implementation.xml();
    EXPECT_EQ(element.first("non_data_subcomponents").toString(),
              "<non_data_subcomponents>\n"
              "  <NonDataSubcomponent>\n"
              "    <name>s</name>\n"
              "    <implementation_ref>P::S.i</implementation_ref>\n"
              "    <accesses>\n"
              "      <target>bus</target>\n"
              "    </accesses>\n"
              "    <running_on>\n"
              "      <target>cpu</target>\n"
              "    </running_on>\n"
              "    <stored_in>\n"
              "      <target>ram</target>\n"
              "    </stored_in>\n"
              "    <in_modes>\n"
              "      <name>a</name>\n"
              "      <name>b</name>\n"
              "    </in_modes>\n"
              "  </NonDataSubcomponent>\n"
              "</non_data_subcomponents>\n");
    EXPECT_EQ(element.first("data_subcomponents").toString(),
              "<data_subcomponents>\n"
              "  <DataSubcomponent>\n"
              "    <name>n</name>\n"
              "    <data_type type=\"IntRange\"/>\n"
              "    <observable>True</observable>\n"
              "    <in_modes>\n"
              "      <name>a</name>\n"
              "    </in_modes>\n"
              "    <default_value>\n"
              "      <number>2</number>\n"
              "    </default_value>\n"
              "  </DataSubcomponent>\n"
              "</data_subcomponents>\n");
    EXPECT_EQ(element.first("flows").first("left").first("name").text(), "o");
    EXPECT_EQ(element.first("flows").first("in_modes").first("name").text(), "b");
    EXPECT_EQ(element.first("event_port_connections").toString(),
              "<event_port_connections>\n"
              "  <PortConnection>\n"
              "    <source_port>x</source_port>\n"
              "    <target_port>s.y</target_port>\n"
              "    <passive>True</passive>\n"
              "  </PortConnection>\n"
              "</event_port_connections>\n");
    EXPECT_EQ(element.first("data_port_connections").first("passive").text(), "False");
    EXPECT_EQ(element.first("reactivation_mode_transitions").first("ModeTransition").children().back().name(), "odd");
}

TEST(ModelWriter, DeclaresATypeThatNobodyDeclaredOnceInTheWholePackage) {
    ModelWriter model;
    model.package("P").privatePart().type("Known");
    model.package("P").implementation("Known.i");
    model.package("P").implementation("New.i");
    model.package("P").privatePart().implementation("New.j");
    Xml document = model.document();
    EXPECT_EQ(document.nth("ComponentType", 0).first("name").text(), "New");
    EXPECT_EQ(document.nth("ComponentType", 1).first("name").text(), "Known");
    EXPECT_THROW(document.nth("ComponentType", 2), std::logic_error);
}

TEST(ModelWriter, StatesAModelAsItsHeaderShows) {
    const Var x = var("x", Type::Clock), level = var("level", Type::Continuous);
    const Var broken = var("broken", Type::Bool), pumpBroken = var("pump.broken", Type::Bool);

    ModelWriter model;
    model.type("Pump").inEvent("start").errorPort("fail", 0.25).outData(broken, false);
    model.implementation("Pump.i")
        .data(x)
        .data(level, 10.0)
        .mode("idle")
        .mode("running", invariant(x <= 5.0), rate(level, -2.0))
        .mode("dead", ModeKind::Error)
        .transition("idle", "running", on("start"), set(x, 0.0))
        .transition("running", "idle", when(x >= 3.0 && level > 1.0))
        .transition("running", "dead", on("fail"), set(broken, true));
    model.implementation("Plant.i")
        .subcomponent("pump", "Pump.i", inModes("on"))
        .data(var("alarm", Type::Bool), observable)
        .mode("on")
        .mode("off")
        .transition("on", "off", when(pumpBroken))
        .flow(var("alarm", Type::Bool), pumpBroken || modeOf("pump") == modeLiteral("dead"))
        .connectEvent("go", "pump.start", inModes("on"));

    Xml document = model.document();
    EXPECT_EQ(document.nth("ComponentImplementation", 1).first("name").text(), "Plant.i");
    EXPECT_EQ(document.nth("ComponentType", 1).first("name").text(), "Plant");
    EXPECT_EQ(document.nth("guard", 1).first("name").text(), "pump.broken");
}

}  // namespace
}  // namespace vornrun::test

#include "tests/support/ModelWriter.h"

#include <algorithm>

namespace vornrun::test {

namespace {

template <class Enumeration>
std::string numberOf(Enumeration value) {
    return std::to_string(static_cast<unsigned int>(value));
}

Xml dataTypeXml(Type type) { return Xml("data_type").attribute("type", dataTypeName(type)); }

void addCondition(Xml& element, const std::string& tag, const Condition& condition) {
    element.add(condition.plain.xml(tag));
    element.add(clausesXml(condition.clauses ? *condition.clauses : clausesOf(condition.plain)));
}

Xml& listNamed(std::vector<Xml>& lists, const std::string& name) {
    for (Xml& list : lists)
        if (list.name() == name) return list;
    return lists.emplace_back(name);
}

}  // namespace

TypeWriter::TypeWriter(std::string name, Category category) : mName(std::move(name)), mCategory(category) {}

TypeWriter& TypeWriter::category(Category category) {
    mCategory = category;
    return *this;
}

Xml& TypeWriter::list(const std::string& name) { return listNamed(mLists, name); }

TypeWriter& TypeWriter::inEvent(const std::string& name) {
    return splice("in_event_ports", Xml("InEventPort", {Xml("name", name)}));
}

TypeWriter& TypeWriter::addOutEvent(const std::string& name, const Draft& draft) {
    Xml port("OutEventPort", {Xml("name", name), Xml("nonblocking", draft.text(nonblocking))});
    draft.addCommon(port);
    return splice("out_event_ports", port);
}

TypeWriter& TypeWriter::addErrorPort(const std::string& name, const Draft& draft) {
    Xml port("ErrorEventPort", {Xml("name", name), Xml("nonblocking", draft.text(nonblocking))});
    if (draft.value) port.add(Xml("distribution", "1")).add(Xml("parameter", draft.value->node().text));
    for (const Xml& part : draft.splices) port.add(part);
    return splice("out_event_ports", port);
}

TypeWriter& TypeWriter::addInData(const Var& port, const Draft& draft) {
    Xml element("DataPort", {Xml("name", port.name()), dataTypeXml(port.type())});
    draft.addCommon(element);
    return splice("in_data_ports", element);
}

TypeWriter& TypeWriter::addOutData(const Var& port, const Draft& draft) {
    Xml element("OutDataPort", {Xml("name", port.name()), Xml("observable", draft.text(observable)),
                                Xml("alarm", draft.text(alarm)), dataTypeXml(port.type())});
    draft.addCommon(element);
    return splice("out_data_ports", element);
}

TypeWriter& TypeWriter::splice(const std::string& listName, Xml child) {
    list(listName).add(std::move(child));
    return *this;
}

Xml TypeWriter::xml() const {
    Xml element("ComponentType", {Xml("name", mName), Xml("category", numberOf(mCategory))});
    for (const Xml& ports : mLists) element.add(ports);
    return element;
}

ImplementationWriter::ImplementationWriter(std::string name)
    : mName(std::move(name)),
      mLists{Xml("modes"), Xml("normal_mode_transitions"), Xml("data_port_connections"), Xml("event_port_connections"),
             Xml("flows"), Xml("non_data_subcomponents"),  Xml("data_subcomponents")} {}

Xml& ImplementationWriter::list(const std::string& name) { return listNamed(mLists, name); }

ImplementationWriter& ImplementationWriter::splice(const std::string& listName, Xml child) {
    list(listName).add(std::move(child));
    return *this;
}

ImplementationWriter& ImplementationWriter::addData(const Var& variable, const Draft& draft) {
    Xml element("DataSubcomponent", {Xml("name", variable.name()), dataTypeXml(variable.type())});
    if (draft.has(observable)) element.add(Xml("observable", "True"));
    draft.addCommon(element);
    return splice("data_subcomponents", element);
}

ImplementationWriter& ImplementationWriter::addMode(const std::string& name, const Draft& draft) {
    const ModeKind usual = list("modes").children().empty() ? ModeKind::Initial : ModeKind::Plain;
    Xml element("Mode", {Xml("name", name), Xml("type", numberOf(draft.kind.value_or(usual)))});
    if (draft.invariant) addCondition(element, "invariant", *draft.invariant);
    if (!draft.trajectories.empty()) {
        Xml trajectories("trajectories");
        for (const Rate& rate : draft.trajectories)
            trajectories.add(Xml("TrajectoryEquationTreeNode",
                                 {rate.left.xml("variable"), rate.right.xml("trajectory_expression")}));
        element.add(trajectories);
    }
    draft.addCommon(element);
    return splice("modes", element);
}

ImplementationWriter& ImplementationWriter::addTransition(const std::string& listName, const std::string& from,
                                                          const std::string& to, const Draft& draft) {
    Xml label("label");
    if (draft.trigger) label.add(Xml("trigger", *draft.trigger));
    if (draft.guard) addCondition(label, "guard", *draft.guard);
    if (!draft.effects.empty()) {
        Xml effects("effects");
        for (const Set& effect : draft.effects)
            effects.add(Xml("BinaryOperatorTreeNode", {effect.left.xml("left"), effect.right.xml("right")}));
        label.add(effects);
    }
    Xml element("ModeTransition", {Xml("source_mode", from), Xml("target_mode", to), label});
    draft.addCommon(element);
    return splice(listName, element);
}

ImplementationWriter& ImplementationWriter::addFlow(const Expr& target, const Expr& source, const Draft& draft) {
    Xml element("Flow", {Xml("expression", {target.xml("left"), source.xml("right")})});
    draft.addCommon(element);
    return splice("flows", element);
}

ImplementationWriter& ImplementationWriter::addConnection(const std::string& listName, const std::string& source,
                                                          const std::string& target, const Draft& draft) {
    Xml element("PortConnection",
                {Xml("source_port", source), Xml("target_port", target), Xml("passive", draft.text(passive))});
    draft.addCommon(element);
    return splice(listName, element);
}

ImplementationWriter& ImplementationWriter::addSubcomponent(const std::string& name, const std::string& reference,
                                                            const Draft& draft) {
    std::vector<Xml> bindings{Xml("accesses"), Xml("running_on"), Xml("stored_in")};
    for (const Binding& binding : draft.bindings) listNamed(bindings, binding.list).add(Xml("target", binding.target));
    Xml element("NonDataSubcomponent", {Xml("name", name), Xml("implementation_ref", reference)});
    for (const Xml& targets : bindings) element.add(targets);
    draft.addCommon(element);
    return splice("non_data_subcomponents", element);
}

std::string ImplementationWriter::typeName() const { return mName.substr(0, mName.find('.')); }

Xml ImplementationWriter::xml() const {
    Xml element("ComponentImplementation", {Xml("name", mName)});
    for (const Xml& entries : mLists) element.add(entries);
    Xml& modes = element.first("modes");
    if (modes.children().empty()) modes.add(Xml("Mode", {Xml("name", "main"), Xml("type", "0")}));
    return element;
}

TypeWriter& SubpackageWriter::type(const std::string& name, Category category) {
    return mTypes.emplace_back(name, category);
}

ImplementationWriter& SubpackageWriter::implementation(const std::string& name) {
    return mImplementations.emplace_back(name);
}

bool SubpackageWriter::declares(const std::string& typeName) const {
    return std::any_of(mTypes.begin(), mTypes.end(), [&](const TypeWriter& type) { return type.name() == typeName; });
}

Xml SubpackageWriter::xml(const std::string& tag, const std::vector<std::string>& undeclared) const {
    Xml types("types");
    for (const TypeWriter& type : mTypes) types.add(type.xml());
    for (const std::string& name : undeclared) types.add(TypeWriter(name, Category::system).xml());
    Xml implementations("implementations");
    for (const ImplementationWriter& implementation : mImplementations) implementations.add(implementation.xml());
    return Xml(tag, {types, implementations});
}

TypeWriter& PackageWriter::type(const std::string& name, Category category) { return mPublic.type(name, category); }

ImplementationWriter& PackageWriter::implementation(const std::string& name) { return mPublic.implementation(name); }

Xml PackageWriter::xml() const {
    std::vector<std::string> undeclared;
    for (const SubpackageWriter* part : {&mPublic, &mPrivate}) {
        for (const ImplementationWriter& implementation : part->implementations()) {
            const std::string type = implementation.typeName();
            const bool known = mPublic.declares(type) || mPrivate.declares(type) ||
                               std::find(undeclared.begin(), undeclared.end(), type) != undeclared.end();
            if (!known) undeclared.push_back(type);
        }
    }
    Xml element("Package", {Xml("name", mName), mPublic.xml("public_subpackage", undeclared)});
    if (!mPrivate.empty()) element.add(mPrivate.xml("private_subpackage", {}));
    return element;
}

PackageWriter& ModelWriter::package(const std::string& name) {
    for (PackageWriter& known : mPackages)
        if (known.name() == name) return known;
    return mPackages.emplace_back(name);
}

TypeWriter& ModelWriter::type(const std::string& name, Category category) {
    return package("main").type(name, category);
}

ImplementationWriter& ModelWriter::implementation(const std::string& name) {
    return package("main").implementation(name);
}

Xml ModelWriter::document() const {
    Xml packages("packages");
    for (const PackageWriter& package : mPackages) packages.add(package.xml());
    return Xml("CompileInformation", {packages});
}

}  // namespace vornrun::test

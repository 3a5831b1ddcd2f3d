#pragma once
/// \file
/// Writes model files, so that a test can state a model in a dozen lines and send it through the real parser:
///
///     const Var x = var("x", Type::Clock), level = var("level", Type::Continuous);
///     const Var broken = var("broken", Type::Bool), pumpBroken = var("pump.broken", Type::Bool);
///
///     ModelWriter model;
///     model.type("Pump").inEvent("start").errorPort("fail", 0.25).outData(broken, false);
///     model.implementation("Pump.i")
///         .data(x).data(level, 10.0)
///         .mode("idle")                                                    // the first mode is the initial one
///         .mode("running", invariant(x <= 5.0), rate(level, -2.0))
///         .mode("dead", ModeKind::Error)
///         .transition("idle", "running", on("start"), set(x, 0.0))
///         .transition("running", "idle", when(x >= 3.0 && level > 1.0))    // the clauses are derived
///         .transition("running", "dead", on("fail"), set(broken, true));
///     model.implementation("Plant.i")                                      // its type, without ports, is added
///         .subcomponent("pump", "Pump.i", inModes("on"))
///         .data(var("alarm", Type::Bool), observable)
///         .mode("on").mode("off")
///         .transition("on", "off", when(pumpBroken))
///         .flow(var("alarm", Type::Bool), pumpBroken || modeOf("pump") == modeLiteral("pump.mode:dead"))
///         .connectEvent("go", "pump.start", inModes("on"));
///
///     const auto specification = parseModel(model);    // tests/support/ParseModel.h
///
/// Things are written in the order in which they are stated. An implementation without a mode gets one initial mode
/// "main". For faults, take the document apart (Xml.h) or splice markup in: every function that takes parts, and
/// `splice`, takes Xml values too, which become further children of the element.
///
///     Xml document = model.document();
///     document.remove("flows");
///     const auto specification = parseModel(document);

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ModelParts.h"
#include "tests/support/Xml.h"

namespace vornrun::test {

/// A component type and its ports.
class TypeWriter {
  public:
    TypeWriter(std::string name, Category category);

    TypeWriter& category(Category category);
    TypeWriter& inEvent(const std::string& name);
    template <PartOf<Flag>... Parts>
    TypeWriter& outEvent(const std::string& name, const Parts&... parts) {
        return addOutEvent(name, draftOf(parts...));
    }
    /// An error event that never occurs by itself.
    template <PartOf<Flag>... Parts>
    TypeWriter& errorPort(const std::string& name, const Parts&... parts) {
        return addErrorPort(name, draftOf(parts...));
    }
    /// An error event that occurs by itself at the given Poisson rate.
    template <PartOf<Flag>... Parts>
    TypeWriter& errorPort(const std::string& name, double rate, const Parts&... parts) {
        return addErrorPort(name, draftOf(parts..., Expr(rate)));
    }
    /// A data port of the variable's name and type; a value among the parts is its default.
    template <PartOf<Expr>... Parts>
    TypeWriter& inData(const Var& port, const Parts&... parts) {
        return addInData(port, draftOf(parts...));
    }
    /// The same; tags are `observable` and `alarm`.
    template <PartOf<Expr, Flag>... Parts>
    TypeWriter& outData(const Var& port, const Parts&... parts) {
        return addOutData(port, draftOf(parts...));
    }
    /// A further child of the list of that name, for instance `in_event_ports`.
    TypeWriter& splice(const std::string& list, Xml child);

    const std::string& name() const noexcept { return mName; }
    Xml xml() const;

  private:
    TypeWriter& addOutEvent(const std::string& name, const Draft& draft);
    TypeWriter& addErrorPort(const std::string& name, const Draft& draft);
    TypeWriter& addInData(const Var& port, const Draft& draft);
    TypeWriter& addOutData(const Var& port, const Draft& draft);
    Xml& list(const std::string& name);

    std::string mName;
    Category mCategory;
    std::vector<Xml> mLists;  // those with a port, in the order of their first ports
};

/// A component implementation.
class ImplementationWriter {
  public:
    /// \param name type "." implementation
    explicit ImplementationWriter(std::string name);

    /// A variable; a value among the parts is its initial one.
    template <PartOf<Expr, Flag, InModes>... Parts>
    ImplementationWriter& data(const Var& variable, const Parts&... parts) {
        return addData(variable, draftOf(parts...));
    }
    /// Without a kind among the parts the first mode is initial and the others are plain.
    template <PartOf<ModeKind, Invariant, Rate>... Parts>
    ImplementationWriter& mode(const std::string& name, const Parts&... parts) {
        return addMode(name, draftOf(parts...));
    }
    template <PartOf<On, When, Set>... Parts>
    ImplementationWriter& transition(const std::string& from, const std::string& to, const Parts&... parts) {
        return addTransition("normal_mode_transitions", from, to, draftOf(parts...));
    }
    template <PartOf<On, When, Set>... Parts>
    ImplementationWriter& reactivation(const std::string& from, const std::string& to, const Parts&... parts) {
        return addTransition("reactivation_mode_transitions", from, to, draftOf(parts...));
    }
    template <PartOf<InModes>... Parts>
    ImplementationWriter& flow(const Expr& target, const Expr& source, const Parts&... parts) {
        return addFlow(target, source, draftOf(parts...));
    }
    template <PartOf<InModes, Flag>... Parts>
    ImplementationWriter& connectEvent(const std::string& source, const std::string& target, const Parts&... parts) {
        return addConnection("event_port_connections", source, target, draftOf(parts...));
    }
    template <PartOf<InModes, Flag>... Parts>
    ImplementationWriter& connectData(const std::string& source, const std::string& target, const Parts&... parts) {
        return addConnection("data_port_connections", source, target, draftOf(parts...));
    }
    /// \param reference "package::Type.impl"; package and implementation name may be left out
    template <PartOf<InModes, Binding>... Parts>
    ImplementationWriter& subcomponent(const std::string& name, const std::string& reference, const Parts&... parts) {
        return addSubcomponent(name, reference, draftOf(parts...));
    }
    /// A further child of the list of that name, for instance `flows`.
    ImplementationWriter& splice(const std::string& list, Xml child);

    const std::string& name() const noexcept { return mName; }
    /// The part before the ".".
    std::string typeName() const;
    Xml xml() const;

  private:
    ImplementationWriter& addData(const Var& variable, const Draft& draft);
    ImplementationWriter& addMode(const std::string& name, const Draft& draft);
    ImplementationWriter& addTransition(const std::string& list, const std::string& from, const std::string& to,
                                        const Draft& draft);
    ImplementationWriter& addFlow(const Expr& target, const Expr& source, const Draft& draft);
    ImplementationWriter& addConnection(const std::string& list, const std::string& source, const std::string& target,
                                        const Draft& draft);
    ImplementationWriter& addSubcomponent(const std::string& name, const std::string& reference, const Draft& draft);
    Xml& list(const std::string& name);

    std::string mName;
    std::vector<Xml> mLists;  // all lists of the grammar, in its order
};

/// The public or the private part of a package. References to types and implementations stay valid.
class SubpackageWriter {
  public:
    TypeWriter& type(const std::string& name, Category category = Category::system);
    ImplementationWriter& implementation(const std::string& name);

    const std::deque<TypeWriter>& types() const noexcept { return mTypes; }
    const std::deque<ImplementationWriter>& implementations() const noexcept { return mImplementations; }
    bool empty() const noexcept { return mTypes.empty() && mImplementations.empty(); }
    bool declares(const std::string& typeName) const;
    /// \param undeclared names of types that are written as types without ports
    Xml xml(const std::string& tag, const std::vector<std::string>& undeclared) const;

  private:
    std::deque<TypeWriter> mTypes;
    std::deque<ImplementationWriter> mImplementations;
};

class PackageWriter {
  public:
    explicit PackageWriter(std::string name) : mName(std::move(name)) {}

    SubpackageWriter& publicPart() noexcept { return mPublic; }
    SubpackageWriter& privatePart() noexcept { return mPrivate; }
    // Of the public part.
    TypeWriter& type(const std::string& name, Category category = Category::system);
    ImplementationWriter& implementation(const std::string& name);

    const std::string& name() const noexcept { return mName; }
    Xml xml() const;

  private:
    std::string mName;
    SubpackageWriter mPublic;
    SubpackageWriter mPrivate;
};

class ModelWriter {
  public:
    /// The package of that name, a new one at the first call.
    PackageWriter& package(const std::string& name);
    // Of the public part of the package "main".
    TypeWriter& type(const std::string& name, Category category = Category::system);
    ImplementationWriter& implementation(const std::string& name);

    /// The root element.
    Xml document() const;
    /// The whole file.
    std::string text() const { return toDocument(document()); }

  private:
    std::deque<PackageWriter> mPackages;
};

}  // namespace vornrun::test

#include "tests/vornrun/datastructures/eda/RandomModel.h"

#include <algorithm>
#include <optional>
#include <string>

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock), y = var("y", Type::Clock), level = var("level", Type::Continuous);
const Var n = var("n", Type::Int), flag = var("flag", Type::Bool);
const Var input = var("i", Type::Int), output = var("o", Type::Int), report = var("r", Type::Bool);

/// What a parent has to know of a component.
struct Component {
    std::string number;
    std::vector<std::string> modes, inEvents, outEvents;

    std::string type() const { return "C" + number; }
    std::string implementation() const { return type() + ".i"; }
};

struct Subcomponent {
    std::string name;
    Component component;
};

/// Makes one choice per statement: operands and arguments are evaluated in any order, and the model must not depend on
/// the compiler.
class Generator {
  public:
    explicit Generator(Choices& choices) : mChoices(choices), mBudget(12) {}

    ModelWriter generate() {
        write(mChoices.between(1, 4));
        return std::move(mModel);
    }

  private:
    Component write(std::size_t levels) {
        Component self;
        self.number = std::to_string(mCount++);
        // Subcomponents are of most interest where modes can switch them.
        const std::size_t modes = mChoices.between(levels > 1 ? 2 : 1, 3);
        for (std::size_t i = 0; i < modes; ++i) self.modes.push_back("m" + std::to_string(i));
        TypeWriter& type = mModel.type(self.type());
        type.inData(input, 0).outData(output, 0).outData(report, false);
        writeEventPorts(type, self);
        ImplementationWriter& implementation = mModel.implementation(self.implementation());
        implementation.data(x, 0.0).data(y, 0.0).data(level, 3.0).data(n, 1).data(flag, mChoices.chance(50));
        const std::vector<Subcomponent> children = writeSubcomponents(implementation, self, levels);
        writeModes(implementation, self);
        writeTransitions(implementation, self, children);
        writeReactivations(implementation, self);
        writeConnections(implementation, self, children);
        writeFlows(implementation, self, children);
        return self;
    }

    void writeEventPorts(TypeWriter& type, Component& self) {
        for (std::size_t i = mChoices.between(1, 2); i > 0; --i) {
            self.inEvents.push_back("in" + std::to_string(i));
            type.inEvent(self.inEvents.back());
        }
        for (std::size_t i = mChoices.between(1, 3); i > 0; --i) {
            self.outEvents.push_back("out" + std::to_string(i));
            if (mChoices.chance(40))
                type.outEvent(self.outEvents.back(), nonblocking);
            else if (mChoices.chance(15))
                type.errorPort(self.outEvents.back(), 0.25);
            else
                type.outEvent(self.outEvents.back());
        }
    }

    std::vector<Subcomponent> writeSubcomponents(ImplementationWriter& implementation, const Component& self,
                                                 std::size_t levels) {
        std::vector<Subcomponent> children;
        if (levels == 1) return children;
        for (std::size_t i = mChoices.between(1, 3); i > 0 && mBudget > 0; --i) {
            --mBudget;
            // Sometimes two instances of one component.
            const bool again = !children.empty() && mChoices.chance(20);
            children.push_back({"s" + std::to_string(children.size()),
                                again ? children.back().component : write(levels - 1)});
            implementation.subcomponent(children.back().name, "main::" + children.back().component.implementation(),
                                        someModes(self, 20));
        }
        return children;
    }

    /// All modes in the given share of cases, written as no list at all, otherwise one or more of them.
    InModes someModes(const Component& self, unsigned int percentAll) {
        InModes modes;
        if (mChoices.chance(percentAll)) return modes;
        for (const std::string& mode : self.modes)
            if (mChoices.chance(60)) modes.names.push_back(mode);
        if (modes.names.empty()) modes.names.push_back(mChoices.oneOf(self.modes));
        return modes;
    }

    void writeModes(ImplementationWriter& implementation, const Component& self) {
        const std::vector<double> rates{-2.0, -1.0, 1.0, 2.0};
        ModeKind kind = mChoices.chance(40) ? ModeKind::Activation : ModeKind::Initial;
        for (const std::string& mode : self.modes) {
            const Expr first = bound(8), second = bound(10);
            if (mChoices.chance(40))
                implementation.mode(mode, kind, invariant(first), rate(level, mChoices.oneOf(rates)));
            else if (mChoices.chance(40))
                implementation.mode(mode, kind, invariant(first && second));
            else
                implementation.mode(mode, kind);
            kind = mChoices.chance(20) ? ModeKind::Activation : ModeKind::Plain;
        }
    }

    /// 0.25, 0.75 and so on.
    double constant(std::size_t most) { return 0.25 + 0.5 * static_cast<double>(mChoices.below(2 * most)); }

    /// A comparison that holds at first more often than not.
    Expr bound(std::size_t most) {
        switch (mChoices.below(3)) {
            case 0:
                return x <= constant(most) + 1.0;
            case 1:
                return level >= -constant(most);
            default:
                return level <= constant(most) + 3.0;
        }
    }

    Expr comparison() {
        const std::vector<Expr> left{x, y, level, 2.0 * level, x + y, x - y};
        const std::vector<Op> operators{Op::Lt, Op::LEq, Op::Gt, Op::GEq, Op::GEq, Op::LEq, Op::NEq, Op::Eq};
        const Expr chosen = mChoices.oneOf(left);
        const Op op = mChoices.oneOf(operators);
        return binary(op, chosen, real(constant(5)));
    }

    Expr condition(const std::vector<Subcomponent>& children) {
        switch (mChoices.below(children.empty() ? 3 : 5)) {
            case 0:
                return n < integer(static_cast<long>(mChoices.between(1, 4)));
            case 1:
                return flag == boolean(mChoices.chance(50));
            case 2:
                return input <= integer(static_cast<long>(mChoices.between(0, 4)));
            case 3: {
                const Subcomponent& child = mChoices.oneOf(children);
                return modeOf(child.name) == modeLiteral(child.name + ".mode:" + mChoices.oneOf(child.component.modes));
            }
            default:
                return var(mChoices.oneOf(children).name + ".o", Type::Int) != integer(1);
        }
    }

    std::optional<Expr> guard(const std::vector<Subcomponent>& children) {
        switch (mChoices.below(7)) {
            case 0:
            case 1:
                return std::nullopt;
            case 2:
                return condition(children);
            case 3: {
                const Expr first = condition(children);
                return first && comparison();
            }
            case 4: {
                const Expr first = comparison();
                return first && comparison();
            }
            case 5: {
                const Expr first = comparison();
                return first || comparison();
            }
            default:
                return comparison();
        }
    }

    Set effect() {
        switch (mChoices.below(5)) {
            case 0:
                return set(x, 0.5 * static_cast<double>(mChoices.below(4)));
            case 1:
                return set(y, 0.0);
            case 2:
                return set(level, 0.5 * static_cast<double>(mChoices.below(8)));
            case 3:
                return set(n, integer(static_cast<long>(mChoices.below(4))));
            default:
                return set(flag, boolean(mChoices.chance(50)));
        }
    }

    std::optional<std::string> trigger(const Component& self, const std::vector<Subcomponent>& children) {
        const std::size_t choice = mChoices.below(10);
        if (choice < 2) return std::nullopt;
        if (choice < 5) return mChoices.oneOf(self.outEvents);
        if (choice < 7 || children.empty()) return mChoices.oneOf(self.inEvents);
        const Subcomponent& child = mChoices.oneOf(children);
        const bool drives = mChoices.chance(50);
        return child.name + "." + mChoices.oneOf(drives ? child.component.inEvents : child.component.outEvents);
    }

    void writeTransitions(ImplementationWriter& implementation, const Component& self,
                          const std::vector<Subcomponent>& children) {
        for (std::size_t i = mChoices.between(3, 7); i > 0; --i) {
            const std::string from = mChoices.oneOf(self.modes);
            const std::string to = mChoices.oneOf(self.modes);
            const std::optional<std::string> port = trigger(self, children);
            const std::optional<Expr> test = guard(children);
            const std::size_t effects = mChoices.below(3);
            // Which parts there are is a matter of types; each step adds one of them or leaves it out.
            const auto withEffects = [&](const auto&... parts) {
                if (effects == 0) {
                    implementation.transition(from, to, parts...);
                } else if (effects == 1) {
                    implementation.transition(from, to, parts..., effect());
                } else {
                    const Set first = effect();
                    implementation.transition(from, to, parts..., first, effect());
                }
            };
            const auto withGuard = [&](const auto&... parts) {
                if (test)
                    withEffects(parts..., when(*test));
                else
                    withEffects(parts...);
            };
            if (port)
                withGuard(on(*port));
            else
                withGuard();
        }
    }

    void writeReactivations(ImplementationWriter& implementation, const Component& self) {
        for (const std::string& mode : self.modes) {
            if (mChoices.chance(40)) continue;
            for (std::size_t i = mChoices.between(1, 4); i > 0; --i) {
                const std::string& to = mChoices.oneOf(self.modes);
                implementation.reactivation(mode, to, effect());
            }
        }
    }

    void connect(ImplementationWriter& implementation, const Component& self, const std::string& source,
                 const std::string& target) {
        if (mChoices.chance(20))
            implementation.connectEvent(source, target, someModes(self, 60), passive);
        else
            implementation.connectEvent(source, target, someModes(self, 60));
    }

    void writeConnections(ImplementationWriter& implementation, const Component& self,
                          const std::vector<Subcomponent>& children) {
        for (const Subcomponent& child : children) {
            for (const std::string& event : child.component.outEvents) {
                const std::string source = child.name + "." + event;
                for (const Subcomponent& other : children)
                    if (&other != &child && mChoices.chance(60))
                        connect(implementation, self, source, other.name + "." + mChoices.oneOf(other.component.inEvents));
                if (mChoices.chance(40)) connect(implementation, self, source, mChoices.oneOf(self.outEvents));
            }
            for (const std::string& event : self.inEvents)
                if (mChoices.chance(60))
                    connect(implementation, self, event, child.name + "." + mChoices.oneOf(child.component.inEvents));
        }
    }

    /// Data flows from a component's in port to its out port only, and to subcomponents from earlier ones: no cycle.
    void writeFlows(ImplementationWriter& implementation, const Component& self,
                    const std::vector<Subcomponent>& children) {
        std::vector<std::string> sources{"i"};
        for (const Subcomponent& child : children) {
            if (mChoices.chance(70)) {
                const std::string& source = mChoices.oneOf(sources);
                implementation.connectData(source, child.name + ".i", someModes(self, 50));
            }
            sources.push_back(child.name + ".o");
        }
        const Expr read = mChoices.chance(50) ? Expr(n) : Expr(var(mChoices.oneOf(sources), Type::Int));
        implementation.flow(output, caseOf({{read < 100, read + 1}}, integer(0)), someModes(self, 60));
        if (mChoices.chance(50)) return;
        const Expr reported = condition(children);
        implementation.flow(report, reported, someModes(self, 60));
    }

    Choices& mChoices;
    std::size_t mBudget;    // subcomponents that may still be written
    std::size_t mCount = 0;
    ModelWriter mModel;
};

}  // namespace

ModelWriter randomModel(Choices& choices) { return Generator(choices).generate(); }

std::vector<double> probeDelays(Choices& choices) {
    std::vector<double> delays{0.0, 1.0 / 32.0};
    for (int i = 0; i < 5; ++i) delays.push_back(static_cast<double>(choices.below(128)) / 16.0 + 1.0 / 32.0);
    for (int i = 0; i < 2; ++i) delays.push_back(static_cast<double>(choices.below(16)) / 2.0);
    return delays;
}

}  // namespace vornrun::test

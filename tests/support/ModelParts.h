#pragma once
/// \file
/// The parts from which a model's declarations, modes and transitions are put together; see ModelWriter.h for their
/// use. A function that takes parts says in its signature which ones fit.

#include <concepts>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ClauseWriter.h"
#include "tests/support/ExprWriter.h"

namespace vornrun::test {

/// The numbers of the file, in another order than those of VornComponentCategory.
enum class Category : unsigned int {
    process = 0,
    threadGroup = 1,
    thread = 2,
    data = 3,
    processor = 4,
    memory = 5,
    device = 6,
    bus = 7,
    system = 8
};
/// The numbers of the file, in another order than those of VornModeType.
enum class ModeKind : unsigned int { Initial = 0, Activation = 1, Error = 2, Plain = 3 };

/// What a guard or an invariant is made of; without clauses given they are derived from the expression.
struct Condition {
    Expr plain;
    std::optional<Clauses> clauses;
};
struct When {
    Condition condition;
};
struct Invariant {
    Condition condition;
};
struct On {
    std::string trigger;
};
struct Set {
    Expr left, right;
};
struct Rate {
    Expr left, right;
};
struct InModes {
    std::vector<std::string> names;
};
struct Binding {
    std::string list, target;
};
enum class Flag { Observable, Alarm, Nonblocking, Passive };

/// The guard of a transition.
When when(const Expr& guard);
When when(const Expr& guard, Clauses clauses);
/// The invariant of a mode.
Invariant invariant(const Expr& expression);
Invariant invariant(const Expr& expression, Clauses clauses);
/// The trigger of a transition: "port" or "sub.port".
On on(const std::string& trigger);
/// An effect of a transition.
Set set(const Expr& left, const Expr& right);
/// A trajectory of a mode: the variable changes by that much per unit of time. A mode needs an invariant for it.
Rate rate(const Expr& variable, const Expr& perUnit);
template <std::convertible_to<std::string>... Names>
InModes inModes(const Names&... names) {
    return {{names...}};
}
Binding accesses(const std::string& target);
Binding runningOn(const std::string& target);
Binding storedIn(const std::string& target);
inline constexpr Flag observable = Flag::Observable;
inline constexpr Flag alarm = Flag::Alarm;
inline constexpr Flag nonblocking = Flag::Nonblocking;
inline constexpr Flag passive = Flag::Passive;

/// Gathers the parts of one thing.
struct Draft {
    std::optional<Condition> guard, invariant;
    std::optional<std::string> trigger;
    std::vector<Set> effects;
    std::vector<Rate> trajectories;
    std::optional<InModes> modes;
    std::vector<Binding> bindings;
    std::optional<Expr> value;
    std::optional<ModeKind> kind;
    std::vector<Flag> flags;
    std::vector<Xml> splices;

    void add(const When& part) { guard = part.condition; }
    void add(const Invariant& part) { invariant = part.condition; }
    void add(const On& part) { trigger = part.trigger; }
    void add(const Set& part) { effects.push_back(part); }
    void add(const Rate& part) { trajectories.push_back(part); }
    void add(const InModes& part) { modes = part; }
    void add(const Binding& part) { bindings.push_back(part); }
    void add(const Expr& part) { value = part; }
    void add(ModeKind part) { kind = part; }
    void add(Flag part) { flags.push_back(part); }
    void add(const Xml& part) { splices.push_back(part); }

    bool has(Flag flag) const;
    /// "True" or "False".
    std::string text(Flag flag) const;
    /// Appends the elements that things of several kinds have: `in_modes`, `default_value`, and what is spliced in.
    void addCommon(Xml& element) const;
};

template <class... Parts>
Draft draftOf(const Parts&... parts) {
    Draft draft;
    (draft.add(parts), ...);
    return draft;
}

/// A part is of one of these kinds, or markup spliced in as a child of the element.
template <class Part, class... Kinds>
concept PartOf = std::same_as<Part, Xml> ||(std::convertible_to<Part, Kinds> || ...);

}  // namespace vornrun::test

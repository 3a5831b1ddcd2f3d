#include "tests/support/ModelParts.h"

#include <algorithm>

namespace vornrun::test {

When when(const Expr& guard) { return {{guard, std::nullopt}}; }
When when(const Expr& guard, Clauses clauses) { return {{guard, std::move(clauses)}}; }
Invariant invariant(const Expr& expression) { return {{expression, std::nullopt}}; }
Invariant invariant(const Expr& expression, Clauses clauses) { return {{expression, std::move(clauses)}}; }
On on(const std::string& trigger) { return {trigger}; }
Set set(const Expr& left, const Expr& right) { return {left, right}; }
Rate rate(const Expr& variable, const Expr& perUnit) { return {variable, perUnit}; }
Binding accesses(const std::string& target) { return {"accesses", target}; }
Binding runningOn(const std::string& target) { return {"running_on", target}; }
Binding storedIn(const std::string& target) { return {"stored_in", target}; }

bool Draft::has(Flag flag) const { return std::find(flags.begin(), flags.end(), flag) != flags.end(); }

std::string Draft::text(Flag flag) const { return has(flag) ? "True" : "False"; }

void Draft::addCommon(Xml& element) const {
    if (modes) {
        Xml list("in_modes");
        for (const std::string& name : modes->names) list.add(Xml("name", name));
        element.add(list);
    }
    if (value) element.add(value->valueXml("default_value"));
    for (const Xml& splice : splices) element.add(splice);
}

}  // namespace vornrun::test

#pragma once
/// \file
/// Models of one component whose traces are certain, so that the tool's whole output is.

#include "tests/support/ModelWriter.h"
#include "tests/support/PropertyWriter.h"

namespace vornrun::test {

/// Jumps every unit of time, for ever. `yes` is true and `no` is false from the start on.
inline ModelWriter tickingModel() {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.implementation("Clock.i")
        .data(x)
        .data(var("yes", Type::Bool), true)
        .data(var("no", Type::Bool), false)
        .mode("ticking", invariant(x <= 1.0))
        .transition("ticking", "ticking", when(x >= 1.0), set(x, 0.0));
    return model;
}

/// Every implementation is a part of another.
inline ModelWriter modelWithoutARoot() {
    ModelWriter model;
    model.implementation("A.i").subcomponent("b", "B.i");
    model.implementation("B.i").subcomponent("a", "A.i");
    return model;
}

/// True in the initial state already.
inline PathFormula trueAtOnce() { return eventually(var("yes", Type::Bool), 0, 1000); }
/// False in the initial state already, since the left side must hold until the interval begins.
inline PathFormula falseAtOnce() { return until(var("no", Type::Bool), var("yes", Type::Bool), 1, 1000); }
/// Not decided within many steps.
inline PathFormula openForLong() { return eventually(var("no", Type::Bool), 0, 1000); }

}  // namespace vornrun::test

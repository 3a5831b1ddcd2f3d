#pragma once
/// \file
/// Pumps that fail by themselves, and what the tests of the race of their events do with them.

#include <sstream>
#include <string>

#include "tests/support/DrivenModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/ActingStrat.h"

namespace vornrun::test {

inline constexpr Time INF = TimeInterval::INF_TIME;

/// A pump that leaks and fails by itself, and that only a failure stops.
inline void addPump(ModelWriter& model) {
    model.type("Pump").errorPort("fail", 0.5).errorPort("leak", 0.25);
    model.implementation("Pump.i")
        .mode("up")
        .mode("down", ModeKind::Error)
        .transition("up", "up", on("leak"))
        .transition("up", "down", on("fail"));
}

inline ModelWriter onePump() {
    ModelWriter model;
    addPump(model);
    return model;
}

/// A plant with a switch; the pump `a` exists only while the plant is on, `b` always.
inline ModelWriter switchedPlant() {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").mode("up").mode("down", ModeKind::Error).transition("up", "down", on("fail"));
    model.implementation("Plant.i")
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .transition("off", "on")
        .subcomponent("a", "Pump.i", inModes("on"))
        .subcomponent("b", "Pump.i");
    return model;
}

/// Flips the switch of the plant.
inline SimulationStep* flip(ActingStrat& strategy, DrivenModel& driven) {
    EDA* plant = driven.eda("main");
    for (const auto& transition : plant->component()->transitions())
        if (transition->source() == plant->currentMode()) return strategy.take({plant, transition.get()});
    return nullptr;
}

inline void flipNext(DrivenModel& driven) {
    driven.strategyAs<ActingStrat>().act = [&driven](ActingStrat& strategy) { return flip(strategy, driven); };
}
inline void waitNext(DrivenModel& driven, Time delay) {
    driven.strategyAs<ActingStrat>().act = [delay](ActingStrat& strategy) { return strategy.wait(delay); };
}
inline void useSampleNext(DrivenModel& driven) {
    driven.strategyAs<ActingStrat>().act = [](ActingStrat& strategy) { return strategy.useFirstSample(); };
}

/// The race as "main.a.fail@3 main.b.fail@-", "-" standing for no sample.
inline std::string race(DrivenModel& driven) {
    std::ostringstream text;
    const char* separator = "";
    for (const auto& [time, event] : driven.strategy().eventSamples()) {
        text << separator << event.first->identifier() << "." << event.second->identifier() << "@";
        if (time == INF) {
            text << "-";
        } else {
            text << time;
        }
        separator = " ";
    }
    return text.str();
}

}  // namespace vornrun::test

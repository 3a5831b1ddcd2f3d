#include "vornrun/datastructures/eda/DD.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <unordered_map>

#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

const Log DD::sLogger("root.eda.network.dd");

namespace {

/// The level that no flow may reach. A chain of this many flows is the longest that passes.
constexpr unsigned int LEVEL_LIMIT = 128;

/// Ends the process at once: other threads may still be running, so that nothing that they use may be torn down. The
/// log is closed, which a thread that writes to it survives.
[[noreturn]] void stopOnCycle(const Log& log) {
    log.write(LogLevel::Fatal, "Dataflow topology level > 128, possible cycle");
    Log::shutdown();
    std::cout.flush();
    std::fflush(nullptr);
    std::_Exit(1);
}

}  // namespace

struct DD::EDAFlow {
    EDA* eda;
    const RealisedFlow* flow;
    std::vector<EDAFlow*> dependencies;  // the flows that write a value that this one reads
    std::vector<EDAFlow*> dependents;    // the flows that read the value that this one writes
    bool active = true;
    bool activeInAllModes;
    std::vector<bool> activeInMode;  // by RealisedMode::index()
    std::size_t number = 0;          // position before the sort: the order of automata and declaration
    unsigned int level = 0;
};

DD::DD(const EDANetwork* network) { buildTopology(network); }

DD::~DD() = default;

void DD::buildTopology(const EDANetwork* network) {
    mFlowsOfEDA.resize(network->edas().size());
    for (EDA* eda : network->edas()) {
        const VornComponentRealisation* component = eda->component();
        for (const auto& flow : component->flows()) {
            auto entry = std::make_unique<EDAFlow>();
            entry->eda = eda;
            entry->flow = flow.get();
            entry->activeInAllModes = flow->activeIn().empty();
            entry->activeInMode.resize(component->modes().size());
            for (const RealisedMode* mode : flow->activeIn()) entry->activeInMode[mode->index()] = true;
            entry->number = mFlows.size();
            mFlowsOfEDA[eda->index()].push_back(entry.get());
            mFlows.push_back(std::move(entry));
        }
    }
    linkDependencies();
    sortByLevel();
    collectActive();
}

void DD::linkDependencies() {
    std::map<TypedValueRef, std::vector<EDAFlow*>> readers;
    for (const auto& flow : mFlows)
        for (const TypedValueRef& read : flow->flow->refsInAssignment()) readers[read].push_back(flow.get());
    for (const auto& writer : mFlows) {
        const RealisedVariable* target = writer->flow->target();
        const auto found = readers.find({target->type(), target->reference()});
        if (found == readers.end()) continue;
        for (EDAFlow* reader : found->second) {
            reader->dependencies.push_back(writer.get());
            writer->dependents.push_back(reader);
        }
    }
}

/// A flow's level is the length of the longest path from it to a flow that nobody reads; higher levels run first. A
/// cycle that nothing outside it reads has no level of its own and runs at level 0.
void DD::sortByLevel() {
    std::vector<EDAFlow*> current;
    for (const auto& flow : mFlows)
        if (flow->dependents.empty()) current.push_back(flow.get());
    std::vector<bool> hasLevel(mFlows.size());
    std::vector<unsigned int> addedAt(mFlows.size());  // level + 1 at which a flow was last put on the next list
    for (unsigned int level = 0; !current.empty(); ++level) {
        std::vector<EDAFlow*> next;
        for (EDAFlow* flow : current) {
            flow->level = level;
            hasLevel[flow->number] = true;
            for (EDAFlow* writer : flow->dependencies) {
                if (addedAt[writer->number] == level + 1) continue;
                addedAt[writer->number] = level + 1;
                next.push_back(writer);
            }
        }
        if (level == LEVEL_LIMIT) stopOnCycle(sLogger);
        current = std::move(next);
    }
    if (sLogger.isOn(LogLevel::Debug)) {
        VORNRUN_LOG(sLogger, Debug, "DD: Flow level map:");
        for (const auto& flow : mFlows)
            if (hasLevel[flow->number])
                VORNRUN_LOG(sLogger, Debug,
                            "    " << static_cast<const Realisation&>(*flow->flow) << " :: " << flow->level);
    }
    // Flows of one level keep the order of automata and declaration.
    std::stable_sort(mFlows.begin(), mFlows.end(), [](const auto& a, const auto& b) { return a->level > b->level; });
    VORNRUN_LOG(sLogger, Debug, "DD: Flow evaluation order:");
    for (const auto& flow : mFlows) VORNRUN_LOG(sLogger, Debug, "    " << static_cast<const Realisation&>(*flow->flow));
}

void DD::refresh(EDAFlow& flow) {
    flow.active = flow.eda->active() && (flow.activeInAllModes || flow.activeInMode[flow.eda->currentMode()->index()]);
}

void DD::collectActive() {
    mActive.clear();
    for (const auto& flow : mFlows)
        if (flow->active) mActive.push_back(flow.get());
}

void DD::updateTopology() {
    for (const auto& flow : mFlows) refresh(*flow);
    collectActive();
}

void DD::updateTopology(std::vector<EDA*>& changed) {
    bool anyChange = false;
    for (EDA* eda : changed) {
        eda->notedForFlows = false;
        for (EDAFlow* flow : mFlowsOfEDA[eda->index()]) {
            const bool before = flow->active;
            refresh(*flow);
            anyChange = anyChange || flow->active != before;
        }
    }
    changed.clear();
    if (anyChange) collectActive();
}

void DD::propagateValuesAlongDependencies() {
    for (const EDAFlow* flow : mActive) {
        VORNRUN_LOG(sLogger, Trace, "DD: Apply: " << static_cast<const Realisation&>(*flow->flow));
        flow->flow->applyAssignment();
    }
}

void DD::saveTopology() const {
    std::ofstream file("DD_output.txt");
    std::unordered_map<const EDAFlow*, std::size_t> numbers;
    for (std::size_t i = 0; i < mFlows.size(); ++i) numbers[mFlows[i].get()] = i + 1;
    // Both dumps carry the same graph name.
    file << "digraph EC {\n";
    for (const auto& flow : mFlows)
        file << " " << numbers[flow.get()] << "[label=\"" << static_cast<const Realisation&>(*flow->flow)
             << "\" color=" << (flow->active ? "green" : "red") << "];\n";
    for (const auto& flow : mFlows)
        for (const EDAFlow* dependent : flow->dependents)
            file << numbers[flow.get()] << "->" << numbers[dependent] << "\n";
    file << "}\n";
}

std::vector<const RealisedFlow*> DD::evaluationOrder() const {
    std::vector<const RealisedFlow*> result;
    for (const auto& flow : mFlows) result.push_back(flow->flow);
    return result;
}

}  // namespace vornrun

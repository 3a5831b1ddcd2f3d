#include "vornrun/datastructures/eda/DD.h"

#include <algorithm>
#include <cassert>
#include <fstream>
#include <map>
#include <string>
#include <unordered_map>

#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/eda/ModeFlags.h"

namespace vornrun {

const Log DD::sLogger("root.eda.network.dd");

namespace {

/// The level that no flow may reach. A chain of this many flows is the longest that passes.
constexpr unsigned int LEVEL_LIMIT = 128;

[[noreturn]] void refuseLevel(const Log& log) {
    const std::string text = "Dataflow topology level > 128, possible cycle";
    log.write(LogLevel::Fatal, text);
    throw flow_topology_exception(text);
}

}  // namespace

DD::DD(const EDANetwork* network) {
    assert(network != nullptr);
    buildTopology(network);
}

DD::~DD() = default;

void DD::buildTopology(const EDANetwork* network) {
    mFlowsOfEDA.resize(network->edas().size());
    for (EDA* eda : network->edas()) {
        const VornComponentRealisation* component = eda->component();
        for (const auto& flow : component->flows()) {
            auto entry = std::make_unique<EDAFlow>();
            entry->eda = eda;
            entry->flow = flow.get();
            entry->activeInMode = modeFlags(flow->activeIn(), component->modes().size());
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

/// A flow's level is the length of the longest path from it to a flow that nobody reads. Higher levels run first. A
/// cycle that nothing outside it reads has no level and runs at level 0.
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
        if (level == LEVEL_LIMIT) refuseLevel(sLogger);
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
    flow.active = flow.eda->active() && flow.activeInMode[flow.eda->currentMode()->index()];
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
        eda->flowsAreRefreshed();
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
    writeTopology(file);
}

void DD::writeTopology(std::ostream& stream) const {
    std::unordered_map<const EDAFlow*, std::size_t> numbers;
    for (std::size_t i = 0; i < mFlows.size(); ++i) numbers[mFlows[i].get()] = i + 1;
    // Both dumps carry the same graph name.
    stream << "digraph EC {\n";
    for (const auto& flow : mFlows)
        stream << " " << numbers[flow.get()] << "[label=\"" << static_cast<const Realisation&>(*flow->flow)
               << "\" color=" << (flow->active ? "green" : "red") << "];\n";
    for (const auto& flow : mFlows)
        for (const EDAFlow* dependent : flow->dependents)
            stream << numbers[flow.get()] << "->" << numbers[dependent] << "\n";
    stream << "}\n";
}

std::vector<const RealisedFlow*> DD::evaluationOrder() const {
    std::vector<const RealisedFlow*> result;
    for (const auto& flow : mFlows) result.push_back(flow->flow);
    return result;
}

}  // namespace vornrun

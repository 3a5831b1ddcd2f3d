#include "vornrun/datastructures/eda/EC.h"

#include <algorithm>
#include <cassert>
#include <fstream>
#include <ostream>
#include <unordered_map>

#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/eda/ModeFlags.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun {

const Log EC::sLogger("root.eda.network.ec");

/// Builds the graph; its maps are not needed afterwards.
class EC::Builder {
  public:
    Builder(EC& topology, const std::vector<EDA*>& edas) : mTopology(topology), mEDAs(edas) {}

    void build() {
        makeNodes();
        connect();
        for (EDA* eda : mEDAs)
            for (const auto& transition : eda->component()->transitions())
                if (transition->hasDirectCommunicationTrigger()) communicateDirectly(eda, transition->trigger());
        listSources();
        for (const auto& node : mTopology.mPaths) sortEdges(*node);
    }

  private:
    std::unique_ptr<ConnPath> makeNode(EDA* eda, const RealisedEventPort* port) {
        auto node = std::make_unique<ConnPath>();
        node->eda = eda;
        node->port = port;
        node->transitions = eda->component()->transitionsOfPort(port);
        return node;
    }

    void makeSource(const RealisedEventPort* port, ConnPath* node) {
        auto& sources = mTopology.mSources;
        if (port->id() >= sources.size()) sources.resize(port->id() + 1, nullptr);
        if (sources[port->id()] == nullptr) sources[port->id()] = node;
    }

    void makeNodes() {
        for (EDA* eda : mEDAs) {
            for (const auto& port : eda->component()->eventPorts()) {
                mTopology.mPaths.push_back(makeNode(eda, port.get()));
                mNodes[port.get()] = mTopology.mPaths.back().get();
                if (port->direction() == PortDirection::out) makeSource(port.get(), mTopology.mPaths.back().get());
            }
        }
    }

    ConnPath* nodeOf(const EDA* owner, const RealisedEventPort* port) const {
        const auto found = mNodes.find(port);
        if (found == mNodes.end())
            throw model_exception("Component " + owner->identifier() + ": the event port " + port->fullIdentifier() +
                                  " belongs to no automaton of the model");
        return found->second;
    }

    void addEdge(EDA* owner, const RealisedConnection* connection, ConnPath* from, ConnPath* to) {
        auto edge = std::make_unique<Edge>();
        edge->owner = owner;
        edge->connection = connection;
        edge->from = from;
        edge->to = to;
        to->upstream.push_back(from);
        dependOn(from->eda, edge.get());
        if (connection == nullptr) {
            if (to->eda != from->eda) dependOn(to->eda, edge.get());
        } else {
            edge->inMode = modeFlags(connection->modes(), owner->component()->modes().size());
            if (owner != from->eda) dependOn(owner, edge.get());
        }
        from->edges.push_back(std::move(edge));
    }

    void dependOn(const EDA* eda, Edge* edge) { mTopology.mEdgesOfEDA[eda->index()].push_back(edge); }

    void connect() {
        for (EDA* eda : mEDAs)
            for (const auto& connection : eda->component()->connections())
                addEdge(eda, connection.get(), nodeOf(eda, connection->source()), nodeOf(eda, connection->target()));
    }

    /// `parent` has a transition on a subcomponent's port. When several automata use one port like this, parent and
    /// grandparent for instance, only the first gets the edge.
    void communicateDirectly(EDA* parent, const RealisedEventPort* port) {
        ConnPath* owned = nodeOf(parent, port);
        const auto& sources = mTopology.mSources;
        const ConnPath* source = port->id() < sources.size() ? sources[port->id()] : nullptr;
        const auto isImplicit = [](const auto& edge) { return edge->connection == nullptr; };
        if (source != nullptr && std::any_of(source->edges.begin(), source->edges.end(), isImplicit)) return;
        mTopology.mPaths.push_back(makeNode(parent, port));
        ConnPath* used = mTopology.mPaths.back().get();
        if (port->direction() == PortDirection::out) {
            addEdge(nullptr, nullptr, owned, used);
        } else {
            addEdge(nullptr, nullptr, used, owned);
            makeSource(port, used);
        }
    }

    void listSources() {
        for (const ConnPath* node : mTopology.mSources)
            if (node != nullptr) mTopology.mTriggers.emplace_back(node->eda, node->port);
        for (EDA* eda : mEDAs) {
            for (const auto& transition : eda->component()->transitions()) {
                const ConnPath* node = mTopology.sourceOf(transition->trigger());
                if (node != nullptr && node->eda == eda)
                    mTopology.mSourceTransitions.emplace_back(eda, transition.get());
            }
        }
    }

    /// Connections were added by owner and as declared; the implicit edge moves to the front.
    static void sortEdges(ConnPath& node) {
        std::stable_partition(node.edges.begin(), node.edges.end(),
                              [](const auto& edge) { return edge->connection == nullptr; });
    }

    EC& mTopology;
    const std::vector<EDA*>& mEDAs;
    std::unordered_map<const RealisedEventPort*, ConnPath*> mNodes;
};

EC::EC(const EDANetwork* network) : mEdgesOfEDA(network->edas().size()) {
    Builder(*this, network->edas()).build();
    updateTopology();
}

EC::~EC() = default;

/// A connection is active when its source is awake and the mode of its owner has it. The automaton at its target may be
/// asleep.
void EC::refreshEdge(Edge& edge) {
    bool active = edge.from->eda->active();
    if (active && edge.connection != nullptr)
        active = edge.owner->active() && edge.inMode[edge.owner->currentMode()->index()];
    else if (active)
        active = edge.to->eda->active();
    if (active == edge.active) return;
    edge.active = active;
    invalidateUpstream(*edge.from);
}

/// Drops the target lists of the node and of all nodes that lead to it.
void EC::invalidateUpstream(ConnPath& node) {
    node.visit = ++mVisit;
    mPending.assign(1, &node);
    while (!mPending.empty()) {
        ConnPath* next = mPending.back();
        mPending.pop_back();
        next->targetsKnown = false;
        for (ConnPath* above : next->upstream) {
            if (above->visit == mVisit) continue;
            above->visit = mVisit;
            mPending.push_back(above);
        }
    }
}

void EC::updateTopology() {
    for (const auto& node : mPaths)
        for (const auto& edge : node->edges) refreshEdge(*edge);
}

void EC::updateTopology(std::vector<EDA*>& changed) {
    for (EDA* eda : changed) {
        eda->connectionsAreRefreshed();
        for (Edge* edge : mEdgesOfEDA[eda->index()]) refreshEdge(*edge);
    }
    changed.clear();
}

const EC::ConnPath* EC::sourceOf(const RealisedEventPort* port) const {
    return port->id() < mSources.size() && mSources[port->id()] != nullptr && mSources[port->id()]->port == port
               ? mSources[port->id()]
               : nullptr;
}

const std::vector<EC::Target>& EC::targets(const RealisedEventPort* port) const {
    const ConnPath* node = sourceOf(port);
    if (node == nullptr) throw model_exception("The event port " + port->fullIdentifier() + " cannot raise an event");
    if (!node->targetsKnown) {
        node->targets.clear();
        walk(*node, node->targets);
        node->targetsKnown = true;
    }
    return node->targets;
}

void EC::enter(const ConnPath& node, bool passive, std::vector<Target>& result) const {
    if (node.onWalk)
        throw model_exception("Component " + node.eda->identifier() +
                              ": active event connections form a cycle through the port " +
                              node.port->fullIdentifier());
    mWalk.push_back({&node, passive, 0});
    node.onWalk = true;
    result.push_back({node.eda, node.port, passive, node.transitions});
}

/// Depth first over active edges. The path is in a list and not on the stack, since a model may make it very long.
void EC::walk(const ConnPath& start, std::vector<Target>& result) const {
    // Removes all marks on every way out, an exception included.
    struct Cleanup {
        std::vector<Step>& steps;
        explicit Cleanup(std::vector<Step>& walk) : steps(walk) {}
        Cleanup(const Cleanup&) = delete;
        Cleanup& operator=(const Cleanup&) = delete;
        ~Cleanup() {
            for (const Step& step : steps) step.node->onWalk = false;
            steps.clear();
        }
    };
    const Cleanup cleanup(mWalk);
    enter(start, false, result);
    while (!mWalk.empty()) {
        Step& step = mWalk.back();
        if (step.nextEdge == step.node->edges.size()) {
            step.node->onWalk = false;
            mWalk.pop_back();
            continue;
        }
        const Edge& edge = *step.node->edges[step.nextEdge++];
        if (edge.active)
            enter(*edge.to, step.passive || (edge.connection != nullptr && edge.connection->isPassive()), result);
    }
}

const PortTransitions* EC::transitionsOf(const QualifiedEvent& event) const {
    const ConnPath* node = sourceOf(event.second);
    if (node != nullptr && node->eda == event.first) return node->transitions;
    return event.first->component()->transitionsOfPort(event.second);
}

std::vector<std::tuple<EDA*, const RealisedEventPort*, bool>> EC::getTargets(const RealisedEventPort* port) const {
    std::vector<std::tuple<EDA*, const RealisedEventPort*, bool>> result;
    for (const Target& target : targets(port)) result.emplace_back(target.eda, target.port, target.passive);
    return result;
}

void EC::saveTopology() const {
    std::ofstream file("EC_output.txt");
    writeTopology(file);
}

void EC::writeTopology(std::ostream& stream) const {
    std::unordered_map<const ConnPath*, std::size_t> numbers;
    for (std::size_t i = 0; i < mPaths.size(); ++i) numbers[mPaths[i].get()] = i + 1;
    stream << "digraph EC {\n";
    for (const auto& node : mPaths)
        stream << " " << numbers[node.get()] << "[label=\"" << node->port->identifier() << "\" color=\""
               << (node->eda->active() ? "green" : "red") << "\"]\n";
    for (const auto& node : mPaths) {
        for (const auto& edge : node->edges) {
            stream << numbers[node.get()] << "->" << numbers[edge->to] << "[";
            if (edge->connection != nullptr) {
                if (edge->connection->isPassive()) stream << " style=dotted";
                stream << " label=\"" << static_cast<const Realisation&>(*edge->connection) << "\"";
            }
            stream << (edge->active ? " color=green" : " color=red") << "]\n";
        }
    }
    stream << "}\n";
}

}  // namespace vornrun

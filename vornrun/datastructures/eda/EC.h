#pragma once
/// \file
/// The event connection topology: which ports hear an event port that fires now. It is a directed graph over ports. The
/// graph is fixed once the network is built; only the activity of its edges changes, with modes and the active set.

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <tuple>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/eda/EDA.h"
#include "vornrun/datastructures/eda/QualifiedTransition.h"

namespace vornrun {

class EDANetwork;

class EC {
  public:
    /// A port that hears an event, with the automaton that reacts to it.
    struct Target {
        EDA* eda;
        const RealisedEventPort* port;
        bool passive;                        // a connection on the path to it is passive
        const PortTransitions* transitions;  // of the automaton on the port; null when none listens

        /// The automaton's transitions on the port out of its current mode; null for none at all.
        const std::vector<TransitionPtr>* ofCurrentMode() const {
            return transitions == nullptr ? nullptr : &transitions->in(eda->currentMode());
        }
    };

    struct ConnPath;
    /// A connection, or the implicit edge between a subcomponent's port and a parent that uses that port directly. The
    /// implicit edge has neither owner nor connection.
    struct Edge {
        EDA* owner;  // the automaton in whose component the connection is declared
        const RealisedConnection* connection;
        ConnPath* from;
        ConnPath* to;
        std::vector<bool> inMode;  // by RealisedMode::index() of the owner: whether the connection exists
        bool active = true;
    };
    /// A node of the graph: a port, and the automaton that uses it. That is the port's owner, or the owner's parent.
    struct ConnPath {
        EDA* eda;
        const RealisedEventPort* port;
        const PortTransitions* transitions;        // of the automaton on the port; null when none listens
        std::vector<std::unique_ptr<Edge>> edges;  // the implicit one first, then by owner and declaration
        std::vector<ConnPath*> upstream;           // the nodes with an edge to this one
        // The result of targets() for this node, computed on demand. An edge behind this node drops it when it
        // switches.
        mutable std::vector<Target> targets;
        mutable bool targetsKnown = false;
        mutable bool onWalk = false;  // on the path that the current walk is on
        unsigned long visit = 0;      // the last invalidateUpstream() that has reached the node
    };

    /// Reads only the network's list of automata. The network is not owned and not null.
    explicit EC(const EDANetwork* network);
    EC(const EC&) = delete;
    EC& operator=(const EC&) = delete;
    virtual ~EC();

    /// Recomputes the activity of all edges.
    void updateTopology();
    /// The same for the edges that depend on the given automata alone; empties the list.
    void updateTopology(std::vector<EDA*>& changed);

    /// The ports that hear the port, itself first, in the order of a depth-first walk over active edges. Of the edges
    /// of one port the implicit one comes first, then connections by the owner's position in the network and as
    /// declared. A port with two paths to it is listed twice. \pre the port is the trigger of an element of
    /// getTriggers() or getSourceTransitions() \throws model_exception when active connections form a cycle
    std::vector<std::tuple<EDA*, const RealisedEventPort*, bool>> getTargets(const RealisedEventPort* port) const;
    /// The same without a copy; not owned by the caller, valid until the next update.
    const std::vector<Target>& targets(const RealisedEventPort* port) const;

    /// The nodes in creation order.
    const std::vector<std::unique_ptr<ConnPath>>& paths() const noexcept { return mPaths; }
    /// The transitions that listen on the event's port in the automaton that raises it; null for none.
    const PortTransitions* transitionsOf(const QualifiedEvent& event) const;

    /// The ports that can raise an event, with the automaton that does, in the order in which the ports were made.
    const std::vector<QualifiedEvent>& getTriggers() const noexcept { return mTriggers; }
    /// The transitions that can start an event, in the order of automata and ids.
    const QualifiedTransitions& getSourceTransitions() const noexcept { return mSourceTransitions; }
    /// Writes the graph in the DOT language.
    void writeTopology(std::ostream& stream) const;
    /// The same to "EC_output.txt" in the working directory; a failure is ignored.
    void saveTopology() const;

  private:
    class Builder;
    /// A node on the path of a walk, and which of its edges comes next.
    struct Step {
        const ConnPath* node;
        bool passive;
        std::size_t nextEdge;
    };

    void refreshEdge(Edge& edge);
    void invalidateUpstream(ConnPath& node);
    void walk(const ConnPath& start, std::vector<Target>& result) const;
    void enter(const ConnPath& node, bool passive, std::vector<Target>& result) const;
    const ConnPath* sourceOf(const RealisedEventPort* port) const;

    static const Log sLogger;                       // "root.eda.network.ec"
    std::vector<std::unique_ptr<ConnPath>> mPaths;  // in creation order
    std::vector<ConnPath*> mSources;                // by port id; null for a port that raises nothing
    std::vector<std::vector<Edge*>> mEdgesOfEDA;    // by EDA::index(): the edges whose activity depends on it
    std::vector<ConnPath*> mPending;                // work list of invalidateUpstream()
    unsigned long mVisit = 0;                       // number of the present invalidateUpstream()
    mutable std::vector<Step> mWalk;                // work list of walk()
    std::vector<QualifiedEvent> mTriggers;
    QualifiedTransitions mSourceTransitions;
};

}  // namespace vornrun

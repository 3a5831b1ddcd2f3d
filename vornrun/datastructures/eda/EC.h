#pragma once
/// \file
/// The event connection topology: when an event port fires, which ports hear it, now. A directed graph over ports,
/// fixed once the network is built; only the activity of its edges changes, with modes and the active set.

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
    /// A port that hears an event, with the automaton that reacts on it.
    struct Target {
        EDA* eda;
        const RealisedEventPort* port;
        bool passive;                        // the way to it passed a passive connection
        const PortTransitions* transitions;  // of the automaton on the port; null when none listens

        /// The automaton's transitions on the port out of its current mode; null for none at all.
        const std::vector<TransitionPtr>* ofCurrentMode() const {
            return transitions == nullptr ? nullptr : &transitions->in(eda->currentMode());
        }
    };

    /// Reads the network's list of automata only.
    explicit EC(const EDANetwork* network);
    EC(const EC&) = delete;
    EC& operator=(const EC&) = delete;
    virtual ~EC();  // the class of the nodes is incomplete here

    /// Recomputes the activity of all edges.
    void updateTopology();
    /// The same, looking only at edges that depend on the given automata; empties the list.
    void updateTopology(std::vector<EDA*>& changed);

    /// Who hears the port, itself first, in the order of the walk over active edges; of the edges of one port the
    /// implicit one comes first, then connections by the owner's position in the network and as declared. A port
    /// reached over two ways stands twice.
    /// \pre the port is the trigger of an element of getTriggers() or getSourceTransitions()
    /// \throws model_exception when active connections form a cycle
    std::vector<std::tuple<EDA*, const RealisedEventPort*, bool>> getTargets(const RealisedEventPort* port) const;
    /// The same without a copy; valid until the next update.
    const std::vector<Target>& targets(const RealisedEventPort* port) const;

    /// The transitions that listen on the event's port in the automaton that raises it; null for none.
    const PortTransitions* transitionsOf(const QualifiedEvent& event) const;

    /// The ports that can raise an event, with the automaton that does, in the order in which the ports were made.
    const std::vector<QualifiedEvent>& getTriggers() const noexcept { return mTriggers; }
    /// The transitions that can start an event, in the order of automata and ids.
    const QualifiedTransitions& getSourceTransitions() const noexcept { return mSourceTransitions; }
    /// Writes the graph in the DOT language to "EC_output.txt" in the working directory; a failure is ignored.
    void saveTopology() const;

  private:
    struct ConnPath;
    struct Edge;
    class Builder;
    /// A node on the way of a walk, and which of its edges comes next.
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

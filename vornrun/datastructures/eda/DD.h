#pragma once
/// \file
/// The data dependency topology: all flows of the model in an order in which a flow runs only after the flows that
/// write what it reads. The order is computed once, over all flows; at run time only each flow's on/off flag changes.

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/eda/EDA.h"

namespace vornrun {

class EDANetwork;

/// The flows of a model depend on each other in a chain that is too long, as a cycle with a reader makes it.
class flow_topology_exception : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class DD {
  public:
    /// A flow, and how it depends on others.
    struct EDAFlow {
        EDA* eda;  // of the component in which the flow is declared
        const RealisedFlow* flow;
        std::vector<EDAFlow*> dependencies;  // the flows that write a value that this one reads
        std::vector<EDAFlow*> dependents;    // the flows that read the value that this one writes
        bool active = true;
        std::vector<bool> activeInMode;  // by RealisedMode::index()
        std::size_t number = 0;          // position before the sort: the order of automata and declaration
        unsigned int level = 0;
    };

    /// Reads only the network's list of automata. The network is not owned and not null.
    /// \throws flow_topology_exception, after a record at fatal level, when a flow is more than 127 flows away from one
    /// that nobody reads
    explicit DD(const EDANetwork* network);
    DD(const DD&) = delete;
    DD& operator=(const DD&) = delete;
    ~DD();

    /// Refreshes the on/off flags of all flows.
    void updateTopology();
    /// The same for the flows of the given automata alone; empties the list.
    void updateTopology(std::vector<EDA*>& changed);
    /// Applies every flow that is on, writers before readers; one pass, no fixpoint.
    void propagateValuesAlongDependencies();
    /// Writes the graph in the DOT language.
    void writeTopology(std::ostream& stream) const;
    /// The same to "DD_output.txt" in the working directory; a failure is ignored.
    void saveTopology() const;

    /// The flows in evaluation order.
    const std::vector<std::unique_ptr<EDAFlow>>& flows() const noexcept { return mFlows; }
    /// The same without their dependencies; not owned by the caller.
    std::vector<const RealisedFlow*> evaluationOrder() const;

  private:
    void buildTopology(const EDANetwork* network);
    void linkDependencies();
    void sortByLevel();
    void refresh(EDAFlow& flow);
    void collectActive();

    static const Log sLogger;                        // "root.eda.network.dd"
    std::vector<std::unique_ptr<EDAFlow>> mFlows;    // in evaluation order once built
    std::vector<std::vector<EDAFlow*>> mFlowsOfEDA;  // by EDA::index()
    std::vector<const EDAFlow*> mActive;             // the flows that are on, in evaluation order
};

}  // namespace vornrun

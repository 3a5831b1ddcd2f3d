#pragma once
/// \file
/// The data dependency topology: all flows of the model in an order in which a flow runs only after those that it
/// reads from. The order is computed once, over all flows; at run time only each flow's on/off flag changes.

#include <memory>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/eda/EDA.h"

namespace vornrun {

class EDANetwork;

class DD {
  public:
    /// Reads the network's list of automata only. Ends the process with status 1, after a record at fatal level, when
    /// a flow lies more than 127 flows away from one that nobody reads, which a cycle with a reader does.
    explicit DD(const EDANetwork* network);
    DD(const DD&) = delete;
    DD& operator=(const DD&) = delete;
    ~DD();  // the class of the flows is incomplete here

    /// Refreshes the on/off flags of all flows.
    void updateTopology();
    /// The same, looking only at the flows of the given automata; empties the list.
    void updateTopology(std::vector<EDA*>& changed);
    /// Applies every flow that is on, writers before readers; one pass, no fixpoint.
    void propagateValuesAlongDependencies();
    /// Writes the graph in the DOT language to "DD_output.txt" in the working directory; a failure is ignored.
    void saveTopology() const;

    /// The flows in evaluation order, borrowed.
    std::vector<const RealisedFlow*> evaluationOrder() const;

  private:
    struct EDAFlow;

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

#pragma once
/// \file
/// Instantiates a component implementation and everything below it, with ids and value slots.

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

using SubComponentName = std::string;

/// The modes of the given names, in order. \throws model_exception naming the mode that does not exist
ModeList realisedModelist(const std::vector<std::string>& names, const std::map<std::string, RealisedMode*>& modes);

/// Local to a Simulator's construction and used for one realise(); a second one continues the numbers.
class VornModelConstructor {
  public:
    VornModelConstructor() = default;

    /// The instance tree, owned by the caller, with its value store.
    /// \throws model_exception for a model without a sound meaning (a connection end or trigger that names nothing, an
    /// assignment whose types do not fit, an implementation inside itself)
    /// \throws std::out_of_range "map::at" for a transition from or to a mode that does not exist
    std::pair<VornComponentRealisation*, ValuationPtr> realise(const VornComponentImplementation* root);
    /// What the reference names; null when absent.
    const RealisedIdentifier* findIdentifier(const VornComponentRealisation* realisation,
                                             const VornReference* reference) const;

  private:
    struct Work;    // what the realisation of one component hands from step to step

    std::unique_ptr<VornComponentRealisation> realise_recursive(const VornComponentImplementation* implementation,
                                                                const SubComponentName& name, const ModeList& inModes,
                                                                VornComponentRealisation* parent);
    void realise_modes(Work& work);
    void realise_ports(Work& work);
    void realise_data(Work& work);
    void realise_modes2(Work& work);
    void realise_subcomponents(Work& work);
    void realise_connections(Work& work);
    void realise_flows(Work& work);
    void realise_transitions(Work& work);
    void realise_reactivations(Work& work);

    static const Log sLogger;    // "root.constructors.model"
    unsigned int mComponentIds = 0;
    unsigned int mPartIds = 0;
    unsigned int mTransitionIds = 0;
    ValuationPtr mValuation;
};

}  // namespace vornrun

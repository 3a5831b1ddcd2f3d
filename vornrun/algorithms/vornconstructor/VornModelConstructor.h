#pragma once
/// \file
/// Instantiates a component implementation and everything below it, with ids and value slots.

#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

using SubComponentName = std::string;

/// The modes of the given names, in order; an empty list, which means all modes, for no names.
/// \throws model_exception naming the mode that does not exist
ModeList realisedModelist(const std::vector<std::string>& names, const std::map<std::string, RealisedMode*>& modes);

/// Local to a Simulator's construction and used for one realise(); a second one continues the numbers.
class VornModelConstructor {
  public:
    VornModelConstructor() = default;

    /// The instance tree, owned by the caller, with its value store. The root is named "main".
    /// Ids come out depth first: ports and data of a component before those of its subcomponents, transitions after.
    /// \param root not owned; it and the syntax tree behind it must outlive the result
    /// \throws model_exception for a model without a sound meaning (a connection end or trigger that names nothing, an
    /// assignment whose types do not fit, a mode list that names no mode, an implementation inside itself, components
    /// nested deeper than the stack allows)
    /// \throws std::out_of_range "map::at" for a transition from or to a mode that does not exist; an ERROR record
    /// before it says which
    std::pair<VornComponentRealisation*, ValuationPtr> realise(const VornComponentImplementation* root);
    /// What the reference names; null when absent.
    const RealisedIdentifier* findIdentifier(const VornComponentRealisation* realisation,
                                             const VornReference* reference) const;

  private:
    struct Work;  // what the realisation of one component hands from step to step
    using Effects = RealisedTransition::Effects;

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

    /// \throws model_exception when instantiating `implementation` here would not come to an end
    void checkNesting(const VornComponentImplementation* implementation,
                      const VornComponentRealisation& realisation) const;
    /// A port of the component that the model file does not declare.
    RealisedEventPort* attachSyntheticPort(Work& work, unsigned int declarationId, const std::string& name,
                                           PortDirection direction, bool nonblocking);
    void realiseDataConnection(Work& work, const VornConnection& connection, ModeList modes);
    const RealisedEventPort* triggerOf(Work& work, const VornTransition& transition);
    Effects effectsOf(Work& work, const VornTransition& transition);
    /// Out ports that are driven by a flow in the source mode only fall back to their defaults.
    void addResetsOfEndingFlows(const Work& work, const RealisedMode* source, const RealisedMode* target,
                                Effects& effects) const;
    /// Variables that exist in the target mode only start from their defaults.
    void addStartsOfArisingData(const Work& work, const RealisedMode* source, const RealisedMode* target,
                                Effects& effects) const;
    /// Assigns a part its default; its type's default when `defaultValue` is null.
    std::unique_ptr<RealisedAssignment> assignDefault(const Work& work, const RealisedPart* part,
                                                      const VornValue* defaultValue) const;
    /// The mode that a transition starts or ends in. \throws std::out_of_range "map::at" after an ERROR record
    static const RealisedMode* modeOf(const Work& work, const VornTransition& transition, const std::string& name);
    /// Rewrites names relative to the component in work.
    VariablesToValueReferences substitution(const Work& work);

    static const Log sLogger;  // "root.constructors.model"
    unsigned int mComponentIds = 0;
    unsigned int mPartIds = 0;
    unsigned int mTransitionIds = 0;
    ValuationPtr mValuation;
    std::unordered_set<const VornComponentImplementation*> mOpen;  // those on the way from the root to the one in work
};

}  // namespace vornrun

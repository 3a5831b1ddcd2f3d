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
#include "vornrun/datastructures/vorn/syntax/VornMode.h"

namespace vornrun {

using SubComponentName = std::string;

/// The modes of the given names, in order; an empty list, which means all modes, for no names.
/// \throws model_exception naming the mode that does not exist
ModeList realisedModelist(const std::vector<std::string>& names, const std::map<std::string, RealisedMode*>& modes);

/// Used for one realise(); a second one continues the numbers, with a new store.
class VornModelConstructor {
  public:
    explicit VornModelConstructor(ModelOptions options = {}) : mOptions(options) {}

    /// The instance tree, owned by the caller, with its value store. The root is named "main".
    /// Ids are given depth first: to ports and data of a component before those of its subcomponents, to transitions
    /// after those.
    /// \pre the root is not null
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

    // The steps of realise(), each for one component, in the order in which realise() takes them. Other callers need
    // them only for experiments. Precondition of all of them: no pointer is null, and realise() has run before, so that
    // there is a store of values.
    /// Orders modes by their ids rather than by memory address.
    struct ModeOrder {
        bool operator()(const VornMode* a, const VornMode* b) const noexcept { return a->id() < b->id(); }
    };
    using ModesByDeclaration = std::map<const VornMode*, RealisedMode*, ModeOrder>;
    using ModesByName = std::map<std::string, RealisedMode*>;
    using ValueSlots = VornComponentRealisation::ValueSlots;

    /// One component with everything below it, owned by the caller. Numbers and value slots follow those of the last
    /// realise().
    /// \param inModes the modes of the parent in which the instance exists; empty means all
    /// \param parent null for a root; not attached to it
    VornComponentRealisation* realise_recursive(const VornComponentImplementation* implementation,
                                                SubComponentName name, const ModeList& inModes,
                                                VornComponentRealisation* parent);
    /// Attaches the modes and enters them in the maps. Without any mode there is one named "dummy", in no map.
    void realise_modes(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                       ModesByDeclaration& modesByDeclaration, ModesByName& modesByName);
    /// Attaches the ports and enters the slots of data ports.
    void realise_ports(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                       ValueSlots& slotsOfValues, ValueSlots& slotsOfRates);
    /// Attaches the data subcomponents and enters their slots.
    void realise_data(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                      const ModesByName& modesByName, ValueSlots& slotsOfValues, ValueSlots& slotsOfRates);
    /// Gives the modes their invariants and trajectories.
    /// \pre the slots are attached to the component
    void realise_modes2(VornComponentRealisation* realisation, const ModesByDeclaration& modesByDeclaration);
    void realise_subcomponents(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                               const ModesByName& modesByName);
    /// Attaches event connections; data connections become flows.
    void realise_connections(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                             const ModesByName& modesByName);
    void realise_flows(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                       const ModesByName& modesByName);
    /// \pre the flows are attached, since a mode change resets the ports of flows that end
    void realise_transitions(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                             const ModesByName& modesByName);
    void realise_reactivations(const VornComponentImplementation* implementation, VornComponentRealisation* realisation,
                               const ModesByName& modesByName);

  private:
    class OpenImplementation;
    using Effects = RealisedTransition::Effects;

    /// \throws model_exception when instantiating `implementation` here would not end
    void checkNesting(const VornComponentImplementation* implementation,
                      const VornComponentRealisation& realisation) const;
    /// A port of the component that the model file does not declare.
    RealisedEventPort* attachSyntheticPort(VornComponentRealisation& realisation, unsigned int declarationId,
                                           const std::string& name, PortDirection direction, bool nonblocking);
    void realiseDataConnection(VornComponentRealisation& realisation, const VornConnection& connection, ModeList modes);
    const RealisedEventPort* triggerOf(VornComponentRealisation& realisation, const VornTransition& transition);
    Effects effectsOf(const VornComponentRealisation& realisation, const VornTransition& transition) const;
    /// Out ports that are driven by a flow in the source mode only fall back to their defaults.
    void addResetsOfEndingFlows(const VornComponentRealisation& realisation, const RealisedMode* source,
                                const RealisedMode* target, Effects& effects) const;
    /// Variables that exist in the target mode only start from their defaults.
    void addStartsOfArisingData(const VornComponentRealisation& realisation, const RealisedMode* source,
                                const RealisedMode* target, Effects& effects) const;
    /// Assigns a part its default; its type's default when `defaultValue` is null.
    std::unique_ptr<RealisedAssignment> assignDefault(const VornComponentRealisation& realisation,
                                                      const RealisedPart* part, const VornValue* defaultValue) const;
    /// The mode in which a transition starts or ends. \throws std::out_of_range "map::at" after an ERROR record
    static const RealisedMode* modeOf(const VornComponentRealisation& realisation, const VornTransition& transition,
                                      const ModesByName& modesByName, const std::string& name);
    /// Rewrites names relative to the component in work.
    VariablesToValueReferences substitution(const VornComponentRealisation& realisation) const;

    static const Log sLogger;  // "root.constructors.model"
    ModelOptions mOptions;
    unsigned int mComponentIds = 0;
    unsigned int mPartIds = 0;
    unsigned int mTransitionIds = 0;
    ValuationPtr mValuation;
    std::unordered_set<const VornComponentImplementation*> mOpen;  // those on the way from the root to the one in work
};

}  // namespace vornrun

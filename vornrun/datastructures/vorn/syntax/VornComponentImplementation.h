#pragma once
/// \file
/// Component implementations: the behaviour of a component type, from which instances are realised.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"
#include "vornrun/datastructures/vorn/syntax/VornConnection.h"
#include "vornrun/datastructures/vorn/syntax/VornDataSubcomponent.h"
#include "vornrun/datastructures/vorn/syntax/VornMode.h"
#include "vornrun/datastructures/vorn/syntax/VornSubComponent.h"
#include "vornrun/datastructures/vorn/syntax/VornTransition.h"

namespace vornrun {

class VornComponentImplementation final : public Vorn {
  public:
    using Subcomponents = std::map<std::string, std::unique_ptr<VornSubComponent>>;
    using DataSubcomponents = std::map<std::string, std::unique_ptr<VornDataSubcomponent>>;
    using Modes = std::map<std::string, std::unique_ptr<VornMode>>;

    /// Adopts everything but the declaration, which is not null. Adds the data subcomponent "mode" of mode type, which
    /// holds the current mode, unless one of that name is declared. Of two things of one name where a map holds them
    /// the first stays; a WARN on "root.vornxml" names the second.
    VornComponentImplementation(const std::string& name, const VornComponentDeclaration* declaration,
                                const std::vector<VornSubComponent*>& subcomponents,
                                const std::vector<VornDataSubcomponent*>& dataSubcomponents,
                                const std::vector<VornFlow*>& flows, const std::vector<VornConnection*>& connections,
                                const std::vector<VornMode*>& modes, const std::vector<VornTransition*>& transitions,
                                const std::vector<VornTransition*>& reactivationTransitions);

    /// The serial of the next implementation that this thread makes.
    static thread_local unsigned int nextSerial;
    /// Position in the order in which the thread made implementations, from 0.
    unsigned int serial() const noexcept { return mSerial; }
    /// The implementation's own name, without that of the type.
    const std::string& name() const noexcept { return mName; }
    const VornComponentDeclaration* declaration() const noexcept { return mDeclaration; }
    const Subcomponents& subcomponents() const noexcept { return mSubcomponents; }
    const DataSubcomponents& dataSubcomponents() const noexcept { return mDataSubcomponents; }
    const std::vector<std::unique_ptr<VornFlow>>& flows() const noexcept { return mFlows; }
    const std::vector<std::unique_ptr<VornConnection>>& connections() const noexcept { return mConnections; }
    const Modes& modes() const noexcept { return mModes; }
    const std::vector<std::unique_ptr<VornTransition>>& transitions() const noexcept { return mTransitions; }
    const std::vector<std::unique_ptr<VornTransition>>& reactivationTransitions() const noexcept {
        return mReactivationTransitions;
    }
    bool hasActivationMode() const noexcept { return mHasActivationMode; }

    /// Declaration name, ".", own name: the key in the package.
    std::string qualifiedName() const;
    VornComponentCategory category() const { return mDeclaration->category(); }
    /// Borrowed. \throws std::invalid_argument when there is no mode of that name
    const VornMode* findMode(const std::string& name) const;
    /// Borrowed, in name order.
    std::vector<VornMode*> modePointers() const;
    /// What the reference names, borrowed: a data subcomponent before a port of the same name; null for an unknown
    /// subcomponent.
    /// \pre the reference is not null
    /// \throws std::invalid_argument "Unknown feature name " + name
    VornIdentifier* findIdentifier(const VornReference* reference) const;
    void printVorn(std::ostream& stream) const override;

  private:
    unsigned int mSerial;
    std::string mName;
    const VornComponentDeclaration* mDeclaration;
    Subcomponents mSubcomponents;
    DataSubcomponents mDataSubcomponents;
    std::vector<std::unique_ptr<VornFlow>> mFlows;
    std::vector<std::unique_ptr<VornConnection>> mConnections;
    Modes mModes;
    std::vector<std::unique_ptr<VornTransition>> mTransitions;
    std::vector<std::unique_ptr<VornTransition>> mReactivationTransitions;
    bool mHasActivationMode;
};

}  // namespace vornrun

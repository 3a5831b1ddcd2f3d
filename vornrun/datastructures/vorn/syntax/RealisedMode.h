#pragma once
/// \file
/// A mode of one component instance.

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/Realisation.h"
#include "vornrun/datastructures/vorn/syntax/VornMode.h"

namespace vornrun {

class RealisedTrajectoryEquation;

/// A list of modes of one component; an empty list means all its modes.
using ModeList = std::vector<const RealisedMode*>;

class RealisedMode final : public Realisation {
  public:
    /// The id of a placeholder, which a mode literal has before any mode is realised. Real modes never have it.
    static constexpr unsigned int DUMMY_ID = 4294967295u;

    RealisedMode(unsigned int id, std::string name, VornModeType type);
    /// A placeholder: DUMMY_ID or a real id, plain type.
    RealisedMode(unsigned int id, std::string name);
    ~RealisedMode() override;  // the class of the trajectories is incomplete here

    unsigned int id() const noexcept { return mId; }
    const std::string& name() const noexcept { return mName; }
    VornModeType type() const noexcept { return mType; }
    /// Borrowed; null when the mode has none.
    const VornLinearExpression* invariant() const noexcept { return mInvariant.get(); }
    const std::vector<std::unique_ptr<RealisedTrajectoryEquation>>& trajectories() const noexcept {
        return mTrajectories;
    }
    /// Adopts the invariant; null for none.
    void setInvariant(VornLinearExpression* invariant);
    void setTrajectories(std::vector<std::unique_ptr<RealisedTrajectoryEquation>> trajectories);

    /// Position among the modes of its component, set when the modes are attached: the index of its buckets.
    unsigned int index() const noexcept { return mIndex; }
    void setIndex(unsigned int index) noexcept { mIndex = index; }

    /// True without an invariant, else the invariant evaluated now.
    bool invariantHolds() const;
    /// The delays at which the invariant holds; [0, INF_TIME] without one.
    TimeInterval invariantHoldsWhile() const;

    void print(std::ostream& stream) const override;
    void printInvariants(std::ostream& stream) const;

  private:
    unsigned int mId;
    std::string mName;
    VornModeType mType;
    unsigned int mIndex;
    std::unique_ptr<VornLinearExpression> mInvariant;
    std::vector<std::unique_ptr<RealisedTrajectoryEquation>> mTrajectories;
};

// The two questions about a mode list. That an empty one means all modes is known here only.
/// Whether something with this list of modes exists in `mode`.
bool existsIn(const ModeList& modes, const RealisedMode* mode);
/// Calls `f` with each mode in which something with this list of modes exists.
/// \param all the modes of the component
template <class F>
void forEachModeOf(const ModeList& modes, const std::vector<std::unique_ptr<RealisedMode>>& all, F f) {
    for (const RealisedMode* mode : modes) f(mode);
    if (!modes.empty()) return;
    for (const auto& mode : all) f(mode.get());
}

/// Writes nothing for an empty list, otherwise " in modes (" and the names joined by ", " and ")".
std::ostream& operator<<(std::ostream& stream, const ModeList& modes);

}  // namespace vornrun

#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "vornrun/datastructures/vorn/syntax/RealisedAssignment.h"

namespace vornrun {

RealisedMode::RealisedMode(unsigned int id, std::string name, VornModeType type)
    : mId(id), mName(std::move(name)), mType(type), mIndex(0) {}

RealisedMode::RealisedMode(unsigned int id, std::string name)
    : RealisedMode(id, std::move(name), VornModeType::plain) {}

RealisedMode::~RealisedMode() = default;

void RealisedMode::setInvariant(VornLinearExpression* invariant) { mInvariant.reset(invariant); }

void RealisedMode::setTrajectories(std::vector<std::unique_ptr<RealisedTrajectoryEquation>> trajectories) {
    mTrajectories = std::move(trajectories);
}

bool RealisedMode::invariantHolds() const { return mInvariant == nullptr || mInvariant->holds(); }

TimeInterval RealisedMode::invariantHoldsWhile() const {
    return mInvariant == nullptr ? TimeInterval(0.0, TimeInterval::INF_TIME) : mInvariant->holdsWhile();
}

void RealisedMode::print(std::ostream& stream) const {
    stream << mName << ":" << mType << " mode";
    printInvariants(stream);
}

void RealisedMode::printInvariants(std::ostream& stream) const {
    if (mInvariant == nullptr && mTrajectories.empty()) return;
    stream << " while ";
    const char* separator = "";
    if (mInvariant != nullptr) {
        stream << *mInvariant;
        separator = " and ";
    }
    for (const auto& trajectory : mTrajectories) {
        stream << separator << static_cast<const Realisation&>(*trajectory);
        separator = " and ";
    }
}

bool existsIn(const ModeList& modes, const RealisedMode* mode) {
    return modes.empty() || std::find(modes.begin(), modes.end(), mode) != modes.end();
}

std::ostream& operator<<(std::ostream& stream, const ModeList& modes) {
    if (modes.empty()) return stream;
    stream << " in modes (";
    const char* separator = "";
    for (const RealisedMode* mode : modes) {
        stream << separator << mode->name();
        separator = ", ";
    }
    return stream << ")";
}

}  // namespace vornrun

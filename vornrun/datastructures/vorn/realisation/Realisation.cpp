#include "vornrun/datastructures/vorn/realisation/Realisation.h"

#include <utility>

namespace vornrun {

RealisedIdentifier::RealisedIdentifier(unsigned int id, std::string identifier)
    : RealisedIdentifier(id, nullptr, std::move(identifier)) {}

RealisedIdentifier::RealisedIdentifier(unsigned int id, const RealisedIdentifier* parent, std::string identifier)
    : mId(id), mParent(parent), mIdentifier(std::move(identifier)) {}

std::string RealisedIdentifier::fullIdentifier() const {
    return mParent == nullptr ? mIdentifier : mParent->fullIdentifier() + "." + mIdentifier;
}

}  // namespace vornrun

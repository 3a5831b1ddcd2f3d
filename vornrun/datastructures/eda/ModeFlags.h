#pragma once
/// \file
/// A list of modes as flags.

#include <cstddef>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"

namespace vornrun {

/// For each of a component's modes, by RealisedMode::index(), whether the list has it. An empty list means all modes.
/// \param modeCount the number of modes of the component to which those of the list belong
inline std::vector<bool> modeFlags(const ModeList& list, std::size_t modeCount) {
    std::vector<bool> flags(modeCount, list.empty());
    for (const RealisedMode* mode : list) flags.at(mode->index()) = true;
    return flags;
}

}  // namespace vornrun

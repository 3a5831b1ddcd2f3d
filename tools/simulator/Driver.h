#pragma once
/// \file
/// The stages of a run, as main() goes through them.

#include <string>

namespace vornrun {
class VornComponentImplementation;
class VornSpecification;
}  // namespace vornrun

/// The model of the file; the caller owns it. Null after a fault of the file, which is logged.
/// \throws std::invalid_argument for a rate that is not positive or a subcomponent reference that misses
vornrun::VornSpecification* parseModel(const std::string& fileName);

/// The one implementation that no subcomponent instantiates; the specification keeps it. When there is none or more
/// than one, logs what was found and ends the process with exit status 1.
const vornrun::VornComponentImplementation* getRoot(const vornrun::VornSpecification* specification);

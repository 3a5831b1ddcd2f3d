#include "vornrun/algorithms/simulators/SimulationGenerator.h"

namespace vornrun {

SimulationGenerator::~SimulationGenerator() = default;  // out of line: the table of virtual functions stands here

}  // namespace vornrun

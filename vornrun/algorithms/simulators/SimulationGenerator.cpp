#include "vornrun/algorithms/simulators/SimulationGenerator.h"

namespace vornrun {

SimulationGenerator::~SimulationGenerator() =
    default;  // out of line, so that the table of virtual functions is made only here

}  // namespace vornrun

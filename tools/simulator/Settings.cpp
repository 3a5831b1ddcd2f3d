#include "tools/simulator/Settings.h"

#include "vornrun/algorithms/simulators/RunLimits.h"

namespace vornrun {

Settings::Settings()
    : logLevel(-1),
      numTraces(0),
      stepBound(RunLimits{}.stepBound),
      ignoreBoundError(RunLimits{}.ignoreBoundError),
      disallowDeadlock(!RunLimits{}.allowDeadlock),
      confidence(0.95),
      errorBound(0.05),
      seed(0),
      strategy(SimStrategy::asap),
      threads(1) {}

Settings::~Settings() = default;  // out of line, so that the table of virtual functions is made only here

}  // namespace vornrun

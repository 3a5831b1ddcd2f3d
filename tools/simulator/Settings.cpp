#include "tools/simulator/Settings.h"

namespace vornrun {

Settings::Settings()
    : logLevel(-1),
      numTraces(0),
      stepBound(10000),
      ignoreBoundError(false),
      disallowDeadlock(false),
      confidence(0.95),
      errorBound(0.05),
      seed(0),
      strategy(SimStrategy::asap),
      threads(1) {}

Settings::~Settings() = default;  // out of line: the table of virtual functions stands here

}  // namespace vornrun

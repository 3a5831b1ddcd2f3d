#include "vornrun/api/Observer.h"

namespace vornrun {

void Observer::start(std::span<const Value>) {}

void Observer::end(const Record&) {}

}  // namespace vornrun

#include "vornrun/datastructures/eda/GlobalConfigurationSnapshot.h"

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesContainer.h"

namespace vornrun {

GlobalConfigurationSnapshot::GlobalConfigurationSnapshot(const EDAStates& edaStates,
                                                         DynamicValuesContainerPermanent* values)
    : mEdaStates(edaStates), mValues(values) {}

GlobalConfigurationSnapshot::~GlobalConfigurationSnapshot() = default;

}  // namespace vornrun

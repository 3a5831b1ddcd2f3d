#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesContainer.h"

#include <ostream>

namespace vornrun {

const Log DynamicValuesContainer::sLogger("root.val.cont");

DynamicValuesContainer::DynamicValuesContainer(DynamicValues<VornBool>* bools, DynamicValues<VornReal>* reals,
                                               DynamicValues<VornInt>* integers,
                                               DynamicValues<VornContinuous>* continuous,
                                               DynamicValues<VornClock>* clocks, DynamicValues<VornInterval>* intervals,
                                               DynamicValues<VornEnum>* enums, DynamicValues<VornModeVal>* modes)
    : mStores(bools, reals, integers, continuous, clocks, intervals, enums, modes) {}

void DynamicValuesContainer::print(std::ostream& stream) const {
    stream << "VornBools:\n" << dynValues<VornBool>()->str() << std::endl;
    stream << "VornClocks:\n" << dynValues<VornClock>()->str() << std::endl;
    stream << "VornContinuouses:\n" << dynValues<VornContinuous>()->str() << std::endl;
    stream << "VornEnums:\n" << dynValues<VornEnum>()->str() << std::endl;
    stream << "VornInts:\n" << dynValues<VornInt>()->str() << std::endl;
    stream << "VornIntervals:\n" << dynValues<VornInterval>()->str() << std::endl;
    stream << "VornReals:\n" << dynValues<VornReal>()->str() << std::endl;
    stream << "VornModes:\n" << dynValues<VornModeVal>()->str() << std::endl;
}

DynamicValuesContainerPermanent::DynamicValuesContainerPermanent()
    : DynamicValuesContainer(new DynamicValuesPermanent<VornBool>, new DynamicValuesPermanent<VornReal>,
                             new DynamicValuesPermanent<VornInt>, new DynamicValuesPermanent<VornContinuous>,
                             new DynamicValuesPermanent<VornClock>, new DynamicValuesPermanent<VornInterval>,
                             new DynamicValuesPermanent<VornEnum>, new DynamicValuesPermanent<VornModeVal>) {}

void DynamicValuesContainerPermanent::updateWith(DynamicValuesContainer* other) {
#define VORN_UPDATE(T) permanent<T>()->updateWith(*other->dynValues<T>());
    VORN_FOR_EACH_TYPE(VORN_UPDATE)
#undef VORN_UPDATE
}

void DynamicValuesContainerPermanent::copy(const DynamicValuesContainerPermanent& other) {
#define VORN_COPY(T) permanent<T>()->copy(*other.permanent<T>());
    VORN_FOR_EACH_TYPE(VORN_COPY)
#undef VORN_COPY
}

DynamicValuesContainerTemp::DynamicValuesContainerTemp(const DynamicValuesContainer* below)
    : DynamicValuesContainer(new DynamicValuesTemp<VornBool>(below->dynValues<VornBool>()),
                             new DynamicValuesTemp<VornReal>(below->dynValues<VornReal>()),
                             new DynamicValuesTemp<VornInt>(below->dynValues<VornInt>()),
                             new DynamicValuesTemp<VornContinuous>(below->dynValues<VornContinuous>()),
                             new DynamicValuesTemp<VornClock>(below->dynValues<VornClock>()),
                             new DynamicValuesTemp<VornInterval>(below->dynValues<VornInterval>()),
                             new DynamicValuesTemp<VornEnum>(below->dynValues<VornEnum>()),
                             new DynamicValuesTemp<VornModeVal>(below->dynValues<VornModeVal>())),
      mBelow(below) {}

void DynamicValuesContainerTemp::clear() noexcept {
#define VORN_CLEAR(T) static_cast<DynamicValuesTemp<T>*>(store<T>())->clear();
    VORN_FOR_EACH_TYPE(VORN_CLEAR)
#undef VORN_CLEAR
}

void DynamicValuesContainerTemp::print(std::ostream& stream) const {
    stream << "Stacked values: \n";
    DynamicValuesContainer::print(stream);
    stream << "\n";
    mBelow->print(stream);
}

}  // namespace vornrun

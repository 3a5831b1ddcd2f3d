#include "vornrun/datastructures/vorn/syntax/VornDataSubcomponent.h"

#include <ostream>
#include <utility>

namespace vornrun {

VornDataSubcomponent::VornDataSubcomponent(const std::string& name, std::vector<std::string> inModes, bool observable)
    : VornIdentifier(name), mInModes(std::move(inModes)), mObservable(observable) {}

template <class T>
TypedVornDataSubcomponent<T>::TypedVornDataSubcomponent(const std::string& name, TypedVornValue<T>* defaultValue,
                                                        std::vector<std::string> inModes, bool observable)
    : VornDataSubcomponent(name, std::move(inModes), observable), mDefault(defaultValue) {}

template <class T>
void TypedVornDataSubcomponent<T>::printVorn(std::ostream& stream) const {
    stream << name() << ": data " << T::op;
    if (mDefault != nullptr) {
        stream << " default ";
        mDefault->printVorn(stream);
    }
    stream << ";";
}

#define VORN_DEFINE(T) template class TypedVornDataSubcomponent<T>;
VORN_FOR_EACH_TYPE(VORN_DEFINE)
#undef VORN_DEFINE

}  // namespace vornrun

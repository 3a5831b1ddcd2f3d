#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesTemp.h"

#include <algorithm>

namespace vornrun {

template <class T>
auto DynamicValuesTemp<T>::position(ValueRef reference) const noexcept ->
    typename std::vector<Written>::const_iterator {
    return std::lower_bound(mWritten.begin(), mWritten.end(), reference,
                            [](const Written& entry, ValueRef sought) { return entry.reference < sought; });
}

template <class T>
const TypedVornValue<T>& DynamicValuesTemp<T>::getValue(ValueRef reference) const {
    const auto found = position(reference);
    if (found != mWritten.end() && found->reference == reference) return *found->value;
    return mBelow->getValue(reference);
}

template <class T>
void DynamicValuesTemp<T>::setValue(ValueRef reference, const Payload& value) {
    const auto place = position(reference);
    if (place != mWritten.end() && place->reference == reference) return;
    const std::size_t next = mWritten.size();
    if (next == mValues.size()) mValues.emplace_back(T::DefaultValue);
    storePayload(mValues[next], value);
    mWritten.insert(place, Written{reference, &mValues[next]});
}

template <class T>
void DynamicValuesTemp<T>::updateWith(const DynamicValues<T>& other) {
    for (const auto& [reference, value] : other.keyValuePairs()) setValue(reference, value);
}

template <class T>
std::map<ValueRef, TypedVornValue<T>> DynamicValuesTemp<T>::keyValuePairs() const {
    std::map<ValueRef, TypedVornValue<T>> pairs;
    for (const Written& entry : mWritten) pairs.emplace_hint(pairs.end(), entry.reference, *entry.value);
    return pairs;
}

template <class T>
std::string DynamicValuesTemp<T>::str() const {
    return "TODO: Implement string representation of DynamicValuesTemp";
}

#define VORN_INSTANTIATE(T) template class DynamicValuesTemp<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun

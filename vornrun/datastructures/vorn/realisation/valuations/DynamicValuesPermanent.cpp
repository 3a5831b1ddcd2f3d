#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesPermanent.h"

#include <iomanip>
#include <ostream>
#include <sstream>

namespace vornrun {

const Log DynamicValuesLog::sLogger("root.val.dvp");

template <class T>
ValueRef DynamicValuesPermanent<T>::addValue(const RealisedPart* part) {
    return addValue(part, T::DefaultValue);
}

template <class T>
ValueRef DynamicValuesPermanent<T>::addValue(const RealisedPart*, const TypedVornValue<T>& value) {
    mValues.push_back(value);
    return mValues.size();
}

template <class T>
ValueRef DynamicValuesPermanent<T>::addValue(const RealisedPart*, const Payload& value) {
    if constexpr (std::same_as<T, VornModeVal>)
        mValues.emplace_back(TypedVornValue<T>::copyOf(value));
    else
        mValues.emplace_back(value);
    return mValues.size();
}

template <class T>
void DynamicValuesPermanent<T>::updateWith(const DynamicValues<T>& other) {
    for (const auto& [reference, value] : other.keyValuePairs()) setValue(reference, value);
}

template <class T>
std::map<ValueRef, TypedVornValue<T>> DynamicValuesPermanent<T>::keyValuePairs() const {
    std::map<ValueRef, TypedVornValue<T>> pairs;
    for (std::size_t i = 0; i < mValues.size(); ++i) pairs.emplace_hint(pairs.end(), getRef(i), mValues[i]);
    return pairs;
}

template <class T>
std::string DynamicValuesPermanent<T>::str() const {
    if (mValues.empty()) return "  empty";
    std::ostringstream text;
    for (std::size_t i = 0; i < mValues.size(); ++i)
        text << (i == 0 ? "" : "\n") << "  " << getRef(i) << ". " << std::setw(10) << mValues[i];
    return text.str();
}

template <class T>
void DynamicValuesPermanent<T>::logUpdate(ValueRef reference) const {
    VORNRUN_LOG(this->sLogger, Trace, "Permanent container of type " << T::op << ": Updating reference " << reference);
}

#define VORN_INSTANTIATE(T) template class DynamicValuesPermanent<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun

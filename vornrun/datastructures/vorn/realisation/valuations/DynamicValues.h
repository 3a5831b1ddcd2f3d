#pragma once
/// \file
/// The store of all values of one data type, as seen from any level of the stack of layers.

#include <concepts>
#include <map>
#include <string>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/syntax/ValueRef.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

/// The logger that the stores of all data types share.
class DynamicValuesLog {
  protected:
    static const Log sLogger;
};

/// Writes a payload into a value in place. A placeholder mode still belongs to its maker, so the value gets a copy.
template <class T>
void storePayload(TypedVornValue<T>& value, const typename T::AssociatedDataType& payload) {
    if constexpr (std::same_as<T, VornModeVal>)
        value.setValue(TypedVornValue<T>::copyOf(payload));
    else
        value.setValue(payload);
}

/// The values of the type of tag class T, by reference. The permanent store gives out the references; access does not
/// check them.
template <class T>
class DynamicValues : protected DynamicValuesLog {
  public:
    using Payload = typename T::AssociatedDataType;

    DynamicValues() = default;
    DynamicValues(const DynamicValues&) = delete;
    DynamicValues& operator=(const DynamicValues&) = delete;
    virtual ~DynamicValues() = default;

    virtual const TypedVornValue<T>& getValue(ValueRef reference) const = 0;
    /// The raw payload inside the value.
    virtual const Payload& getValueDirect(ValueRef reference) const = 0;
    virtual void setValue(ValueRef reference, const TypedVornValue<T>& value) = 0;
    /// \param value stays the caller's: a placeholder mode is copied, not adopted
    virtual void setValue(ValueRef reference, const Payload& value) = 0;
    /// Writes what the other store itself holds.
    virtual void updateWith(const DynamicValues& other) = 0;
    /// What this store itself holds, without the levels below it.
    virtual std::map<ValueRef, TypedVornValue<T>> keyValuePairs() const = 0;
    /// The textual form, without a newline at its end.
    virtual std::string str() const = 0;
};

}  // namespace vornrun

#pragma once
/// \file
/// A temporary layer over the values of one data type. A value that is written here hides the one below.

#include <deque>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValues.h"

namespace vornrun {

/// Holds only what was written to it. The first write to a reference counts for the life of the layer; later ones are
/// dropped. A cleared layer keeps its storage, so that its next use allocates nothing.
template <class T>
class DynamicValuesTemp final : public DynamicValues<T> {
  public:
    using typename DynamicValues<T>::Payload;

    /// \param below the store one level down, not owned; reads fall through to it
    explicit DynamicValuesTemp(const DynamicValues<T>* below) : mBelow(below) {}

    /// Forgets all writes.
    void clear() noexcept { mWritten.clear(); }

    const TypedVornValue<T>& getValue(ValueRef reference) const override;
    const Payload& getValueDirect(ValueRef reference) const override { return getValue(reference).value(); }
    void setValue(ValueRef reference, const TypedVornValue<T>& value) override { setValue(reference, value.value()); }
    void setValue(ValueRef reference, const Payload& value) override;
    void updateWith(const DynamicValues<T>& other) override;
    std::map<ValueRef, TypedVornValue<T>> keyValuePairs() const override;
    /// A fixed text: layers have no textual form of their own.
    std::string str() const override;

  private:
    struct Written {
        ValueRef reference;
        const TypedVornValue<T>* value;  // in mValues
    };
    /// The first entry whose reference is not less.
    typename std::vector<Written>::const_iterator position(ValueRef reference) const noexcept;

    std::vector<Written> mWritten;  // ascending references
    // The values in order of writing; those beyond the number written are spares of earlier uses. A deque,
    // since it does not move values that readers refer to.
    std::deque<TypedVornValue<T>> mValues;
    const DynamicValues<T>* mBelow;
};

#define VORN_DECLARE(T) extern template class DynamicValuesTemp<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun

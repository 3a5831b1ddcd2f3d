#pragma once
/// \file
/// The bottom of the stack: every value of one data type in a plain vector.

#include <cassert>
#include <cstddef>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValues.h"

namespace vornrun {

class RealisedPart;

template <class T>
class DynamicValuesPermanent final : public DynamicValues<T> {
  public:
    using typename DynamicValues<T>::Payload;

    /// Appends a value and returns its reference. The part is not used at this level. References stay valid, but the
    /// values move.
    ValueRef addValue(const RealisedPart* part);
    ValueRef addValue(const RealisedPart* part, const TypedVornValue<T>& value);
    /// \param value stays the caller's, as with setValue()
    ValueRef addValue(const RealisedPart* part, const Payload& value);

    bool contains(ValueRef reference) const noexcept { return reference != 0 && reference <= mValues.size(); }
    /// The first of all values. They are side by side in memory, in the order of their references.
    TypedVornValue<T>* data() noexcept { return mValues.data(); }
    /// Takes over the values of the other store, however many.
    void copy(const DynamicValuesPermanent& other) { mValues = other.mValues; }

    const TypedVornValue<T>& getValue(ValueRef reference) const override {
        assert(contains(reference));
        return mValues[getIndex(reference)];
    }
    const Payload& getValueDirect(ValueRef reference) const override { return getValue(reference).value(); }
    void setValue(ValueRef reference, const TypedVornValue<T>& value) override { setValue(reference, value.value()); }
    void setValue(ValueRef reference, const Payload& value) override {
        assert(contains(reference));
        if (this->sLogger.isOn(LogLevel::Trace)) logUpdate(reference);
        storePayload(mValues[getIndex(reference)], value);
    }
    void updateWith(const DynamicValues<T>& other) override;
    std::map<ValueRef, TypedVornValue<T>> keyValuePairs() const override;
    /// One line per value: reference and value; "  empty" without any.
    std::string str() const override;

    // The only conversions between positions and references.
    static constexpr ValueRef getRef(std::size_t index) noexcept { return index + 1; }
    static constexpr std::size_t getIndex(ValueRef reference) noexcept { return reference - 1; }

  private:
    void logUpdate(ValueRef reference) const;

    std::vector<TypedVornValue<T>> mValues;
};

#define VORN_DECLARE(T) extern template class DynamicValuesPermanent<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun

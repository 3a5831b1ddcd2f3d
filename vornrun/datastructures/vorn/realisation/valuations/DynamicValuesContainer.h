#pragma once
/// \file
/// One level of the stack for all data types: a store for each of the eight.

#include <iosfwd>
#include <memory>
#include <tuple>

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesPermanent.h"
#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesTemp.h"

namespace vornrun {

class DynamicValuesContainer {
  public:
    /// Adopts the eight stores.
    /// \pre none of them is null
    DynamicValuesContainer(DynamicValues<VornBool>* bools, DynamicValues<VornReal>* reals,
                           DynamicValues<VornInt>* integers, DynamicValues<VornContinuous>* continuous,
                           DynamicValues<VornClock>* clocks, DynamicValues<VornInterval>* intervals,
                           DynamicValues<VornEnum>* enums, DynamicValues<VornModeVal>* modes);
    DynamicValuesContainer(const DynamicValuesContainer&) = delete;
    DynamicValuesContainer& operator=(const DynamicValuesContainer&) = delete;
    virtual ~DynamicValuesContainer() = default;

    /// The stores under their labels, in alphabetical order of these.
    virtual void print(std::ostream& stream) const;

    /// The store of one type, borrowed.
    template <class T>
    const DynamicValues<T>* dynValues() const noexcept {
        return std::get<std::unique_ptr<DynamicValues<T>>>(mStores).get();
    }
    template <class T>
    const TypedVornValue<T>& getValue(ValueRef reference) const {
        return dynValues<T>()->getValue(reference);
    }
    template <class T>
    const typename T::AssociatedDataType& getValueDirect(ValueRef reference) const {
        return dynValues<T>()->getValueDirect(reference);
    }
    template <class T>
    void setValue(ValueRef reference, const TypedVornValue<T>& value) {
        store<T>()->setValue(reference, value);
    }
    template <class T>
    void setValue(ValueRef reference, const typename T::AssociatedDataType& value) {
        store<T>()->setValue(reference, value);
    }

  protected:
    template <class T>
    DynamicValues<T>* store() noexcept {
        return std::get<std::unique_ptr<DynamicValues<T>>>(mStores).get();
    }

  private:
    static const Log sLogger;  // "root.val.cont"

    template <class... T>
    using Stores = std::tuple<std::unique_ptr<DynamicValues<T>>...>;
    Stores<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornInterval, VornEnum, VornModeVal> mStores;
};

/// The permanent values of all types. A snapshot of them is another object of this class.
class DynamicValuesContainerPermanent final : public DynamicValuesContainer {
  public:
    DynamicValuesContainerPermanent();

    /// Appends a value, the type's default where none is given, and returns its reference. The part is not used.
    template <class T>
    ValueRef addValue(const RealisedPart* part) {
        return permanent<T>()->addValue(part);
    }
    template <class T>
    ValueRef addValue(const RealisedPart* part, const TypedVornValue<T>& value) {
        return permanent<T>()->addValue(part, value);
    }
    template <class T>
    ValueRef addValue(const RealisedPart* part, const typename T::AssociatedDataType& value) {
        return permanent<T>()->addValue(part, value);
    }

    /// Writes what the other container itself holds.
    void updateWith(DynamicValuesContainer* other);
    /// Takes over all values of the other container, however many.
    void copy(const DynamicValuesContainerPermanent& other);

    /// The store of one type by its own class, so that access needs no virtual call.
    template <class T>
    DynamicValuesPermanent<T>* permanent() noexcept {
        return static_cast<DynamicValuesPermanent<T>*>(store<T>());
    }
    template <class T>
    const DynamicValuesPermanent<T>* permanent() const noexcept {
        return static_cast<const DynamicValuesPermanent<T>*>(dynValues<T>());
    }
};

/// A temporary layer of all types.
class DynamicValuesContainerTemp final : public DynamicValuesContainer {
  public:
    /// \param below the level under this one, not owned
    explicit DynamicValuesContainerTemp(const DynamicValuesContainer* below);

    /// Forgets all writes; keeps the storage.
    void clear() noexcept;
    /// "Stacked values: ", the stores of this layer, then the level below.
    void print(std::ostream& stream) const override;

  private:
    const DynamicValuesContainer* mBelow;
};

}  // namespace vornrun

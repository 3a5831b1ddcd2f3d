#pragma once
/// \file
/// The one store of all run-time values of a model. It has a permanent value for every slot, and over them a stack of
/// temporary layers for "what if" questions. A read searches from the top down, a write changes the top. One thread
/// uses a store.

#include <cassert>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <tuple>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesContainer.h"

namespace vornrun {

class RealisedVariable;
class VornComponentRealisation;

class GlobalValuation {
  public:
    GlobalValuation();
    GlobalValuation(const GlobalValuation&) = delete;
    GlobalValuation& operator=(const GlobalValuation&) = delete;
    virtual ~GlobalValuation() = default;

    /// Puts a new, empty layer on the stack, which gets all writes from now on. Allocates nothing if the stack has been
    /// as high before.
    void pushTemporaryValuation();
    /// Drops the top layer and all that was written to it. Prefer ScopedLayer, which pairs both.
    /// \throws std::logic_error when there is no layer
    void popTemporaryValuation();

    /// A copy of the permanent values, whatever is stacked above them; the caller owns it.
    DynamicValuesContainerPermanent* copyValues() const;
    /// Overwrites the permanent values with a copy, which stays the caller's. Afterwards there are as many values as
    /// the copy has. Values in layers still hide the permanent ones. \pre the copy is not null
    void revertTo(const DynamicValuesContainerPermanent* values);

    // New slots. All forms grow the permanent values, whatever is stacked above them, and return the new reference.
    // References stay valid for the life of the store.
    /// The default of the part's type, or the given value. 0 when the part's type is none of the eight.
    ValueRef addValue(const RealisedPart* part);
    /// \throws std::invalid_argument when the value is null or not of the part's type
    ValueRef addValue(const RealisedPart* part, const VornValue* value);
    template <class T>
    ValueRef addValue(const RealisedPart* part) {
        return added<T>(mPermanent.addValue<T>(part));
    }
    template <class T>
    ValueRef addValue(const RealisedPart* part, const TypedVornValue<T>& value) {
        return added<T>(mPermanent.addValue<T>(part, value));
    }
    template <class T>
    ValueRef addValue(const RealisedPart* part, const typename T::AssociatedDataType& value) {
        return added<T>(mPermanent.addValue<T>(part, value));
    }
    /// Whether there is such a slot. Typed access does not check this.
    bool contains(VornDataTypeTag tag, ValueRef reference) const;

    // Typed access, the step path. Without a layer a read is an indexed access; each layer adds a search among what was
    // written to it. What is returned is valid until a slot is added, the value is written or its layer is popped.
    // Precondition of all of them: the slot exists.
    template <class T>
    const TypedVornValue<T>& getValue(ValueRef reference) const {
        if (mDepth == 0) [[likely]]
            return permanentValue<T>(reference);
        return mTop->getValue<T>(reference);
    }
    template <class T>
    const typename T::AssociatedDataType& getValueDirect(ValueRef reference) const {
        if (mDepth == 0) [[likely]]
            return permanentValue<T>(reference).value();
        return mTop->getValueDirect<T>(reference);
    }
    /// In a layer, the first write to a reference counts and later ones are dropped.
    template <class T>
    void setValue(ValueRef reference, const TypedVornValue<T>& value) {
        setValue<T>(reference, value.value());
    }
    /// \param value stays the caller's: a placeholder mode is copied, not adopted
    template <class T>
    void setValue(ValueRef reference, const typename T::AssociatedDataType& value) {
        if (mDepth == 0) [[likely]]
            mPermanent.permanent<T>()->setValue(reference, value);
        else
            mTop->setValue<T>(reference, value);
    }

    // Access by run-time type. Borrowed, with the validity of typed access; null for a tag beyond the eight.
    const VornValue* getValue(VornDataTypeTag tag, ValueRef reference) const;
    const VornValue* findValue(TypedValueRef slot) const;
    /// \throws model_exception when the variable lacks its slot
    const VornValue* findValue(const RealisedVariable* variable) const;
    /// \throws std::out_of_range when the part has no slot in the realisation
    const VornValue* findValue(const VornComponentRealisation* realisation, const RealisedPart* part) const;
    // The value stays the caller's. Nothing happens for a tag beyond the eight.
    /// \throws std::invalid_argument when the value is null or not of the slot's type
    void setValue(VornDataTypeTag tag, ValueRef reference, const VornValue* value);
    void setValue(TypedValueRef slot, const VornValue* value);
    /// \throws model_exception when the variable lacks its slot
    void setValue(const RealisedVariable* variable, const VornValue* value);
    /// \throws std::out_of_range when the part has no slot in the realisation
    void setValue(const VornComponentRealisation* realisation, const RealisedPart* part, const VornValue* value);

    /// The permanent values; of a stack with layers only its depth and the address of the top.
    void print(std::ostream& stream) const;

  private:
    static const Log sLogger;

    template <class T>
    const TypedVornValue<T>& permanentValue(ValueRef reference) const {
        assert(mPermanent.permanent<T>()->contains(reference));
        return std::get<TypedVornValue<T>*>(mValues)[DynamicValuesPermanent<T>::getIndex(reference)];
    }
    ValueRef addValueOfType(VornDataTypeTag tag, const RealisedPart* part, const VornValue* value);
    template <class T>
    ValueRef added(ValueRef reference) {
        std::get<TypedVornValue<T>*>(mValues) = mPermanent.permanent<T>()->data();
        return reference;
    }

    template <class... T>
    using Values = std::tuple<TypedVornValue<T>*...>;
    /// The addresses of the permanent values of each type, which save the step path two pointers. Renewed by what may
    /// move the values: addValue() and revertTo().
    Values<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal> mValues;
    std::size_t mDepth = 0;  // the number of layers on the stack
    DynamicValuesContainer* mTop;
    DynamicValuesContainerPermanent mPermanent;
    /// Layers from the lowest up, each over the one before it; those from mDepth on wait for the next push.
    std::vector<std::unique_ptr<DynamicValuesContainerTemp>> mLayers;
};

std::ostream& operator<<(std::ostream& stream, const GlobalValuation& valuation);

/// A temporary layer for the life of the guard, popped on every way out, an exception included.
class ScopedLayer {
  public:
    explicit ScopedLayer(GlobalValuation& valuation) : mValuation(valuation) { mValuation.pushTemporaryValuation(); }
    ScopedLayer(const ScopedLayer&) = delete;
    ScopedLayer& operator=(const ScopedLayer&) = delete;
    ~ScopedLayer() { mValuation.popTemporaryValuation(); }

  private:
    GlobalValuation& mValuation;
};

}  // namespace vornrun

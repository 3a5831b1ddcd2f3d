#pragma once
/// \file
/// Data subcomponents: the variables of a component.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"
#include "vornrun/datastructures/vorn/syntax/VornIdentifier.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

class VornDataSubcomponent : public Vorn, public VornIdentifier {
  public:
    /// \param inModes names of the modes in which the variable exists; empty means all
    VornDataSubcomponent(const std::string& name, std::vector<std::string> inModes, bool observable);
    const std::vector<std::string>& inModes() const noexcept { return mInModes; }
    bool observable() const noexcept { return mObservable; }

    /// Borrowed; null when the declaration has none.
    virtual const VornValue* defaultValue() const = 0;
    virtual bool isClock() const = 0;
    virtual VornDataTypeTag type() const = 0;

  private:
    std::vector<std::string> mInModes;
    bool mObservable;
};

template <class T>
class TypedVornDataSubcomponent final : public VornDataSubcomponent {
  public:
    /// Adopts the default, which may be null.
    TypedVornDataSubcomponent(const std::string& name, TypedVornValue<T>* defaultValue,
                              std::vector<std::string> inModes, bool observable);
    const TypedVornValue<T>* defaultValue() const override { return mDefault.get(); }
    bool isClock() const override { return T::tag == VornDataTypeTag::VornClock; }
    VornDataTypeTag type() const override { return T::tag; }
    void printVorn(std::ostream& stream) const override;

  private:
    std::unique_ptr<TypedVornValue<T>> mDefault;
};

#define VORN_DECLARE(T) extern template class TypedVornDataSubcomponent<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun

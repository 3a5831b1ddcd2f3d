#pragma once
/// \file
/// Constants: the leaves of expression trees that hold a value.

#include <memory>

#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

/// A constant of any type.
class VornValue : public virtual VornExpressionTree {
  public:
    VornValue* clone() const override = 0;
    VornValue* clone(const std::list<VornExpressionTree*>& children) const override = 0;
    /// The same value in another type, by Converter; null for a tag beyond the eight. The caller owns the result.
    /// \throws std::invalid_argument when the types do not convert
    virtual VornValue* convertToType(VornDataTypeTag tag) const = 0;
};

/// A constant of the type of tag class T.
template <class T>
class TypedVornValue final : public TypedVornExpressionTree<T>, public VornValue {
  public:
    explicit TypedVornValue(const typename T::AssociatedDataType& value) : mValue(value) {}
    // Copied only: moving would assign the shared virtual root twice.
    TypedVornValue(const TypedVornValue&) = default;
    TypedVornValue& operator=(const TypedVornValue&) = default;

    const typename T::AssociatedDataType& value() const noexcept { return mValue; }
    /// Replaces the constant in place, for stores of values; the same as assigning a new TypedVornValue.
    void setValue(const typename T::AssociatedDataType& value) { mValue = value; }

    typename T::AssociatedDataType evaluateDirect() const override { return mValue; }
    TypedVornValue* clone() const override { return new TypedVornValue(*this); }
    TypedVornValue* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;
    VornValue* convertToType(VornDataTypeTag tag) const override;

  private:
    typename T::AssociatedDataType mValue;
};

/// A mode as a value. Before a model is realised, a mode literal is built around a placeholder RealisedMode with the
/// identifier RealisedMode::DUMMY_ID, which has only a name. The value owns a placeholder, and never a real mode. A
/// copy of the value has a placeholder of its own, but shares a real mode.
template <>
class TypedVornValue<VornModeVal> final : public TypedVornExpressionTree<VornModeVal>, public VornValue {
  public:
    /// Adopts a placeholder; a real mode or null stays not owned.
    explicit TypedVornValue(const RealisedMode* const& mode);
    TypedVornValue(const TypedVornValue& other);
    TypedVornValue& operator=(const TypedVornValue& other);
    ~TypedVornValue() override;  // deletes a placeholder; the class of the mode is incomplete here

    const RealisedMode* const& value() const noexcept { return mValue; }
    /// Replaces the mode in place, as assigning a new value built from `mode` would: a placeholder is adopted.
    void setValue(const RealisedMode* const& mode);
    /// True when this value owns the placeholder that it points at.
    bool owned() const noexcept { return mOwned; }
    /// What a copy of a value points at: a new placeholder for a placeholder, otherwise the same mode, null included.
    static const RealisedMode* copyOf(const RealisedMode* mode);

    const RealisedMode* evaluateDirect() const override { return mValue; }
    TypedVornValue* clone() const override { return new TypedVornValue(*this); }
    TypedVornValue* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;
    /// To mode: the result adopts the same pointer. A placeholder then has two owners, of which the caller must not
    /// destroy both.
    VornValue* convertToType(VornDataTypeTag tag) const override;

  private:
    const RealisedMode* mValue;
    bool mOwned;
};

#define VORN_DECLARE(T) extern template class TypedVornValue<T>;
VORN_DECLARE(VornBool)
VORN_DECLARE(VornReal)
VORN_DECLARE(VornInt)
VORN_DECLARE(VornContinuous)
VORN_DECLARE(VornClock)
VORN_DECLARE(VornEnum)
VORN_DECLARE(VornInterval)
#undef VORN_DECLARE

}  // namespace vornrun

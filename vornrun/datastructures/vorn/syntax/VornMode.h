#pragma once
/// \file
/// Modes of a component and the trajectories that hold in them.

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {

enum class VornModeType : unsigned int { plain = 0, initial = 1, activation = 2, error = 3 };
/// Writes nothing, " initial", " activation" or " error".
std::ostream& operator<<(std::ostream& stream, VornModeType type);

/// In its mode, a continuous variable changes at a constant rate.
class VornTrajectoryEquation : public Vorn {
  public:
    /// Borrowed; null when the left side is no continuous variable.
    virtual const TypedVornVariable<VornContinuous>* variable() const = 0;
    /// The rate per unit of model time, borrowed; null when the right side is no constant.
    virtual const VornValue* rhs() const = 0;
    virtual VornDataTypeTag type() const = 0;
};

template <class T>
class TypedVornTrajectoryEquation final : public VornTrajectoryEquation {
  public:
    /// Adopts both; either may be null.
    TypedVornTrajectoryEquation(TypedVornVariable<VornContinuous>* variable, TypedVornValue<T>* rhs);
    const TypedVornVariable<VornContinuous>* variable() const override { return mVariable.get(); }
    const TypedVornValue<T>* rhs() const override { return mRhs.get(); }
    VornDataTypeTag type() const override { return T::tag; }
    void printVorn(std::ostream& stream) const override;

  private:
    std::unique_ptr<TypedVornVariable<VornContinuous>> mVariable;
    std::unique_ptr<TypedVornValue<T>> mRhs;
};

#define VORN_DECLARE(T) extern template class TypedVornTrajectoryEquation<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

class VornMode final : public Vorn {
  public:
    /// Adopts the invariant, which may be null, and the trajectories.
    VornMode(unsigned int id, const std::string& name, VornLinearExpression* invariant,
             const std::vector<VornTrajectoryEquation*>& trajectories, VornModeType type);

    unsigned int id() const noexcept { return mId; }
    const std::string& name() const noexcept { return mName; }
    const VornLinearExpression* invariant() const noexcept { return mInvariant.get(); }
    const std::vector<std::unique_ptr<VornTrajectoryEquation>>& trajectories() const noexcept { return mTrajectories; }
    VornModeType type() const noexcept { return mType; }
    void printVorn(std::ostream& stream) const override;

  private:
    unsigned int mId;
    std::string mName;
    std::unique_ptr<VornLinearExpression> mInvariant;
    std::vector<std::unique_ptr<VornTrajectoryEquation>> mTrajectories;
    VornModeType mType;
};

}  // namespace vornrun

#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

#include <ostream>

#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Converter.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"

namespace vornrun {

namespace {

/// A new value of the tag's type; null for a tag beyond the eight.
template <class From>
VornValue* converted(const typename From::AssociatedDataType& value, VornDataTypeTag tag) {
    return withTagClass(tag, [&value]<class To>() -> VornValue* {
        return new TypedVornValue<To>(Converter<From, To>::convert(value));
    });
}

bool isPlaceholder(const RealisedMode* mode) { return mode != nullptr && mode->id() == RealisedMode::DUMMY_ID; }

}  // namespace

template <class T>
VornExpressionTree* TypedVornValue<T>::accept(ExpressionTreeVisitor* visitor) const {
    return visitor->visit(static_cast<const VornValue*>(this));
}

template <class T>
void TypedVornValue<T>::printExpression(std::ostream& stream) const {
    // A bool is a number even on a stream that writes bools as words.
    if constexpr (std::same_as<T, VornBool>) {
        stream << (mValue ? '1' : '0');
    } else {
        stream << mValue;
    }
}

template <class T>
VornValue* TypedVornValue<T>::convertToType(VornDataTypeTag tag) const {
    return converted<T>(mValue, tag);
}

template class TypedVornValue<VornBool>;
template class TypedVornValue<VornReal>;
template class TypedVornValue<VornInt>;
template class TypedVornValue<VornContinuous>;
template class TypedVornValue<VornClock>;
template class TypedVornValue<VornEnum>;
template class TypedVornValue<VornInterval>;

TypedVornValue<VornModeVal>::TypedVornValue(const RealisedMode* const& mode)
    : mValue(mode), mOwned(isPlaceholder(mode)) {}

TypedVornValue<VornModeVal>::TypedVornValue(const TypedVornValue& other)
    : VornExpressionTree(other),
      TypedVornExpressionTree<VornModeVal>(other),
      VornValue(other),
      mValue(copyOf(other.mValue)),
      mOwned(isPlaceholder(mValue)) {}

TypedVornValue<VornModeVal>& TypedVornValue<VornModeVal>::operator=(const TypedVornValue& other) {
    if (this != &other) setValue(copyOf(other.mValue));
    return *this;
}

TypedVornValue<VornModeVal>::~TypedVornValue() {
    if (mOwned) delete mValue;
}

const RealisedMode* TypedVornValue<VornModeVal>::copyOf(const RealisedMode* mode) {
    return isPlaceholder(mode) ? new RealisedMode(mode->id(), mode->name()) : mode;
}

void TypedVornValue<VornModeVal>::setValue(const RealisedMode* const& mode) {
    // The reference may be to our own field, and the mode may be the one that we hold.
    const RealisedMode* const adopted = mode;
    if (mOwned && mValue != adopted) delete mValue;
    mValue = adopted;
    mOwned = isPlaceholder(adopted);
}

VornExpressionTree* TypedVornValue<VornModeVal>::accept(ExpressionTreeVisitor* visitor) const {
    return visitor->visit(static_cast<const VornValue*>(this));
}

void TypedVornValue<VornModeVal>::printExpression(std::ostream& stream) const {
    if (mValue == nullptr) {
        stream << "(null)";
    } else {
        stream << mValue->name();
    }
}

VornValue* TypedVornValue<VornModeVal>::convertToType(VornDataTypeTag tag) const {
    return converted<VornModeVal>(mValue, tag);
}

}  // namespace vornrun

#include "vornrun/datastructures/vorn/realisation/MistypedVariable.h"

#include <ostream>
#include <sstream>
#include <utility>

#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {

template <class T>
MistypedVariable<T>::MistypedVariable(ValuationPtr valuation, ValueRef reference, const RealisedIdentifier* part,
                                      std::string component, std::string name)
    : TypedRealisedVariable<T>(std::move(valuation), reference, part),
      mComponent(std::move(component)),
      mName(std::move(name)) {}

template <class T>
bool MistypedVariable<T>::hasSlot() const {
    return this->valuation().contains(T::tag, this->reference());
}

template <class T>
void MistypedVariable<T>::requireSlot() const {
    if (hasSlot()) return;
    std::ostringstream text;
    text << "Component " << mComponent << ": variable \"" << mName << "\" is used as " << T::tag
         << ", which is not the type that it was declared with";
    throw model_exception(text.str());
}

template <class T>
typename T::AssociatedDataType MistypedVariable<T>::evaluateDirect() const {
    requireSlot();
    return TypedRealisedVariable<T>::evaluateDirect();
}

template <class T>
void MistypedVariable<T>::printExpression(std::ostream& stream) const {
    if (hasSlot())
        TypedRealisedVariable<T>::printExpression(stream);
    else
        stream << this->part()->identifier() << "{=(null):" << T::op << "}";
}

#define VORN_INSTANTIATE(T) template class MistypedVariable<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun

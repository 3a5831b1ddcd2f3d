// The forms of access that take parts of the realised model. They are in this layer, so that the store itself does not
// depend on the model.
#include "vornrun/datastructures/vorn/realisation/RealisedPart.h"
#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {

ValueRef GlobalValuation::addValue(const RealisedPart* part) {
    return withTagClass(part->type(), [&]<class T>() { return addValue<T>(part); });
}

ValueRef GlobalValuation::addValue(const RealisedPart* part, const VornValue* value) {
    return addValueOfType(part->type(), part, value);
}

const VornValue* GlobalValuation::findValue(const RealisedVariable* variable) const {
    variable->requireSlot();
    return getValue(variable->type(), variable->reference());
}

const VornValue* GlobalValuation::findValue(const VornComponentRealisation* realisation,
                                            const RealisedPart* part) const {
    const ValueRef reference = realisation->valueRef(part);
    return getValue(part->type(), reference);
}

void GlobalValuation::setValue(const RealisedVariable* variable, const VornValue* value) {
    variable->requireSlot();
    setValue(variable->type(), variable->reference(), value);
}

void GlobalValuation::setValue(const VornComponentRealisation* realisation, const RealisedPart* part,
                               const VornValue* value) {
    const ValueRef reference = realisation->valueRef(part);
    setValue(part->type(), reference, value);
}

}  // namespace vornrun

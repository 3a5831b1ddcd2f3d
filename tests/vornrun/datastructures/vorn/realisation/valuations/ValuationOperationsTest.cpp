// A call of each public operation of the stores of values, with its arguments and its result. The build is the test: a
// call that does not compile, or that has another result, breaks it.

#include <concepts>
#include <map>
#include <ostream>
#include <string>
#include <utility>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {
namespace {

using std::same_as;
using Slot = std::pair<VornDataTypeTag, ValueRef>;
using Value = TypedVornValue<VornInt>;

static_assert(same_as<ValueRef, unsigned long>);

static_assert(requires(DynamicValues<VornInt> & store, const DynamicValues<VornInt>& constStore, ValueRef slot,
                       const Value& value, long payload) {
    { constStore.getValue(slot) } -> same_as<const Value&>;
    { constStore.getValueDirect(slot) } -> same_as<const long&>;
    store.setValue(slot, value);
    store.setValue(slot, payload);
    store.updateWith(constStore);
    { constStore.keyValuePairs() } -> same_as<std::map<ValueRef, Value>>;
    { constStore.str() } -> same_as<std::string>;
    DynamicValuesTemp<VornInt>(&constStore);
});
static_assert(DynamicValuesPermanent<VornInt>::getRef(0) == 1 && DynamicValuesPermanent<VornInt>::getIndex(1) == 0);

static_assert(requires(DynamicValuesContainer & container, const DynamicValuesContainer& constContainer,
                       DynamicValues<VornBool>* bools, DynamicValues<VornReal>* reals, DynamicValues<VornInt>* integers,
                       DynamicValues<VornContinuous>* continuous, DynamicValues<VornClock>* clocks,
                       DynamicValues<VornInterval>* intervals, DynamicValues<VornEnum>* enums,
                       DynamicValues<VornModeVal>* modes, ValueRef slot, const Value& value, std::ostream& stream) {
    DynamicValuesContainer(bools, reals, integers, continuous, clocks, intervals, enums, modes);
    { constContainer.getValue<VornInt>(slot) } -> same_as<const Value&>;
    { constContainer.getValueDirect<VornInt>(slot) } -> same_as<const long&>;
    container.setValue<VornInt>(slot, value);
    container.setValue<VornInt>(slot, 1L);
    { constContainer.dynValues<VornInt>() } -> same_as<const DynamicValues<VornInt>*>;
    constContainer.print(stream);
    DynamicValuesContainerTemp(&constContainer);
});

static_assert(requires(DynamicValuesContainerPermanent & container, const DynamicValuesContainerPermanent& other,
                       DynamicValuesContainer* any, const RealisedPart* part, const Value& value) {
    { container.addValue<VornInt>(part) } -> same_as<ValueRef>;
    { container.addValue<VornInt>(part, value) } -> same_as<ValueRef>;
    { container.addValue<VornInt>(part, 1L) } -> same_as<ValueRef>;
    container.updateWith(any);
    container.copy(other);
});

static_assert(requires(GlobalValuation & valuation, const DynamicValuesContainerPermanent* copy,
                       const RealisedPart* part, const VornValue* any, const Value& value, ValueRef slot,
                       std::ostream& stream) {
    GlobalValuation();
    valuation.pushTemporaryValuation();
    valuation.popTemporaryValuation();
    { valuation.copyValues() } -> same_as<DynamicValuesContainerPermanent*>;
    valuation.revertTo(copy);
    { valuation.addValue(part) } -> same_as<ValueRef>;
    { valuation.addValue(part, any) } -> same_as<ValueRef>;
    { valuation.addValue<VornInt>(part) } -> same_as<ValueRef>;
    { valuation.addValue<VornInt>(part, value) } -> same_as<ValueRef>;
    { valuation.addValue<VornInt>(part, 1L) } -> same_as<ValueRef>;
    valuation.setValue<VornInt>(slot, value);
    valuation.setValue<VornInt>(slot, 1L);
    valuation.print(stream);
    { stream << valuation } -> same_as<std::ostream&>;
});

static_assert(requires(GlobalValuation & valuation, const GlobalValuation& constValuation, VornDataTypeTag tag,
                       ValueRef slot, Slot pair, const RealisedVariable* variable,
                       const VornComponentRealisation* component, const RealisedPart* part, const VornValue* value) {
    { constValuation.getValue<VornInt>(slot) } -> same_as<const Value&>;
    { constValuation.getValueDirect<VornInt>(slot) } -> same_as<const long&>;
    { constValuation.getValue(tag, slot) } -> same_as<const VornValue*>;
    { constValuation.findValue(pair) } -> same_as<const VornValue*>;
    { constValuation.findValue(variable) } -> same_as<const VornValue*>;
    { constValuation.findValue(component, part) } -> same_as<const VornValue*>;
    valuation.setValue(variable, value);
    valuation.setValue(component, part, value);
    valuation.setValue(pair, value);
    valuation.setValue(tag, slot, value);
});

}  // namespace
}  // namespace vornrun::test

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

#include <cassert>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace vornrun {

const Log GlobalValuation::sLogger("root.val");

namespace {

/// The value in its own class.
template <class T>
const TypedVornValue<T>& typed(const VornValue* value) {
    const auto* const result = dynamic_cast<const TypedVornValue<T>*>(value);
    if (result != nullptr) return *result;
    std::ostringstream text;
    text << "A slot of type " << T::op << " cannot hold ";
    if (value == nullptr)
        text << "a missing value";
    else
        text << "a value of type " << value->type();
    throw std::invalid_argument(text.str());
}

}  // namespace

GlobalValuation::GlobalValuation() : mTop(&mPermanent) {}

void GlobalValuation::pushTemporaryValuation() {
    if (mDepth == mLayers.size()) mLayers.push_back(std::make_unique<DynamicValuesContainerTemp>(mTop));
    mLayers[mDepth]->clear();
    mTop = mLayers[mDepth].get();
    ++mDepth;
}

void GlobalValuation::popTemporaryValuation() {
    if (mDepth == 0) throw std::logic_error("There is no temporary layer of values to pop");
    --mDepth;
    if (mDepth > 0)
        mTop = mLayers[mDepth - 1].get();
    else
        mTop = &mPermanent;
}

DynamicValuesContainerPermanent* GlobalValuation::copyValues() const {
    auto copy = std::make_unique<DynamicValuesContainerPermanent>();
    copy->copy(mPermanent);
    return copy.release();
}

void GlobalValuation::revertTo(const DynamicValuesContainerPermanent* values) {
    assert(values != nullptr);
    mPermanent.copy(*values);
#define VORN_RENEW(T) std::get<TypedVornValue<T>*>(mValues) = mPermanent.permanent<T>()->data();
    VORN_FOR_EACH_TYPE(VORN_RENEW)
#undef VORN_RENEW
}

ValueRef GlobalValuation::addValueOfType(VornDataTypeTag tag, const RealisedPart* part, const VornValue* value) {
    return withTagClass(tag, [&]<class T>() { return addValue<T>(part, typed<T>(value)); });
}

bool GlobalValuation::contains(VornDataTypeTag tag, ValueRef reference) const {
    return withTagClass(tag, [&]<class T>() { return mPermanent.permanent<T>()->contains(reference); });
}

const VornValue* GlobalValuation::getValue(VornDataTypeTag tag, ValueRef reference) const {
    VORNRUN_LOG(sLogger, Trace, "Looking up value of " << tag << " " << reference);
    return withTagClass(tag, [&]<class T>() -> const VornValue* { return &getValue<T>(reference); });
}

const VornValue* GlobalValuation::findValue(TypedValueRef slot) const { return getValue(slot.first, slot.second); }

void GlobalValuation::setValue(VornDataTypeTag tag, ValueRef reference, const VornValue* value) {
    withTagClass(tag, [&]<class T>() { setValue<T>(reference, typed<T>(value)); });
}

void GlobalValuation::setValue(TypedValueRef slot, const VornValue* value) { setValue(slot.first, slot.second, value); }

void GlobalValuation::print(std::ostream& stream) const {
    if (mDepth == 0) {
        stream << "Permanent valuation:\n";
        mPermanent.print(stream);
    } else {
        stream << "Global valuation of depth: " << mDepth + 1 << "\n"
               << "Global valuation stacked values: \n"
               << static_cast<const void*>(mTop);
    }
}

std::ostream& operator<<(std::ostream& stream, const GlobalValuation& valuation) {
    valuation.print(stream);
    return stream;
}

}  // namespace vornrun

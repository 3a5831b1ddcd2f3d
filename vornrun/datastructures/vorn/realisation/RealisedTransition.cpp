#include "vornrun/datastructures/vorn/realisation/RealisedTransition.h"

#include <algorithm>
#include <cassert>
#include <ostream>
#include <sstream>

#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"

namespace vornrun {

namespace {

RealisedTransition::Effects owned(const std::vector<RealisedAssignment*>& effects) {
    return RealisedTransition::Effects(effects.begin(), effects.end());
}

bool evolvesWithTime(VornDataTypeTag type) {
    return type == VornDataTypeTag::VornClock || type == VornDataTypeTag::VornContinuous;
}

}  // namespace

RealisedTransition::RealisedTransition(unsigned int id, const VornComponentRealisation* component,
                                       const VornTransition* declaration, const RealisedMode* source,
                                       const RealisedMode* target, const RealisedEventPort* trigger,
                                       VornLinearExpression* guard, Effects effects)
    : mId(id),
      mSource(source),
      mTarget(target),
      mTrigger(trigger),
      mGuard(guard),
      mEffects(std::move(effects)),
      mComponent(component),
      mTransition(declaration),
      mTouchesContinuous(false),
      mDirectCommunication(trigger->parent() != component) {
    assert(component != nullptr && declaration != nullptr && source != nullptr && target != nullptr);
    for (const auto& effect : mEffects) {
        if (effect == nullptr) {
            std::ostringstream text;
            text << "Component " << component->fullIdentifier() << ": an effect of transition \"" << *declaration
                 << "\" has no value of a type that its target can take";
            throw model_exception(text.str());
        }
    }
    mTouchesContinuous = std::any_of(mEffects.begin(), mEffects.end(),
                                     [](const auto& effect) { return evolvesWithTime(effect->target()->type()); });
}

RealisedTransition::RealisedTransition(unsigned int id, const VornComponentRealisation* component,
                                       const VornTransition* declaration, const RealisedMode* source,
                                       const RealisedMode* target, const RealisedEventPort* trigger,
                                       VornLinearExpression* guard, const std::vector<RealisedAssignment*>& effects)
    : RealisedTransition(id, component, declaration, source, target, trigger, guard, owned(effects)) {}

TimeInterval RealisedTransition::guardHoldsWhile() const {
    return mGuard == nullptr ? TimeInterval(0.0, TimeInterval::INF_TIME) : mGuard->holdsWhile();
}

void RealisedTransition::print(std::ostream& stream) const {
    stream << "(" << mSource->name() << ")-[";
    mTrigger->print(stream);
    if (mGuard != nullptr) stream << " when " << *mGuard;
    const char* separator = " then ";
    for (const auto& effect : mEffects) {
        stream << separator;
        effect->print(stream);
        separator = "; ";
    }
    stream << "]->" << mTarget->id() << " (" << mTarget->name() << ")";
}

}  // namespace vornrun

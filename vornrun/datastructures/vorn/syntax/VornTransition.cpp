#include "vornrun/datastructures/vorn/syntax/VornTransition.h"

#include <ostream>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

VornTransitionTrigger* VornTransitionTrigger::ResetTrigger() { return new VornTransitionTrigger("reset"); }

VornTransition::VornTransition(unsigned int id, const std::string& source, const std::string& target,
                               VornTransitionTrigger* trigger, VornLinearExpression* guard,
                               const std::vector<VornAssignment*>& effects)
    : mId(id), mSource(source), mTarget(target), mTrigger(trigger), mGuard(guard), mEffects(adoptAll(effects)) {}

bool VornTransition::hasTrigger(const std::string& name) const {
    return mTrigger != nullptr && mTrigger->name() == name;
}

void VornTransition::printVorn(std::ostream& stream) const {
    stream << mSource << "-[ ";
    if (mTrigger != nullptr) stream << *mTrigger << " ";
    if (mGuard != nullptr) {
        stream << " when ";
        mGuard->printVorn(stream);
    }
    const char* delimiter = " then ";
    for (const auto& effect : mEffects) {
        stream << delimiter;
        effect->printVorn(stream);
        delimiter = "; ";
    }
    stream << "]->" << mTarget << "; -- " << mId;
}

}  // namespace vornrun

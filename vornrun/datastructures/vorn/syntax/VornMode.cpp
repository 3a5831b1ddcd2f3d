#include "vornrun/datastructures/vorn/syntax/VornMode.h"

#include <ostream>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, VornModeType type) {
    switch (type) {
        case VornModeType::plain:
            return stream;
        case VornModeType::initial:
            return stream << " initial";
        case VornModeType::activation:
            return stream << " activation";
        case VornModeType::error:
            return stream << " error";
    }
    return stream;
}

template <class T>
TypedVornTrajectoryEquation<T>::TypedVornTrajectoryEquation(TypedVornVariable<VornContinuous>* variable,
                                                            TypedVornValue<T>* rhs)
    : mVariable(variable), mRhs(rhs) {}

template <class T>
void TypedVornTrajectoryEquation<T>::printVorn(std::ostream& stream) const {
    syntax::printOrNull(stream, mVariable.get());
    stream << "' = ";
    syntax::printOrNull(stream, mRhs.get());
}

#define VORN_DEFINE(T) template class TypedVornTrajectoryEquation<T>;
VORN_FOR_EACH_TYPE(VORN_DEFINE)
#undef VORN_DEFINE

VornMode::VornMode(unsigned int id, const std::string& name, VornLinearExpression* invariant,
                   const std::vector<VornTrajectoryEquation*>& trajectories, VornModeType type)
    : mId(id), mName(name), mInvariant(invariant), mTrajectories(adoptAll(trajectories)), mType(type) {}

void VornMode::printVorn(std::ostream& stream) const {
    stream << mName << ":" << mType << " mode";
    const char* delimiter = " while ";
    if (mInvariant != nullptr) {
        stream << delimiter;
        mInvariant->printVorn(stream);
        delimiter = " and ";
    }
    for (const auto& trajectory : mTrajectories) {
        stream << delimiter;
        trajectory->printVorn(stream);
        delimiter = " and ";
    }
    stream << ";";
}

}  // namespace vornrun

#include "tests/support/RunningModel.h"

#include <stdexcept>

#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"

namespace vornrun::test {

namespace {

/// Splits "main.sub.part" into "main.sub" and "part".
std::pair<std::string, std::string> splitLast(const std::string& fullName) {
    const std::size_t dot = fullName.rfind('.');
    if (dot == std::string::npos) throw std::logic_error("\"" + fullName + "\" is no full name of a part");
    return {fullName.substr(0, dot), fullName.substr(dot + 1)};
}

template <class Parts, class Predicate>
auto* findPart(const Parts& parts, const std::string& what, Predicate predicate) {
    for (const auto& part : parts)
        if (predicate(*part)) return part.get();
    throw std::logic_error("The model has no " + what);
}

}  // namespace

RunningModel::RunningModel(const ModelWriter& model) { build(model.text()); }

RunningModel::RunningModel(const std::string& modelText) { build(modelText); }

void RunningModel::build(const std::string& modelText) {
    mSpecification = parseModelText(modelText);
    const RootCandidates candidates = mSpecification->findRootCandidates();
    if (candidates.size() != 1) throw std::logic_error("A test model needs exactly one root");
    mRoot = *candidates.begin();
    VornModelConstructor constructor;
    auto [realisation, valuation] = constructor.realise(mRoot);
    mRealisation.reset(realisation);
    mValuation = valuation;
    mNetwork = std::make_unique<EDANetwork>(realisation, valuation);
}

const VornComponentRealisation& RunningModel::component(const std::string& fullName) const {
    for (const EDA* eda : mNetwork->edas())
        if (eda->identifier() == fullName) return *eda->component();
    throw std::logic_error("The model has no component " + fullName);
}

EDA& RunningModel::eda(const std::string& fullName) { return *mNetwork->edaOfComponent(&component(fullName)); }

const RealisedMode* RunningModel::mode(const std::string& fullName, const std::string& name) {
    return findPart(component(fullName).modes(), "mode " + name + " in " + fullName,
                    [&](const RealisedMode& mode) { return mode.name() == name; });
}

const RealisedEventPort* RunningModel::port(const std::string& fullName) {
    const auto [owner, name] = splitLast(fullName);
    const std::string& wanted = name;
    return findPart(component(owner).eventPorts(), "event port " + fullName,
                    [&](const RealisedEventPort& port) { return port.identifier() == wanted; });
}

TransitionPtr RunningModel::transition(const std::string& fullName, const std::string& source,
                                       const std::string& target, unsigned int index) {
    return findPart(component(fullName).transitions(), "transition " + source + " -> " + target + " in " + fullName,
                    [&](const RealisedTransition& transition) {
                        return transition.source()->name() == source && transition.target()->name() == target &&
                               index-- == 0;
                    });
}

QualifiedTransition RunningModel::qualified(const std::string& fullName, const std::string& source,
                                            const std::string& target, unsigned int index) {
    return {&eda(fullName), transition(fullName, source, target, index)};
}

void RunningModel::take(const std::string& fullName, const std::string& source, const std::string& target,
                        unsigned int index) {
    mNetwork->takeEventTransition({qualified(fullName, source, target, index)});
}

ValueRef RunningModel::slot(const std::string& fullName, bool ofRate) const {
    const auto [owner, name] = splitLast(fullName);
    const VornComponentRealisation& realisation = component(owner);
    for (const auto& [part, reference] : ofRate ? realisation.valueTrajectories() : realisation.valueReferences())
        if (part->identifier() == name) return reference;
    throw std::logic_error("The model has no value " + fullName);
}

}  // namespace vornrun::test

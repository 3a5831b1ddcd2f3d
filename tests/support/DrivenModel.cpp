#include "tests/support/DrivenModel.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/ParseModel.h"

namespace vornrun::test {

namespace {

const VornComponentImplementation* rootOf(const VornSpecification& specification) {
    const auto candidates = specification.findRootCandidates();
    if (candidates.size() != 1) throw std::logic_error("the model of a test needs exactly one root");
    return *candidates.begin();
}

}  // namespace

DrivenModel::DrivenModel(const ModelWriter& model, const SimulationStrategy& strategy)
    : mSpecification(parseModel(model)), mRoot(rootOf(*mSpecification)), mSimulator(mRoot, &strategy) {}

const ScriptedRandomGenerator& DrivenModel::script(const std::vector<ScriptedDraw>& draws) {
    auto* generator = new ScriptedRandomGenerator(draws);
    strategy().setRandomGenerator(generator);
    return *generator;
}

EDA* DrivenModel::eda(const std::string& identifier) {
    for (EDA* eda : network().edas())
        if (eda->identifier() == identifier) return eda;
    throw std::out_of_range("no automaton " + identifier);
}

std::string DrivenModel::mode(const std::string& identifier) { return eda(identifier)->currentMode()->name(); }

std::string DrivenModel::step() {
    const std::unique_ptr<SimulationStep> taken(strategy().executeStep());
    return tell(*taken);
}

std::string tell(const SimulationStep& step) {
    std::ostringstream text;
    text << step.time();
    const char* separator = ": ";
    if (const auto* discrete = dynamic_cast<const DiscreteSimulationStep*>(&step)) {
        for (const auto& [eda, transition] : discrete->transitions()) {
            text << separator << eda->identifier() << ": " << transition->source()->name() << " -> "
                 << transition->target()->name();
            separator = ", ";
        }
    }
    return text.str();
}

}  // namespace vornrun::test

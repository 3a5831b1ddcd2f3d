#include "tools/simulator/Driver.h"

#include <cstdlib>
#include <iostream>
#include <thread>
#include <utility>

#include "tools/simulator/ConsoleObserver.h"
#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/simulators/ChernoffGenerator.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/steps/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace {

const vornrun::Log sLogger("root.main");

/// A parser. Why the XML library does not start is printed here, since the library itself prints nothing.
std::unique_ptr<vornrun::VornXmlParser> makeParser(vornrun::parser::XmlContext& context) {
    try {
        return std::make_unique<vornrun::VornXmlParser>(context);
    } catch (const vornrun::parser::XmlLibraryException& exception) {
        std::cerr << exception.libraryText();
        throw;
    }
}

}  // namespace

vornrun::VornSpecification* parseModel(const std::string& fileName) {
    vornrun::parser::XmlContext context;
    try {
        const auto parser = makeParser(context);
        std::unique_ptr<vornrun::VornSpecification> specification(parser->parseVorn(fileName));
        VORNRUN_LOG(sLogger, Trace, *specification);
        return specification.release();
    } catch (const vornrun::VornXmlException& exception) {
        VORNRUN_LOG(sLogger, Error, "Exception during parsing of Vorn: " << exception.what());
        return nullptr;
    }
}

std::vector<vornrun::CSLFormula*> parseProperty(const std::string& fileName) {
    vornrun::parser::XmlContext context;
    try {
        const auto parser = makeParser(context);
        VORNRUN_LOG(sLogger, Info, "Parsing properties from: " << fileName);
        return parser->parseProperties(fileName);
    } catch (const vornrun::VornXmlException& exception) {
        VORNRUN_LOG(sLogger, Error, "Exception during parsing of properties: " << exception.what());
        return {};
    }
}

const vornrun::VornComponentImplementation* getRoot(const vornrun::VornSpecification* specification) {
    const vornrun::RootCandidates candidates = specification->findRootCandidates();
    if (candidates.size() == 1) return *candidates.begin();
    VORNRUN_LOG(sLogger, Error, "Need exactly 1 root candidate in specification, found " << candidates.size());
    for (const vornrun::VornComponentImplementation* candidate : candidates)
        VORNRUN_LOG(sLogger, Error, "  Candidate: " << candidate->qualifiedName());
    std::exit(1);
}

std::unique_ptr<vornrun::SimulationStrategy> makeStrategy(SimStrategy strategy) {
    return vornrun::makeStrategy(static_cast<int>(strategy));
}

unsigned int workerCount(unsigned int requested, unsigned int detected) {
    if (requested != 0) {
        VORNRUN_LOG(sLogger, Info, "Number of cores set to " << requested);
        return requested;
    }
    if (detected != 0) {
        VORNRUN_LOG(sLogger, Info, "Number of cores determined to be " << detected);
        return detected;
    }
    VORNRUN_LOG(sLogger, Warn, "Unable to determine the number of cores available, defaulting to 1");
    return 1;
}

vornrun::PropertySimulator* simulator(const vornrun::VornComponentImplementation* root,
                                      const vornrun::Settings& settings) {
    std::unique_ptr<vornrun::SimulationStrategy> strategy = makeStrategy(settings.strategy);
    strategy->setConsole(&standardConsole());
    const unsigned int threadCount = workerCount(settings.threads, std::thread::hardware_concurrency());
    auto result = std::make_unique<vornrun::PropertySimulator>(root, strategy.release(), threadCount);
    result->setObserver(&consoleObserver());
    result->ignoreBoundError = settings.ignoreBoundError;
    result->allowDeadlock = !settings.disallowDeadlock;
    result->stepBound = settings.stepBound;
    result->seed = settings.seed;
    return result.release();
}

std::unique_ptr<vornrun::QuantitativeGenerator> makeGenerator(const vornrun::Settings& settings) {
    if (settings.numTraces != 0) return std::make_unique<vornrun::StaticGenerator>(settings.numTraces);
    return std::make_unique<vornrun::ChernoffGenerator>(settings.errorBound, settings.confidence);
}

void evaluateProperties(const Formulas& formulas, vornrun::PropertySimulator& propertySimulator,
                        vornrun::QuantitativeGenerator& generator) {
    if (formulas.empty()) {
        VORNRUN_LOG(sLogger, Warn, "No properties were loaded, no simulation performed");
        return;
    }
    for (const auto& formula : formulas) {
        VORNRUN_LOG(sLogger, Info, "Evaluating property " << *formula);
        // The parser gives formulas of this class only. Each one gets a probability; its bound is not used.
        const vornrun::CSLPathFormula* path = static_cast<const vornrun::CSLProbabilityStateFormula&>(*formula).path();
        try {
            const auto [lower, upper] = propertySimulator.checkProbability(path, &generator);
            VORNRUN_LOG(sLogger, Info, "Property evaluated to [" << lower << ", " << upper << "]");
            std::cout.setf(std::ios_base::fixed, std::ios_base::floatfield);
            std::cout.precision(10);
            std::cout << "Property holds with probability [" << lower << "," << upper << "]\n";
        } catch (const vornrun::abort_exception& exception) {
            VORNRUN_LOG(sLogger, Error, "Simulation aborted: " << exception.what());
            return;
        }
    }
}

#include <log4cplus/logger.h>

#include <boost/filesystem/operations.hpp>
#include <cstdio>
#include <memory>

#include "tools/simulator/CommandLine.h"
#include "tools/simulator/Driver.h"
#include "tools/simulator/FatalHandler.h"
#include "tools/simulator/LogSetup.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

int main(int argc, char** argv) {
    // No buffer: every written character reaches its reader, however the process ends. It may end by the arithmetic
    // signal of a division by zero in the model, or by the user's interrupt.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    installFatalHandler();

    const boost::filesystem::path initialDirectory = boost::filesystem::initial_path();
    const boost::filesystem::path program = argc > 0 ? argv[0] : "";
    const boost::filesystem::path executableDirectory = boost::filesystem::system_complete(program.parent_path());
    setupLogging(findLogConfiguration(initialDirectory, executableDirectory));

    vornrun::Settings settings;
    if (!parseCommandLine(argc, argv, settings)) return 1;
    applyLogLevel(settings.logLevel);

    std::unique_ptr<const vornrun::VornSpecification> specification(parseModel(settings.inputFile));
    if (!specification) return 1;
    const vornrun::VornComponentImplementation* root = getRoot(specification.get());
    std::unique_ptr<vornrun::PropertySimulator> propertySimulator(simulator(root, settings));
    std::unique_ptr<vornrun::QuantitativeGenerator> generator = makeGenerator(settings);

    // Read after the model, so that a fault of the model is reported first.
    Formulas formulas;
    for (const vornrun::CSLFormula* formula : parseProperty(settings.propertyFile)) formulas.emplace_back(formula);
    evaluateProperties(formulas, *propertySimulator, *generator);

    generator.reset();
    propertySimulator.reset();
    formulas.clear();
    specification.reset();
    log4cplus::Logger::shutdown();
    return 0;
}

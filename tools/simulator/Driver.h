#pragma once
/// \file
/// The stages of a run, in the order in which main() calls them.

#include <memory>
#include <string>
#include <vector>

#include "tools/simulator/Settings.h"

namespace vornrun {
class CSLFormula;
class PropertySimulator;
class QuantitativeGenerator;
class SimulationStrategy;
class VornComponentImplementation;
class VornSpecification;
}  // namespace vornrun

/// The model of the file; the caller owns it. Null after a fault of the file, which is logged.
/// \throws std::invalid_argument for a rate that is not positive or a subcomponent reference that misses
vornrun::VornSpecification* parseModel(const std::string& fileName);

/// The formulas of the file, in file order; the caller owns them. Empty after a fault of the file, which is logged.
std::vector<vornrun::CSLFormula*> parseProperty(const std::string& fileName);

/// The one implementation that no subcomponent instantiates; the specification owns it. When there is none or more than
/// one, logs all candidates and ends the process with exit status 1.
const vornrun::VornComponentImplementation* getRoot(const vornrun::VornSpecification* specification);

/// Strategy, worker threads and limits follow the settings; observer and console are those of the tool. The caller owns
/// the result; the root is not owned.
vornrun::PropertySimulator* simulator(const vornrun::VornComponentImplementation* root,
                                      const vornrun::Settings& settings);

/// A new strategy of that kind; of the default kind for a number that names none.
std::unique_ptr<vornrun::SimulationStrategy> makeStrategy(SimStrategy strategy);

/// The number of worker threads; logs its origin.
/// \param requested number that the user asks for; 0 for as many as there are cores
/// \param detected  number of cores; 0 when it is unknown
unsigned int workerCount(unsigned int requested, unsigned int detected);

/// The generator that all properties of the run share.
std::unique_ptr<vornrun::QuantitativeGenerator> makeGenerator(const vornrun::Settings& settings);

using Formulas = std::vector<std::unique_ptr<const vornrun::CSLFormula>>;

/// Writes the interval of the probability of each property to standard output, in order. When a property is aborted,
/// logs the reason and skips the properties after it.
void evaluateProperties(const Formulas& formulas, vornrun::PropertySimulator& propertySimulator,
                        vornrun::QuantitativeGenerator& generator);

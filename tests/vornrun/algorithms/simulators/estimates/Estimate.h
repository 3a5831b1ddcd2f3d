#pragma once
/// \file
/// From a written model and formula to the interval that the tool would print.

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ModelWriter.h"
#include "tests/support/ParseModel.h"
#include "tests/support/PropertyWriter.h"
#include "tests/support/TempDir.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

namespace vornrun::test {

/// A fixed number of traces under a fixed seed.
struct Traces {
    unsigned int count;
    unsigned int threads;
    unsigned long seed;
};

/// The estimate of the property's path formula; traces are rounded up to whole sweeps of the threads.
template <class Strategy = AsapStrat>
double estimate(const ModelWriter& model, const PathFormula& path, const Traces& run) {
    const std::unique_ptr<VornSpecification> specification = parseModel(model);
    const TempDir folder;
    parser::XmlContext context;
    VornXmlParser parser(context);
    PropertyWriter properties;
    properties.p(path);
    std::vector<CSLFormula*> parsed = parser.parseProperties(folder.write("properties.xml", properties.text()));
    const std::unique_ptr<CSLFormula> formula(parsed.at(0));
    const auto& probability = dynamic_cast<const CSLProbabilityStateFormula&>(*formula);
    PropertySimulator simulator(*specification->findRootCandidates().begin(), new Strategy, run.threads);
    simulator.seed = run.seed;
    simulator.stepBound = 1000000;
    StaticGenerator generator(run.count);
    return simulator.checkProbability(probability.path(), &generator).first;
}

}  // namespace vornrun::test

#include "tools/simulator/Driver.h"

#include <cstdlib>
#include <memory>

#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace {

const vornrun::Log sLogger("root.main");

}  // namespace

vornrun::VornSpecification* parseModel(const std::string& fileName) {
    vornrun::parser::XmlContext context;
    try {
        const auto parser = std::make_unique<vornrun::VornXmlParser>(context);
        std::unique_ptr<vornrun::VornSpecification> specification(parser->parseVorn(fileName));
        VORNRUN_LOG(sLogger, Trace, *specification);
        return specification.release();
    } catch (const vornrun::VornXmlException& exception) {
        VORNRUN_LOG(sLogger, Error, "Exception during parsing of Vorn: " << exception.what());
        return nullptr;
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

#include "vornrun/api/Model.h"

#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/vornconstructor/FreshIds.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/api/FaultCollector.h"
#include "vornrun/api/ModelParts.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun {

struct Model::Data {
    std::string file;
    std::unique_ptr<const VornSpecification> specification;
    const VornComponentImplementation* root = nullptr;
    std::vector<ComponentInfo> components;
    std::vector<ValueInfo> values;
    std::unordered_map<std::string, std::size_t> valuesByName;
    std::vector<Fault> warnings;
};

namespace {

std::unique_ptr<const VornSpecification> parsed(const std::string& path, api::FaultCollector& faults) {
    const FreshIds idsOfThisModelAlone;
    parser::XmlContext context;
    VornXmlParser parser(context);
    try {
        return std::unique_ptr<const VornSpecification>(parser.parseVorn(path));
    } catch (const std::invalid_argument& fault) {
        faults.giveUp(fault.what(), parser.placeOfInvalidArgument());
    }
}

const VornComponentImplementation* rootOf(const VornSpecification& specification, api::FaultCollector& faults) {
    const RootCandidates candidates = specification.findRootCandidates();
    if (candidates.size() == 1) return *candidates.begin();
    std::string text = "A model has one root, an implementation that is no subcomponent of any other; this one has " +
                       std::to_string(candidates.size());
    const char* separator = ": ";
    for (const VornComponentImplementation* candidate : candidates) {
        text += separator + candidate->qualifiedName();
        separator = ", ";
    }
    faults.giveUp(text);
}

}  // namespace

Model::Model(std::shared_ptr<const Data> data) : mData(std::move(data)) {}

Model Model::fromFile(const std::string& path) {
    api::FaultCollector faults(path);
    auto data = std::make_shared<Data>();
    api::collectingFaults(faults, [&] {
        data->file = path;
        data->specification = parsed(path, faults);
        data->root = rootOf(*data->specification, faults);
        // Built once, so that whatever keeps a model from running shows now, and for the names.
        VornModelConstructor constructor(ModelOptions{.checkedArithmetic = true});
        const auto [realisation, valuation] = constructor.realise(data->root);
        const std::unique_ptr<VornComponentRealisation> owned(realisation);
        const EDANetwork network(realisation, valuation);
        data->components = api::componentsOf(network);
        data->values = api::valuesOf(network);
    });
    // Of two values of one name, properties find the first: data hides a port.
    for (std::size_t i = 0; i < data->values.size(); ++i) data->valuesByName.emplace(data->values[i].name, i);
    data->warnings = faults.takeFaults();
    return Model(std::move(data));
}

const std::string& Model::file() const noexcept { return mData->file; }

const std::vector<ComponentInfo>& Model::components() const noexcept { return mData->components; }

const std::vector<ValueInfo>& Model::values() const noexcept { return mData->values; }

std::optional<std::size_t> Model::findValue(const std::string& name) const {
    const auto found = mData->valuesByName.find(name);
    if (found == mData->valuesByName.end()) return std::nullopt;
    return found->second;
}

const std::vector<Fault>& Model::warnings() const noexcept { return mData->warnings; }

const VornComponentImplementation* Model::root() const noexcept { return mData->root; }

}  // namespace vornrun

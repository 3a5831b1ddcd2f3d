#include "vornrun/api/Question.h"

#include <sstream>
#include <utility>

#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/api/FaultCollector.h"
#include "vornrun/datastructures/property/CSLPathFormula.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

namespace vornrun {

struct Question::Data {
    std::unique_ptr<const CSLFormula> formula;
    const CSLPathFormula* path = nullptr;
    std::string text;
};

namespace {

/// The formula itself, or what a probability formula is about; null for any other.
const CSLPathFormula* pathOf(const CSLFormula& formula) {
    if (const auto* probability = dynamic_cast<const CSLProbabilityStateFormula*>(&formula)) return probability->path();
    return dynamic_cast<const CSLPathFormula*>(&formula);
}

}  // namespace

Question::Question(std::shared_ptr<const Data> data) : mData(std::move(data)) {}

std::vector<Question> Question::fromFile(const std::string& path) {
    api::FaultCollector faults(path);
    std::vector<std::unique_ptr<const CSLFormula>> formulas;
    api::collectingFaults(faults, [&] {
        parser::XmlContext context;
        VornXmlParser parser(context);
        for (const CSLFormula* formula : parser.parseProperties(path)) formulas.emplace_back(formula);
    });
    if (formulas.empty()) faults.giveUp("The file has no question: no `cslFormula` with a `p` in it");
    std::vector<Question> questions;
    questions.reserve(formulas.size());
    for (const auto& formula : formulas) questions.push_back(fromFormula(*formula));
    return questions;
}

Question Question::fromFormula(const CSLFormula& formula) {
    auto data = std::make_shared<Data>();
    data->formula.reset(formula.clone());
    data->path = pathOf(*data->formula);
    std::ostringstream text;
    text << formula;
    data->text = text.str();
    if (data->path == nullptr)
        throw FaultException(
            {{Severity::error, "A question is a path formula or its probability, not " + data->text, {}, 0, 0}});
    return Question(std::move(data));
}

const std::string& Question::text() const noexcept { return mData->text; }

const CSLPathFormula& Question::path() const noexcept { return *mData->path; }

const CSLFormula& Question::formula() const noexcept { return *mData->formula; }

}  // namespace vornrun

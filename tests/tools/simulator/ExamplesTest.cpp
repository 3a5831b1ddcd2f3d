/// \file
/// The examples as a user runs them, against values that are known otherwise.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/support/RunTool.h"

namespace vornrun::test {
namespace {

constexpr unsigned int TRACES = 10000;

/// The lower end of the interval that the tool prints for one question of an example.
double answer(const std::string& example, const std::string& question) {
    const std::string folder = std::string(VORNRUN_EXAMPLES) + "/" + example + "/";
    const ToolResult result = runTool({.arguments = {folder + "model.xml", folder + question, "-t", "2", "-s", "5",
                                                     "-n", std::to_string(TRACES), "-l", "warn"}});
    const std::string head = "Property holds with probability [";
    const std::size_t at = result.output.find(head);
    if (result.exitStatus != 0 || at == std::string::npos) {
        ADD_FAILURE() << result.output << result.errors;
        return -1.0;
    }
    return std::stod(result.output.substr(at + head.size()));
}

TEST(Examples, TheCoolingPlantNeedsItsReserveAsOftenAsUniformisationSays) {
    // Twelve pumps, each failing with rate 0.05 and repaired with rate 0.5: that four are down at once within 24 hours
    // is reaching state 4 of a birth-death chain with births 0.05 (12 - i) and deaths 0.5 i. Uniformisation gives
    // 0.398956; 4 standard errors of the estimate are 4 sqrt(p (1 - p) / traces).
    const double exact = 0.3989555;
    EXPECT_NEAR(answer("cooling-plant", "reserve-needed.xml"), exact, 4 * std::sqrt(exact * (1 - exact) / TRACES));
}

TEST(Examples, TheCoolingPlantsQuestionsAreOrderedAsTheirEventsImply) {
    // The diesel pump runs only after the reserve was needed, and half an hour later.
    const double needed = answer("cooling-plant", "reserve-needed.xml");
    const double runs = answer("cooling-plant", "diesel-runs.xml");
    EXPECT_LT(runs, needed);
    EXPECT_GT(runs, 0.0);
}

}  // namespace
}  // namespace vornrun::test

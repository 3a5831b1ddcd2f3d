#include "vornrun/algorithms/simulators/StaticGenerator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <memory>
#include <sstream>
#include <type_traits>

namespace vornrun {
namespace {

static_assert(std::has_virtual_destructor_v<SimulationGenerator>);
static_assert(std::is_base_of_v<QuantitativeGenerator, StaticGenerator>);
static_assert(std::is_abstract_v<QualitativeGenerator>);

void addResults(SimulationGenerator& generator, unsigned int positive, unsigned int negative) {
    for (unsigned int i = 0; i < positive; ++i) generator.addResult(true);
    for (unsigned int i = 0; i < negative; ++i) generator.addResult(false);
}

TEST(StaticGenerator, IsDoneWithTheRequestedCountAndNotBefore) {
    StaticGenerator generator(3);
    EXPECT_FALSE(generator.done());
    addResults(generator, 1, 1);
    EXPECT_FALSE(generator.done());
    generator.addResult(false);
    EXPECT_TRUE(generator.done());
    generator.addResult(true);
    EXPECT_TRUE(generator.done()) << "results beyond the count do not undo it";
}

TEST(StaticGenerator, OfNoTracesIsDoneAtOnce) { EXPECT_TRUE(StaticGenerator(0).done()); }

TEST(StaticGenerator, OfTheLargestCountIsComparedWithoutASign) {
    StaticGenerator generator(4294967295U);
    EXPECT_FALSE(generator.done());
    generator.addResult(true);
    EXPECT_FALSE(generator.done());
}

TEST(StaticGenerator, TwoPositiveOfThreePrintTwoThirdsTwiceWithTenDecimals) {
    StaticGenerator generator(3);
    addResults(generator, 2, 1);
    const auto [lower, upper] = generator.getRatio();
    std::ostringstream text;
    text << std::fixed << std::setprecision(10) << lower << "," << upper;
    EXPECT_EQ(text.str(), "0.6666666667,0.6666666667");
}

TEST(StaticGenerator, WithoutResultsTheRatioIsNotANumberInBothPositions) {
    const auto [lower, upper] = StaticGenerator(3).getRatio();
    EXPECT_TRUE(std::isnan(lower));
    EXPECT_TRUE(std::isnan(upper));
}

TEST(StaticGenerator, CountsBeyondItsTotalEnterTheRatio) {
    StaticGenerator generator(1);
    addResults(generator, 1, 3);
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.25, 0.25));
}

TEST(StaticGenerator, ResetForgetsTheResults) {
    StaticGenerator generator(2);
    addResults(generator, 2, 0);
    generator.reset();
    EXPECT_FALSE(generator.done());
    EXPECT_TRUE(std::isnan(generator.getRatio().first));
    addResults(generator, 0, 2);
    EXPECT_TRUE(generator.done());
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.0, 0.0));
}

TEST(StaticGenerator, ClaimsNoConfidence) { EXPECT_EQ(StaticGenerator(3).getConfidence(), 0.0); }

TEST(StaticGenerator, IsUsedThroughItsBase) {
    const std::unique_ptr<QuantitativeGenerator> generator = std::make_unique<StaticGenerator>(1U);
    generator->addResult(true);
    EXPECT_TRUE(generator->done());
    EXPECT_EQ(generator->getRatio(), std::make_pair(1.0, 1.0));
}

}  // namespace
}  // namespace vornrun

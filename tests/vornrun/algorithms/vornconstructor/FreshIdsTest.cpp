#include "vornrun/algorithms/vornconstructor/FreshIds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ModelWriter.h"
#include "tests/support/ParseModel.h"
#include "tests/support/Printed.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;

using Ids = VornComponentImplementationConstructor;

std::vector<unsigned int> nextIds() {
    return {VornPartsConstructor::portIdCounter, Ids::mSubcompId, Ids::mModeId, Ids::mTransitionId,
            VornComponentImplementation::nextSerial};
}

void useIds() {
    delete VornPartsConstructor::createEventPort("p", PortDirection::in, false);
    ++Ids::mSubcompId;
    ++Ids::mModeId;
    ++Ids::mTransitionId;
    ++VornComponentImplementation::nextSerial;
}

ModelWriter model() {
    ModelWriter writer;
    writer.type("Sub").inEvent("start").outEvent("done");
    writer.implementation("Sub.i").mode("only");
    writer.implementation("Top.i")
        .subcomponent("sub", "Sub.i")
        .mode("a")
        .mode("b")
        .transition("a", "b")
        .transition("b", "a");
    return writer;
}

TEST(FreshIds, StartsAllNumbersAnewAndLetsTheFormerOnesGoOnAfterwards) {
    useIds();
    const std::vector<unsigned int> before = nextIds();
    {
        const FreshIds fresh;
        EXPECT_THAT(nextIds(), ElementsAre(10, 0, 0, 0, 0));
        useIds();
        EXPECT_THAT(nextIds(), ElementsAre(11, 1, 1, 1, 1));
    }
    EXPECT_EQ(nextIds(), before);
}

TEST(FreshIds, GuardsNest) {
    const FreshIds outer;
    useIds();
    {
        const FreshIds inner;
        EXPECT_THAT(nextIds(), ElementsAre(10, 0, 0, 0, 0));
    }
    EXPECT_THAT(nextIds(), ElementsAre(11, 1, 1, 1, 1));
}

TEST(FreshIds, EachThreadCountsForItself) {
    const FreshIds here;
    useIds();
    std::vector<std::vector<unsigned int>> seen(2);
    std::vector<std::thread> threads;
    for (auto& ids : seen) {
        threads.emplace_back([&ids] {
            for (int i = 0; i < 1000; ++i) useIds();
            ids = nextIds();
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& ids : seen) EXPECT_THAT(ids, ElementsAre(1010, 1000, 1000, 1000, 1000));
    EXPECT_THAT(nextIds(), ElementsAre(11, 1, 1, 1, 1));
}

TEST(FreshIds, AFileParsedTwiceGetsTheSameNumbersOnlyUnderTheGuard) {
    const auto parsed = [] { return printed(*parseModel(model())); };
    const auto parsedAfresh = [&parsed] {
        const FreshIds fresh;
        return parsed();
    };
    const std::string first = parsedAfresh();
    EXPECT_EQ(parsedAfresh(), first);
    EXPECT_NE(parsed(), parsed());
    EXPECT_EQ(parsedAfresh(), first);
    std::string elsewhere;
    std::thread([&] { elsewhere = parsed(); }).join();
    EXPECT_EQ(elsewhere, first) << "a thread starts with numbers of its own";
}

}  // namespace
}  // namespace vornrun::test

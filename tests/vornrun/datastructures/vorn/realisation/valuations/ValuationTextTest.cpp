#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/Printed.h"
#include "tests/vornrun/datastructures/vorn/realisation/valuations/SampleValues.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {
namespace {

using test::printed;
using test::sample;

template <class T>
class TextOfPermanentValues : public testing::Test {};
TYPED_TEST_SUITE(TextOfPermanentValues, test::AllTypes);

TYPED_TEST(TextOfPermanentValues, IsEmptyWithoutValues) {
    EXPECT_EQ(DynamicValuesPermanent<TypeParam>().str(), "  empty");
}

TEST(TextOfPermanentValues, HasALineForEachValueInAFieldOfTen) {
    DynamicValuesPermanent<VornReal> reals;
    reals.addValue(nullptr, 1.5);
    reals.addValue(nullptr, -20.0);
    reals.addValue(nullptr, 1.25e300);
    EXPECT_EQ(reals.str(),
              "  1.        1.5\n"
              "  2.        -20\n"
              "  3.  1.25e+300");
    DynamicValuesPermanent<VornBool> bools;
    bools.addValue(nullptr, true);
    EXPECT_EQ(bools.str(), "  1.          1");
    DynamicValuesPermanent<VornEnum> enums;
    enums.addValue(nullptr, std::string("idle"));
    enums.addValue(nullptr, std::string("longer than ten"));
    enums.addValue(nullptr);
    EXPECT_EQ(enums.str(),
              "  1.       idle\n"
              "  2. longer than ten\n"
              "  3.           ");
    DynamicValuesPermanent<VornModeVal> modes;
    modes.addValue(nullptr, sample<VornModeVal>(0));
    modes.addValue(nullptr);
    EXPECT_EQ(modes.str(),
              "  1.         on\n"
              "  2.     (null)");
}

TEST(TextOfAValuation, NamesEveryTypeWhenEmpty) {
    EXPECT_EQ(printed(GlobalValuation()),
              "Permanent valuation:\n"
              "VornBools:\n  empty\n"
              "VornClocks:\n  empty\n"
              "VornContinuouses:\n  empty\n"
              "VornEnums:\n  empty\n"
              "VornInts:\n  empty\n"
              "VornIntervals:\n  empty\n"
              "VornReals:\n  empty\n"
              "VornModes:\n  empty\n");
}

TEST(TextOfAValuation, ListsEachValueUnderItsType) {
    GlobalValuation valuation;
    valuation.addValue<VornBool>(nullptr, true);
    valuation.addValue<VornReal>(nullptr, 0.5);
    valuation.addValue<VornInt>(nullptr, 1L);
    valuation.addValue<VornInt>(nullptr, 2L);
    valuation.addValue<VornContinuous>(nullptr, 2.5);
    valuation.addValue<VornClock>(nullptr, 3.5);
    valuation.addValue<VornEnum>(nullptr, std::string("idle"));
    valuation.addValue<VornInterval>(nullptr, 4L);
    valuation.addValue<VornModeVal>(nullptr, sample<VornModeVal>(1));
    std::ostringstream stream;
    stream << valuation;
    EXPECT_EQ(stream.str(),
              "Permanent valuation:\n"
              "VornBools:\n  1.          1\n"
              "VornClocks:\n  1.        3.5\n"
              "VornContinuouses:\n  1.        2.5\n"
              "VornEnums:\n  1.       idle\n"
              "VornInts:\n  1.          1\n  2.          2\n"
              "VornIntervals:\n  1.          4\n"
              "VornReals:\n  1.        0.5\n"
              "VornModes:\n  1.        off\n");
}

TEST(TextOfAValuation, OfSomeDepthShowsOnlyWhereTheTopStands) {
    GlobalValuation valuation;
    const ScopedLayer lower(valuation);
    const ScopedLayer upper(valuation);
    const std::string text = printed(valuation);
    const std::string head = "Global valuation of depth: 3\nGlobal valuation stacked values: \n0x";
    ASSERT_EQ(text.substr(0, head.size()), head);
    EXPECT_EQ(text.find('\n', head.size()), std::string::npos);
    EXPECT_EQ(text.find_first_not_of("0123456789abcdef", head.size()), std::string::npos);
    EXPECT_GT(text.size(), head.size());
}

TEST(TextOfALayer, HasItsOwnStoresAndThenTheLevelBelow) {
    DynamicValuesContainerPermanent permanent;
    permanent.addValue<VornInt>(nullptr, 7L);
    DynamicValuesContainerTemp layer(&permanent);
    layer.setValue<VornInt>(1, 8L);
    const std::string stores = "TODO: Implement string representation of DynamicValuesTemp\n";
    EXPECT_EQ(printed(layer),
              "Stacked values: \n"
              "VornBools:\n" +
                  stores + "VornClocks:\n" + stores + "VornContinuouses:\n" + stores + "VornEnums:\n" + stores +
                  "VornInts:\n" + stores + "VornIntervals:\n" + stores + "VornReals:\n" + stores + "VornModes:\n" +
                  stores + "\n" + printed(permanent));
}

}  // namespace
}  // namespace vornrun

#include "vornrun/datastructures/vorn/realisation/RealisedConnection.h"

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun::test {
namespace {

class RealisedConnectionTest : public RealisationFixture {
  protected:
    const RealisedEventPort* in = eventPort(*root, 1, "in", PortDirection::in);
    const RealisedEventPort* in2 = eventPort(*root, 2, "in2", PortDirection::in);
    const RealisedEventPort* out = eventPort(*root, 3, "out", PortDirection::out);
    const RealisedEventPort* out2 = eventPort(*root, 4, "out2", PortDirection::out);

    RealisedConnection between(const RealisedEventPort* source, const RealisedEventPort* target) const {
        return {source, target, &link, {}};
    }
};

TEST_F(RealisedConnectionTest, TheTypeFollowsFromTheDirectionsOfBothEnds) {
    EXPECT_EQ(between(in, in2).connectionType(), 0);
    EXPECT_EQ(between(out, in).connectionType(), 1);
    EXPECT_EQ(between(out, out2).connectionType(), 2);
}

TEST_F(RealisedConnectionTest, InToOutIsRefusedByNameOfBothEnds) {
    try {
        between(in, out).connectionType();
        FAIL() << "an in-to-out connection has no type";
    } catch (const model_exception& fault) {
        EXPECT_STREQ(fault.what(), "Model contains In-to-Out port connection from (in)[1] to (out)[3]");
    }
}

TEST_F(RealisedConnectionTest, TheDirectionIsThatOfTheSource) {
    EXPECT_EQ(between(in, out).direction(), PortDirection::in);
    EXPECT_EQ(between(out, in).direction(), PortDirection::out);
}

TEST_F(RealisedConnectionTest, BeingPassiveIsForTheDeclarationToSay) {
    const VornConnection passive(new VornReference("p"), new VornReference("q"), true, {}, true);
    EXPECT_FALSE(between(out, in).isPassive());
    EXPECT_TRUE(RealisedConnection(out, in, &passive, {}).isPassive());
}

TEST_F(RealisedConnectionTest, PrintsBothIdsAndTheDeclaration) {
    const VornConnection declared(new VornReference("s.p"), new VornReference("q"), true, {"a", "b"}, false);
    EXPECT_EQ(printed(RealisedConnection(out, in, &declared, {a, b})),
              "[3] -> [1] (event port s.p -> q in modes (a, b);)");
}

}  // namespace
}  // namespace vornrun::test

#include "vornrun/algorithms/parser/BoundedMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::test {
namespace {

using parser::BoundedMemory;

class BoundedMemoryTest : public testing::Test {
  protected:
    BoundedMemoryTest() { parser::util::initialize(); }
    ~BoundedMemoryTest() override { parser::util::clean(); }
};

constexpr std::size_t MIB = std::size_t{1} << 20;

TEST_F(BoundedMemoryTest, HandsOutMemoryAndTakesItBack) {
    BoundedMemory memory;
    void* const first = memory.allocate(100);
    void* const second = memory.allocate(0);
    std::memset(first, 1, 100);
    ASSERT_NE(second, nullptr);
    memory.deallocate(first);
    memory.deallocate(second);
    memory.deallocate(nullptr);
    EXPECT_FALSE(memory.exceeded());
}

TEST_F(BoundedMemoryTest, GivesBackAtItsEndWhatIsStillOut) {
    // The leak checker of the sanitizer build is the judge.
    BoundedMemory memory;
    std::memset(memory.allocate(1000), 1, 1000);
    memory.deallocate(memory.allocate(10));
    std::memset(memory.allocate(1000), 2, 1000);
    SUCCEED();
}

TEST_F(BoundedMemoryTest, RefusesOnceWhatIsInUseExceedsTheBound) {
    BoundedMemory memory;
    EXPECT_THROW(memory.allocate(BoundedMemory::IN_USE_BASE + 1), xercesc::OutOfMemoryException);
    EXPECT_TRUE(memory.exceeded());
    EXPECT_NO_THROW(memory.allocate(1)) << "the library has to clean up";
}

TEST_F(BoundedMemoryTest, AllowsMoreForALargerDocument) {
    BoundedMemory memory;
    memory.addDocumentBytes(MIB);
    EXPECT_NO_THROW(memory.allocate(BoundedMemory::IN_USE_BASE + MIB));
    EXPECT_THROW(memory.allocate(BoundedMemory::IN_USE_PER_BYTE * MIB), xercesc::OutOfMemoryException);
}

TEST_F(BoundedMemoryTest, RefusesEndlessWorkThatKeepsNothing) {
    BoundedMemory memory;
    bool refused = false;
    // A block of 32 MiB that nobody touches costs no memory: 2000 of them in turn are 62 GiB of work.
    for (int i = 0; i < 2000 && !refused; ++i) {
        try {
            memory.deallocate(memory.allocate(32 * MIB));
        } catch (const xercesc::OutOfMemoryException&) {
            refused = true;
        }
    }
    EXPECT_TRUE(refused);
    EXPECT_TRUE(memory.exceeded());
}

TEST_F(BoundedMemoryTest, LeavesTheTextsOfExceptionsToAnotherMemory) {
    BoundedMemory memory;
    EXPECT_NE(memory.getExceptionMemoryManager(), nullptr);
    EXPECT_NE(memory.getExceptionMemoryManager(), &memory);
}

}  // namespace
}  // namespace vornrun::test

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vornrun::test {
namespace {

TEST(TempDir, KeepsFilesUntilItsEnd) {
    std::filesystem::path path;
    {
        const TempDir folder;
        path = folder.path();
        const std::string file = folder.write("a.txt", "some\ntext");
        EXPECT_EQ(readFile(file), "some\ntext");
        EXPECT_EQ(folder.file("a.txt"), file);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TempDir, GivesEachItsOwnFolder) {
    const TempDir first, second;
    EXPECT_NE(first.path(), second.path());
}

TEST(TempDir, TellsWhatCannotBeWrittenOrRead) {
    const TempDir folder;
    EXPECT_THROW(folder.write("missing/a.txt", ""), std::runtime_error);
    EXPECT_THROW(readFile(folder.file("missing")), std::runtime_error);
}

}  // namespace
}  // namespace vornrun::test

/// \file
/// The dialogue of the strategy "input" as a person has it: through a pipe and at a terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/RunTool.h"
#include "tests/support/TempDir.h"
#include "tests/tools/simulator/SmallModels.h"

namespace vornrun::test {
namespace {

using testing::EndsWith;

const std::string PROMPT =
    "Enter command (s = print state, d # = discrete transition, t #.# = timed transition, q = quit)\n";
const std::string TICK = "main : ticking-[  when x >= 1 then x :=  0]->ticking; -- 0\n";
const std::string BEFORE_THE_TICK = "Current enabled transitions are:\nFuture transitions are:\n" + TICK +
                                    "    active in: [1, INFTY]\nTime in:  [0, 1]\n" + PROMPT;
const std::string AT_THE_TICK = "Current enabled transitions are:\n0: " + TICK +
                                "    active in: [0, INFTY]\nFuture transitions are:\nIndex in: [0, 0]\n"
                                "Time in:  [0, 0]\n" +
                                PROMPT;

class Interactive : public testing::Test {
  protected:
    Interactive() {
        mFolder.write("model.xml", tickingModel().text());
        PropertyWriter properties;
        properties.p(openForLong());
        mFolder.write("properties.xml", properties.text());
    }

    std::vector<std::string> arguments() const {
        return {"model.xml", "properties.xml", "--strategy", "input", "-n", "1", "-l", "fatal"};
    }
    ToolResult converse(const std::string& input) const {
        return runTool({.arguments = arguments(), .input = input, .directory = mFolder.path()});
    }

    TempDir mFolder;
};

TEST_F(Interactive, AWholeDialogueThroughAPipe) {
    const ToolResult result = converse("t 1\nd 0\nq\n");
    EXPECT_EQ(result.output,
              BEFORE_THE_TICK + "Taking timed transition, delay is 1\n" + AT_THE_TICK + "\n" + BEFORE_THE_TICK + "\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(Interactive, RewritesBothTopologyDumpsInTheWorkingDirectory) {
    converse("q\n");
    EXPECT_EQ(readFile(mFolder.file("EC_output.txt")), "digraph EC {\n 1[label=\"tau\" color=\"green\"]\n}\n");
    EXPECT_EQ(readFile(mFolder.file("DD_output.txt")), "digraph EC {\n}\n");
}

TEST_F(Interactive, TheEndOfInputEndsTheRunCleanly) {
    const ToolResult result = converse("t 0.5\n");
    EXPECT_THAT(result.output, EndsWith("Time in:  [0, 0.5]\n" + PROMPT + "\n"));
    EXPECT_EQ(result.exitStatus, 0);
}

/// The tool at a terminal of its own.
class Terminal {
  public:
    Terminal(const std::filesystem::path& directory, const std::vector<std::string>& arguments) {
        std::vector<std::string> words{toolPath().string()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> argv;
        for (std::string& word : words) argv.push_back(word.data());
        argv.push_back(nullptr);
        mProcess = forkpty(&mTerminal, nullptr, nullptr, nullptr);
        if (mProcess == 0) {
            if (chdir(directory.c_str()) == 0) execv(argv[0], argv.data());
            _exit(127);
        }
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        if (isOpen()) close(mTerminal);
    }

    /// False where the machine has no pseudo-terminal to give.
    bool isOpen() const noexcept { return mProcess > 0; }

    void type(const std::string& text) const {
        ASSERT_EQ(write(mTerminal, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /// What has come, carriage returns left out, up to and including the text; all there is when it never comes.
    std::string readTo(const std::string& text) const {
        std::string seen;
        char character = 0;
        while ((seen.size() < text.size() || seen.compare(seen.size() - text.size(), text.size(), text) != 0) &&
               read(mTerminal, &character, 1) == 1)
            if (character != '\r') seen += character;
        return seen;
    }

    /// Waits for the end of the process. \return its status as waitpid() gives it
    int wait() const {
        int status = 0;
        waitpid(mProcess, &status, 0);
        return status;
    }

  private:
    int mTerminal = -1;
    pid_t mProcess = -1;
};

TEST_F(Interactive, AtATerminalEachPromptComesBeforeItsAnswer) {
    const Terminal terminal(mFolder.path(), arguments());
    if (!terminal.isOpen()) GTEST_SKIP() << "no pseudo-terminal here";
    EXPECT_EQ(terminal.readTo(PROMPT), BEFORE_THE_TICK);
    terminal.type("t 1\n");
    EXPECT_EQ(terminal.readTo(PROMPT), "t 1\nTaking timed transition, delay is 1\n" + AT_THE_TICK);
    terminal.type("q\n");
    const int status = terminal.wait();
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(Interactive, AnInterruptEndsTheProcessAtOnce) {
    const Terminal terminal(mFolder.path(), arguments());
    if (!terminal.isOpen()) GTEST_SKIP() << "no pseudo-terminal here";
    EXPECT_EQ(terminal.readTo(PROMPT), BEFORE_THE_TICK);
    terminal.type("\x03");
    const int status = terminal.wait();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGINT);
}

}  // namespace
}  // namespace vornrun::test
